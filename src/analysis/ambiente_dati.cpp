#include "analysis/ambiente_dati.h"

#include <cstdio>
#include <cstdlib>

#include "host/ambiente.h"

#include "collection/membri.h"
#include "host/macchina.h"
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

std::string Quanti(std::size_t n, const std::string& nome) {
  return std::to_string(n) + " " + nome + (n == 1 ? "" : "s");
}

std::string TestoZona(int zona) {
  static constexpr const char* kZone[] = {"Local machine", "Intranet", "Trusted sites", "Internet",
                                          "Restricted sites"};
  if (zona == host::kZonaNessuna) return "none";
  if (zona == host::kZonaIgnota) return "not available under Wine";
  const std::string numero = std::to_string(zona);
  return zona >= 0 && zona < 5 ? numero + " (" + kZone[zona] + ")" : numero;
}

std::string TestoAccessoControllato(const std::optional<std::uint32_t>& v) {
  if (!v) return "not set";
  if (*v == 0) return "off";
  if (*v == 1) return "on";
  if (*v == 2) return "audit only";
  return "value " + std::to_string(*v);
}

std::string TestoDep(const std::optional<std::uint32_t>& v) {
  static constexpr const char* kDep[] = {"always off", "always on", "opt-in", "opt-out"};
  if (!v) return "not known";
  std::string t = *v < 4 ? kDep[*v] : "value";
  t.append(" (").append(std::to_string(*v)).append(")");
  return t;
}

}  // namespace analysis
