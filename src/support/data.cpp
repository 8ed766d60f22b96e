#include "support/data.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <langinfo.h>
#endif

namespace support {
namespace {

struct DataOra {
  long long anno;
  int mese, giorno, ore, minuti, secondi;
};

// Days since 1 January 1970 to the civil date, proleptic Gregorian (H. Hinnant's algorithm).
void DaGiorni(long long z, DataOra& d) {
  z += 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long doe = z - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  d.giorno = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  d.mese = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  d.anno = yoe + era * 400 + (d.mese <= 2 ? 1 : 0);
}

bool LocaleNeutro() {
#ifdef _WIN32
  return false;
#else
  const char* n = std::setlocale(LC_TIME, nullptr);
  // "C.UTF-8" and its spellings are the C locale with another character set.
  return !n || std::strcmp(n, "C") == 0 || std::strcmp(n, "POSIX") == 0 || std::strncmp(n, "C.", 2) == 0;
#endif
}

std::string Iso(const DataOra& d, bool data, bool ora) {
  char buf[64] = {};
  if (data && ora)
    std::snprintf(buf, sizeof buf, "%04lld-%02d-%02d %02d:%02d:%02d", d.anno, d.mese, d.giorno, d.ore,
                  d.minuti, d.secondi);
  else if (data)
    std::snprintf(buf, sizeof buf, "%04lld-%02d-%02d", d.anno, d.mese, d.giorno);
  else
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", d.ore, d.minuti, d.secondi);
  return buf;
}

#ifdef _WIN32
std::string Regionale(const DataOra& d, bool data, bool ora) {
  if (d.anno < 1601) return Iso(d, data, ora);  // older than the system's own calendar
  SYSTEMTIME st{};
  st.wYear = static_cast<WORD>(d.anno);
  st.wMonth = static_cast<WORD>(d.mese);
  st.wDay = static_cast<WORD>(d.giorno);
  st.wHour = static_cast<WORD>(d.ore);
  st.wMinute = static_cast<WORD>(d.minuti);
  st.wSecond = static_cast<WORD>(d.secondi);
  char buf[128] = {};
  std::string t;
  if (data && GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &st, nullptr, buf, sizeof buf) > 0) t = buf;
  if (ora && GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &st, nullptr, buf, sizeof buf) > 0) {
    if (!t.empty()) t += ' ';
    t += buf;
  }
  return t;
}
#else
std::string Regionale(const DataOra& d, bool data, bool ora) {
  std::tm tm{};
  tm.tm_year = static_cast<int>(d.anno - 1900);
  tm.tm_mon = d.mese - 1;
  tm.tm_mday = d.giorno;
  tm.tm_hour = d.ore;
  tm.tm_min = d.minuti;
  tm.tm_sec = d.secondi;
  char buf[128] = {};
  std::string t;
  if (data && std::strftime(buf, sizeof buf, nl_langinfo(D_FMT), &tm) > 0) t = buf;
  if (ora && std::strftime(buf, sizeof buf, nl_langinfo(T_FMT), &tm) > 0) {
    if (!t.empty()) t += ' ';
    t += buf;
  }
  return t;
}
#endif

}  // namespace

std::string DataGenerale(double v) {
  // 1 January 100 and 31 December 9999, the range an OLE date may hold.
  if (!(v > -657435.0 && v < 2958466.0)) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15G", v);
    return buf;
  }
  // The whole part counts days from the epoch, the fraction is the time on that day whatever the sign.
  long long giorni = static_cast<long long>(std::trunc(v));
  long long secondi = std::llround(std::fabs(v - static_cast<double>(giorni)) * 86400.0);
  if (secondi >= 86400) {
    secondi = 0;
    giorni += v < 0 ? -1 : 1;
  }
  DataOra d{};
  // Day 25569 of the OLE count is 1 January 1970.
  DaGiorni(giorni - 25569, d);
  d.ore = static_cast<int>(secondi / 3600);
  d.minuti = static_cast<int>(secondi / 60 % 60);
  d.secondi = static_cast<int>(secondi % 60);
  const bool data = giorni != 0;
  const bool ora = secondi != 0 || !data;
  return LocaleNeutro() ? Iso(d, data, ora) : Regionale(d, data, ora);
}

}  // namespace support
