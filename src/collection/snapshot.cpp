#include "collection/snapshot.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "formats/elenco.h"
#include "host/byte_le.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace collection {
namespace {

// Bodies travel in pieces of this size, so memory stays small whatever a member's size.
constexpr std::size_t kPezzo = 1 << 20;

void ScriviIntero(host::File& f, std::int32_t v) {
  std::string b;
  host::AccodaLE(b, static_cast<std::uint32_t>(v));
  f.Scrivi(b.data(), b.size());
}

// A 32-bit length and that many bytes, no terminator.
void ScriviStringaLunga(const std::string& testo, host::File& file) {
  ScriviIntero(file, static_cast<std::int32_t>(testo.size()));
  file.Scrivi(testo.data(), testo.size());
}

// False when the file ends first.
bool LeggiIntero(host::File& f, std::int32_t* v) {
  std::string b(4, '\0');
  if (f.Leggi(b.data(), b.size()) != b.size()) return false;
  *v = host::I32LE(b, 0);
  return true;
}

// The size a member is recorded with: 0 when it cannot be measured or does not fit 32 bits.
std::int32_t Misura(const std::string& percorso) {
  int err = 0;
  const std::int64_t n = host::LunghezzaFile(percorso, &err);
  if (err || n < 0 || n > std::numeric_limits<std::int32_t>::max()) return 0;
  return static_cast<std::int32_t>(n);
}

// Copies exactly `dimensione` bytes of the member into the snapshot: a member that shrank or cannot be read
// is made up with NULs, one that grew is cut, so the table and the bodies always agree.
void CopiaCorpo(const std::string& percorso, std::int64_t dimensione, host::File& out, char* pezzo) {
  int err = 0;
  host::File in = host::File::ApriLettura(percorso, &err);
  std::int64_t restante = dimensione;
  bool leggibile = !err && in.Aperto();
  while (restante > 0) {
    const auto voglio = static_cast<std::size_t>(std::min<std::int64_t>(restante, kPezzo));
    std::size_t avuti = leggibile ? in.Leggi(pezzo, voglio) : 0;
    if (avuti < voglio) {
      leggibile = false;
      std::fill(pezzo + avuti, pezzo + voglio, '\0');
    }
    out.Scrivi(pezzo, voglio);
    restante -= static_cast<std::int64_t>(voglio);
  }
}

}  // namespace

std::string NomeDestinazione(const std::string& nomeMembro) {
  const std::string nome = support::EstraiNomeFile(nomeMembro);
  // Windows drops trailing dots and blanks, so a name made only of them could mean the folder or its parent.
  if (nome.find_first_not_of(". ") == std::string::npos) return {};
  if (nome.find('/') != std::string::npos || nome.find('\0') != std::string::npos) return {};
  if (host::NomeDispositivo(nome)) return {};
  return nome;
}

bool SalvaSnapshot(const std::string& NomeFile, const std::vector<std::string>& Membri,
                   std::int32_t NumeroMembri, support::Didascalia& labelInfo,
                   support::BarraProgresso& barra) {
  labelInfo.ImpostaTesto("Saving ordl_info file");
  labelInfo.Ridisegna();
  support::CancellaFile(NomeFile);

  ContenutoSnapshot t;
  const auto quanti = std::min<std::size_t>(std::max<std::int32_t>(NumeroMembri, 0), Membri.size());
  for (std::size_t i = 0; i < quanti; ++i) {
    if (!support::FileExists(Membri[i])) continue;
    t.Nomi.push_back(Membri[i]);
    t.Dimensioni.push_back(Misura(Membri[i]));
  }
  t.Numero = static_cast<std::int32_t>(t.Nomi.size());

  int err = 0;
  host::File out = host::File::ApriScrittura(NomeFile, &err);
  if (err || !out.Aperto()) return false;

  ScriviIntero(out, t.Numero);
  for (std::int32_t i = 0; i < t.Numero; ++i) {
    ScriviStringaLunga(t.Nomi[i], out);
    ScriviIntero(out, t.Dimensioni[i]);
  }
  const auto pezzo = std::make_unique<char[]>(kPezzo);
  for (std::int32_t i = 0; i < t.Numero; ++i) {
    support::AggiornaProgresso(barra, t.Numero, i + 1);
    CopiaCorpo(t.Nomi[i], t.Dimensioni[i], out, pezzo.get());
  }
  out.Chiudi();

  labelInfo.ImpostaTesto("");
  labelInfo.Ridisegna();
  barra.SetValue(0);
  barra.Refresh();
  return true;
}

bool EstraiSnapshot(const std::string& NomeFile, const std::string& Cartella, ContenutoSnapshot& contenuto,
                    const std::string& base) {
  if (!support::FileExists(NomeFile)) return false;
  int err = 0;
  host::File in = host::File::ApriLettura(NomeFile, &err);
  if (err || !in.Aperto()) return false;
  const std::int64_t lunghezza = in.Lunghezza();

  // Every count and size is held against what the file can still hold before anything is made for it.
  std::int32_t numero = 0;
  if (!LeggiIntero(in, &numero) || numero < 0 || numero > (lunghezza - 4) / 8) return false;
  contenuto = ContenutoSnapshot{};
  contenuto.Numero = numero;
  contenuto.Nomi.reserve(static_cast<std::size_t>(numero));
  contenuto.Dimensioni.reserve(static_cast<std::size_t>(numero));
  for (std::int32_t i = 0; i < numero; ++i) {
    std::int32_t l = 0;
    if (!LeggiIntero(in, &l) || l < 0 || l > lunghezza - in.Posizione()) return false;
    std::string nome;
    if (l >= 1 && l <= formats::kLunghezzaMassimaNome) {
      nome.resize(static_cast<std::size_t>(l));
      if (in.Leggi(nome.data(), nome.size()) != nome.size()) return false;
    }
    std::int32_t dimensione = 0;
    if (!LeggiIntero(in, &dimensione)) return false;
    contenuto.Nomi.push_back(std::move(nome));
    contenuto.Dimensioni.push_back(dimensione);
  }

  const auto pezzo = std::make_unique<char[]>(kPezzo);
  for (std::int32_t i = 0; i < numero; ++i) {
    const std::int32_t dimensione = contenuto.Dimensioni[i];
    if (dimensione < 0 || dimensione > lunghezza - in.Posizione()) return false;
    const std::string nome = NomeDestinazione(contenuto.Nomi[i]);
    if (nome.empty()) {
      if (!in.Salta(dimensione)) return false;
      continue;
    }
    err = 0;
    const std::string destinazione = Cartella + "\\" + nome;
    host::File out = base.empty() ? host::File::ApriScrittura(destinazione, &err)
                                  : host::File::ApriScritturaSotto(base, destinazione, &err);
    for (std::int64_t restante = dimensione; restante > 0;) {
      const auto voglio = static_cast<std::size_t>(std::min<std::int64_t>(restante, kPezzo));
      if (in.Leggi(pezzo.get(), voglio) != voglio) return false;
      if (out.Aperto()) out.Scrivi(pezzo.get(), voglio);
      restante -= static_cast<std::int64_t>(voglio);
    }
  }
  return true;
}

}  // namespace collection
