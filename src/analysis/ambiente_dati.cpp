#include "analysis/ambiente_dati.h"

#include <cstdio>
#include <cstdlib>

#include "collection/membri.h"
#include "host/machine.h"
#include "support/files.h"

namespace analysis {

AmbienteLetto LeggiAmbienteDati(const std::string& cartellaDati) {
  AmbienteLetto r;
  const std::string percorso = collection::FileDati(cartellaDati, collection::Membro::ambiente);
  if (!support::FileExists(percorso)) return r;
  r.stato = StatoAmbiente::illeggibile;
  int err = 0;
  const std::int64_t lunghezza = host::LunghezzaFile(percorso, &err);
  if (err || lunghezza < 0 || lunghezza > kAmbienteMassimo) {
    r.motivo = err ? "it cannot be read" : "it is larger than any check run writes";
    return r;
  }
  if (formats::DecodificaAmbiente(support::LeggiFile(percorso), &r.ambiente, &r.motivo))
    r.stato = StatoAmbiente::letto;
  return r;
}

std::string DataControllo(const formats::Ambiente& a) {
  std::string d = a.dataLocale;
  if (d.size() > 10 && d[10] == 'T') d[10] = ' ';
  const int m = std::abs(a.scartoUtcMinuti);
  char scarto[16];
  std::snprintf(scarto, sizeof scarto, "%c%02d:%02d", a.scartoUtcMinuti < 0 ? '-' : '+', m / 60, m % 60);
  return d + " (UTC" + scarto + ")";
}

}  // namespace analysis
