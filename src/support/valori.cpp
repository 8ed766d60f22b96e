#include "support/valori.h"

#include <clocale>
#include <cmath>
#include <cstdio>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace support {
namespace {

// "###.0": every digit of the whole part, the separator, one decimal rounded half away from zero.
std::string UnDecimale(double v, char sep) {
  const double decimi = std::round(v * 10.0);
  const double intero = std::floor(decimi / 10.0);
  const int cifra = static_cast<int>(decimi - intero * 10.0);
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.0f%c%d", intero, sep, cifra);
  return buf;
}

// General number text: no grouping, no decimals for a whole number, at most 15 significant digits.
std::string Generale(double v, char sep) {
  char buf[64];
  if (v == std::floor(v) && std::fabs(v) < 1e15) {
    std::snprintf(buf, sizeof buf, "%.0f", v);
  } else {
    std::snprintf(buf, sizeof buf, "%.15G", v);
    for (char* p = buf; *p; ++p)
      if (*p == '.' || *p == ',') *p = sep;
  }
  return buf;
}

}  // namespace

char SeparatoreDecimale() {
#ifdef _WIN32
  char buf[8] = {};
  if (GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, buf, sizeof buf) > 1) return buf[0];
  return '.';
#else
  const std::lconv* lc = std::localeconv();
  return lc && lc->decimal_point && lc->decimal_point[0] ? lc->decimal_point[0] : '.';
#endif
}

std::string FormattaDimensione(double byte) {
  return FormattaDimensione(byte, SeparatoreDecimale());
}

std::string FormattaDimensione(double s, char sep) {
  if (s > 1073741824.0) return UnDecimale(s / 1073741824.0, sep) + " Gb";
  if (s > 1048576.0) return UnDecimale(s / 1048576.0, sep) + " Mb";
  if (s > 1024.0) {
    // Round to a whole number the platform's way (half to even), then whole-number division.
    const long long intero = std::llrint(s);
    return std::to_string(intero / 1024) + " Kb";
  }
  return Generale(s, sep);
}

void AggiornaProgresso(BarraProgresso& barra, double totale, double corrente) {
  if (totale == 0) totale = 1;
  if (corrente > totale) corrente = totale;
  const double percento = std::floor(corrente / totale * 100.0);
  if (barra.Value() == percento) return;
  barra.SetValue(percento);
  barra.Refresh();
}

std::string TogliSpazi(const std::string& testo) {
  const std::size_t inizio = testo.find_first_not_of(' ');
  if (inizio == std::string::npos) return {};
  return testo.substr(inizio, testo.find_last_not_of(' ') - inizio + 1);
}

std::string PulisciStringa(const std::string& testo) {
  std::string t = testo;
  for (char& c : t)
    if (c == '\0') c = ' ';
  return TogliSpazi(t);
}

}  // namespace support
