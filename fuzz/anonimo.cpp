// The anonymized copy, made from any bytes that open as a snapshot: the copy opens too, holds what the
// table says, keeps the length of every member whose offsets are fixed, and anonymized once more finds no
// account name that the first pass replaced (only stand-ins, whole or made to a name's length).
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>

#include "analysis/copia_anonima.h"
#include "collection/membri.h"
#include "host/nomi.h"

namespace {

bool LunghezzaLibera(const std::string& nome) {
  const std::string n = host::Maiuscolo(nome);
  return n.ends_with(".EL") || n.ends_with(".LE") || n.ends_with("ORDEIO.TXT") ||
         n.ends_with(host::Maiuscolo(collection::VoceDi(collection::Membro::ambiente).nomeDati));
}

// A name that holds something of a stand-in (user1, u1, 1, their padding): the inputs the fuzzer makes
// soon hold the copy's own words, and a name made of them and of the bytes around says nothing of anyone.
bool DiSostituto(const std::string& nome) {
  const std::string n = host::Maiuscolo(nome);
  if (n.find("USER") != std::string::npos || n.find('_') != std::string::npos || n == "U" || n == "US" ||
      n == "USE")
    return true;
  for (std::size_t i = 0; i < n.size(); ++i)
    if (n[i] >= '0' && n[i] <= '9') return true;
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  collection::SnapshotInMemoria s;
  if (!collection::DecodificaSnapshot(std::string_view(reinterpret_cast<const char*>(dati), n), s)) return 0;
  analysis::Anonimizza(s, {true});
  const analysis::CopiaAnonima c = analysis::Anonimizza(s, {});
  // What the copy keeps is read from its own members, any bytes at all, and never listed beyond its cap.
  if (analysis::CercaResidui(c).voci.size() > analysis::kResiduiMostrati) std::abort();

  collection::SnapshotInMemoria letta;
  if (!collection::DecodificaSnapshot(collection::CodificaSnapshot(c.copia), letta)) std::abort();
  if (letta.tabella.Nomi != c.copia.tabella.Nomi || letta.corpi != c.copia.corpi) std::abort();
  for (std::size_t i = 0; i < s.corpi.size(); ++i)
    if (!LunghezzaLibera(s.tabella.Nomi[i]) && c.copia.corpi[i].size() != s.corpi[i].size()) std::abort();

  // The names the input held (a name the first pass met in its own stand-ins, across two fields, is not one).
  const std::string ingresso = host::Maiuscolo(std::string_view(reinterpret_cast<const char*>(dati), n));
  std::set<std::string> sostituiti;
  for (const auto& v : c.chiave)
    if (!DiSostituto(v.originale) && ingresso.find(host::Maiuscolo(v.originale)) != std::string::npos)
      sostituiti.insert(host::Maiuscolo(v.originale));
  for (const auto& v : analysis::Anonimizza(c.copia, {}).chiave)
    if (sostituiti.contains(host::Maiuscolo(v.originale))) std::abort();
  return 0;
}
