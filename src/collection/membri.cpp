#include "collection/membri.h"

#include <algorithm>

#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace collection {

std::optional<Membro> MembroDiNome(const std::string& nomeTabella) {
  const std::string nome = NomeDestinazione(nomeTabella);
  if (host::UgualiSenzaCaso(support::EstraiEstensione(nome), ".qlv")) return Membro::archivio;
  for (const VoceMembro& v : kMembri)
    if (host::UgualiSenzaCaso(nome, v.nomeDati)) return v.membro;
  return std::nullopt;
}

std::string TrovaArchivio(const ContenutoSnapshot& contenuto, const std::string& cartellaDati) {
  // A table whose count disagrees with its list is walked only as far as both go.
  const std::size_t numero =
      std::min(static_cast<std::size_t>(std::max(contenuto.Numero, 0)), contenuto.Nomi.size());
  for (std::size_t i = 0; i < numero; ++i) {
    const std::string nome = support::PulisciStringa(contenuto.Nomi[i]);
    if (host::UgualiSenzaCaso(support::EstraiEstensione(nome), ".qlv"))
      return cartellaDati + "\\" + support::EstraiNomeFile(nome);
  }
  return "";
}

}  // namespace collection
