#include "collection/ambiente_controllo.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

#include "host/nomi.h"
#include "host/vista_virtuale.h"

#ifndef CHECKORDL_VERSIONE
#define CHECKORDL_VERSIONE "0"
#endif

namespace collection {
namespace {

// Days since 1970-01-01 of a civil date (proleptic Gregorian), so that two broken-down times subtract
// without the C library's own idea of a time zone.
long long Giorni(long long anno, unsigned mese, unsigned giorno) {
  anno -= mese <= 2;
  const long long era = (anno >= 0 ? anno : anno - 399) / 400;
  const auto ae = static_cast<unsigned>(anno - era * 400);
  const unsigned m = mese > 2 ? mese - 3 : mese + 9;
  const unsigned ga = (153 * m + 2) / 5 + giorno - 1;
  const unsigned ee = ae * 365 + ae / 4 - ae / 100 + ga;
  return era * 146097 + static_cast<long long>(ee) - 719468;
}

long long Secondi(const std::tm& t) {
  return Giorni(t.tm_year + 1900LL, static_cast<unsigned>(t.tm_mon + 1), static_cast<unsigned>(t.tm_mday)) *
             86400 +
         t.tm_hour * 3600LL + t.tm_min * 60LL + t.tm_sec;
}

void Aggiungi(formats::Ambiente& a, formats::CartellaEseguibile cartella,
              const std::vector<std::string>& exe) {
  for (const std::string& e : exe) a.eseguibili.push_back({cartella, host::StudiaEseguibile(e, a.windows)});
}

}  // namespace

Ora OraLocale() {
  const std::time_t adesso = std::time(nullptr);
  std::tm locale{};
  std::tm utc{};
#ifdef _WIN32
  if (localtime_s(&locale, &adesso) || gmtime_s(&utc, &adesso)) return {};
#else
  if (!localtime_r(&adesso, &locale) || !gmtime_r(&adesso, &utc)) return {};
#endif
  char testo[96];
  std::snprintf(testo, sizeof testo, "%04d-%02d-%02dT%02d:%02d:%02d", locale.tm_year + 1900,
                locale.tm_mon + 1, locale.tm_mday, locale.tm_hour, locale.tm_min, locale.tm_sec);
  return {testo, static_cast<int>((Secondi(locale) - Secondi(utc)) / 60)};
}

formats::Ambiente RaccogliAmbiente(const CartelleControllo& cartelle, Orologio orologio) {
  formats::Ambiente a;
  a.programma = "CheckORDL";
  a.versioneProgramma = CHECKORDL_VERSIONE;
  a.bitProgramma = static_cast<int>(sizeof(void*) * 8);
  const Ora ora = orologio();
  a.dataLocale = ora.locale;
  a.scartoUtcMinuti = ora.scartoUtcMinuti;
  a.windows = host::LeggiSistemaWindows();

  // Both installations in one folder: its executables once, the editor's.
  const bool stessa = host::UgualiSenzaCaso(cartelle.trle, cartelle.ordl);
  Aggiungi(
      a, formats::CartellaEseguibile::editor,
      host::EseguibiliInCima(cartelle.trle, stessa ? std::vector<std::string>{"tomb4.exe", "ordl2009.exe"}
                                                   : std::vector<std::string>{"tomb4.exe"}));
  if (!stessa)
    Aggiungi(a, formats::CartellaEseguibile::ordelio,
             host::EseguibiliInCima(cartelle.ordl, {"ordl2009.exe"}));

  std::vector<std::string> viste;
  for (const std::string& c : {cartelle.archivio, cartelle.trle, cartelle.ordl}) {
    if (c.empty()) continue;
    bool giaVista = false;
    for (const std::string& v : viste) giaVista = giaVista || host::UgualiSenzaCaso(v, c);
    if (giaVista) continue;
    viste.push_back(c);
    std::size_t totale = 0;
    const std::size_t resto = formats::kMassimoPercorsiVirtuali - a.fileVirtuali.size();
    std::vector<std::string> file = host::FileDaVirtualStore(c, resto, &totale);
    if (file.size() > resto) file.resize(resto);
    a.fileVirtuali.insert(a.fileVirtuali.end(), file.begin(), file.end());
    a.fileVirtualiTotale += std::max(totale, file.size());
  }
  return a;
}

std::string CorpoAmbiente(formats::Ambiente a, const std::vector<std::string>& packati,
                          const std::vector<MembroEscluso>& esclusi) {
  for (const std::string& p : packati)
    if (host::PercorsoLettura(p) != p) a.membriVirtuali.push_back(p);
  for (const MembroEscluso& e : esclusi) a.nonLetti.push_back({e.percorso, e.errore});
  // A record without its moment was not made whole: the snapshot goes without it.
  if (a.dataLocale.empty()) return {};
  return formats::CodificaAmbiente(a);
}

}  // namespace collection
