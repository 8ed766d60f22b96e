// The anonymized copy, made from any bytes that open as a snapshot: the copy opens too, holds what the
// table says, keeps the length of every member whose offsets are fixed, and anonymized once more finds no
// account name that the first pass replaced (only stand-ins, whole or made to a name's length).
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>

#include "analysis/copia_anonima.h"
#include "host/nomi.h"

namespace {

bool LunghezzaLibera(const std::string& nome) {
  const std::string n = host::Maiuscolo(nome);
  return n.ends_with(".EL") || n.ends_with(".LE") || n.ends_with("ORDEIO.TXT");
}

// A name that some stand-in of the copy could have become where it had to take that name's length.
bool FormaDiSostituto(const std::string& nome, const std::vector<analysis::VoceChiave>& chiave) {
  for (const auto& v : chiave)
    if (host::UgualiSenzaCaso(analysis::SostitutoLungo(v.sostituto, nome.size()), nome)) return true;
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  collection::SnapshotInMemoria s;
  if (!collection::DecodificaSnapshot(std::string_view(reinterpret_cast<const char*>(dati), n), s)) return 0;
  analysis::Anonimizza(s, {true});
  const analysis::CopiaAnonima c = analysis::Anonimizza(s, {});

  collection::SnapshotInMemoria letta;
  if (!collection::DecodificaSnapshot(collection::CodificaSnapshot(c.copia), letta)) std::abort();
  if (letta.tabella.Nomi != c.copia.tabella.Nomi || letta.corpi != c.copia.corpi) std::abort();
  for (std::size_t i = 0; i < s.corpi.size(); ++i)
    if (!LunghezzaLibera(s.tabella.Nomi[i]) && c.copia.corpi[i].size() != s.corpi[i].size()) std::abort();

  std::set<std::string> sostituiti;
  for (const auto& v : c.chiave)
    if (!FormaDiSostituto(v.originale, c.chiave)) sostituiti.insert(host::Maiuscolo(v.originale));
  for (const auto& v : analysis::Anonimizza(c.copia, {}).chiave)
    if (sostituiti.contains(host::Maiuscolo(v.originale))) std::abort();
  return 0;
}
