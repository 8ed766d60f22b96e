#include "formats/elenco.h"

#include <algorithm>
#include <string_view>

#include "host/byte_le.h"
#include "host/macchina.h"
#include "support/files.h"
#include "support/valori.h"

namespace formats {
namespace {

constexpr std::size_t kPezzoScrittura = 1 << 20;

void AccodaStringa(std::string& buffer, const std::string& testo) {
  host::AccodaLE(buffer, static_cast<std::uint32_t>(testo.size()));
  buffer += testo;
}

// The whole file in one read: it is no bigger than what it lists, and is what it holds.
GuastoElenco LeggiFile(const std::string& percorso, std::string& byte) {
  if (!support::FileExists(percorso)) return GuastoElenco::kFileNonTrovato;
  int err = 0;
  host::File in = host::File::ApriLettura(percorso, &err);
  if (err || !in.Aperto()) return GuastoElenco::kAccessoNegato;
  const std::int64_t lunghezza = in.Lunghezza();
  if (lunghezza < 0) return GuastoElenco::kAccessoNegato;
  byte.assign(static_cast<std::size_t>(lunghezza), '\0');
  byte.resize(in.Leggi(byte.data(), byte.size()));
  return GuastoElenco::kNessuno;
}

class Cursore {
 public:
  explicit Cursore(std::string_view byte, std::size_t pos = 0)
      : byte_(byte), pos_(std::min(pos, byte.size())) {}
  std::size_t Posizione() const { return pos_; }
  std::size_t Restanti() const { return byte_.size() - pos_; }

  // False, with `v` at 0 and the cursor at the end, when fewer than four bytes are left.
  bool Intero(std::int32_t& v) {
    v = 0;
    if (Restanti() < 4) {
      pos_ = byte_.size();
      return false;
    }
    v = host::I32LE(byte_, pos_);
    pos_ += 4;
    return true;
  }
  // `n` bytes, or as many as are left.
  std::string Prendi(std::size_t n) {
    n = std::min(n, Restanti());
    std::string s(byte_.substr(pos_, n));
    pos_ += n;
    return s;
  }
  void Avanza(support::BarraProgresso* barra) const {
    if (barra)
      support::AggiornaProgresso(*barra, static_cast<double>(byte_.size()), static_cast<double>(pos_));
  }

 private:
  std::string_view byte_;
  std::size_t pos_ = 0;
};

bool StringaStretta(Cursore& c, std::string& s) {
  std::int32_t n = 0;
  if (!c.Intero(n) || n < 0 || n > kLunghezzaMassimaNome || static_cast<std::size_t>(n) > c.Restanti())
    return false;
  s = c.Prendi(static_cast<std::size_t>(n));
  return true;
}

PezzoElenco StringaTollerante(Cursore& c) {
  std::int32_t n = 0;
  c.Intero(n);
  if (n < 1 || n > kLunghezzaMassimaNome) return {c.Posizione(), 0};
  const std::size_t da = c.Posizione();
  return {da, c.Prendi(static_cast<std::size_t>(n)).size()};
}

// The lenient reader's walk over a list's bytes: the count, the folder, then each name handed to `nome` as
// it is met (room is made for the names only by the caller, and only when the file could hold them all);
// `dimensioni` is where the sizes begin.
template <typename Nome>
GuastoElenco PercorriTollerante(std::string_view byte, support::BarraProgresso* barra, std::int32_t& numero,
                                PezzoElenco& base, std::size_t& dimensioni, Nome nome) {
  Cursore c(byte);
  c.Intero(numero);
  base = StringaTollerante(c);
  if (numero < 0) return GuastoElenco::kConteggioNegativo;
  // A few bytes never ask for gigabytes: the count is held against what the file could hold.
  if (static_cast<std::size_t>(numero) > byte.size()) return GuastoElenco::kConteggioTroppoGrande;
  for (std::int32_t i = 0; i < numero; ++i) {
    nome(StringaTollerante(c));
    c.Avanza(barra);
  }
  dimensioni = c.Posizione();
  return GuastoElenco::kNessuno;
}

// The list's fields behind `byte`; `scarica(false)` after each entry may take what stands so far, and
// `scarica(true)` comes once at the end.
template <typename Scarica>
void AccodaElenco(const ElencoFile& elenco, std::string& byte, Scarica scarica) {
  const auto n = static_cast<std::size_t>(std::max<std::int32_t>(elenco.NumeroFile, 0));
  host::AccodaLE(byte, static_cast<std::uint32_t>(elenco.NumeroFile));
  AccodaStringa(byte, elenco.CartellaBase);
  for (std::size_t i = 0; i < n; ++i) {
    AccodaStringa(byte, elenco.NomiFile[i]);
    scarica(false);
  }
  for (std::size_t i = 0; i < n; ++i) {
    host::AccodaLE(byte, static_cast<std::uint32_t>(elenco.DimensioniFile[i]));
    scarica(false);
  }
  scarica(true);
}

}  // namespace

bool ScriviElencoFile(const std::string& NomeFile, const ElencoFile& elenco) {
  int err = 0;
  host::File out = host::File::ApriScrittura(NomeFile, &err);
  return !err && ScriviElencoFile(out, elenco);
}

std::string CodificaElenco(const ElencoFile& elenco) {
  std::string byte;
  AccodaElenco(elenco, byte, [](bool) {});
  return byte;
}

bool ScriviElencoFile(host::File& out, const ElencoFile& elenco) {
  if (!out.Aperto()) return false;
  // The fields go through a buffer written in pieces: two writes a name would cost more than the walk.
  std::string pezzo;
  pezzo.reserve(kPezzoScrittura + 4096);
  bool scritto = true;
  AccodaElenco(elenco, pezzo, [&](bool sempre) {
    if (sempre || pezzo.size() >= kPezzoScrittura) {
      scritto = scritto && out.Scrivi(pezzo.data(), pezzo.size());
      pezzo.clear();
    }
  });
  return scritto;
}

bool CaricaElencoStretto(const std::string& NomeFile, ElencoFile& elenco, support::BarraProgresso* barra) {
  elenco = ElencoFile{};
  std::string byte;
  return LeggiFile(NomeFile, byte) == GuastoElenco::kNessuno && DecodificaElencoStretto(byte, elenco, barra);
}

bool DecodificaElencoStretto(std::string_view byte, ElencoFile& elenco, support::BarraProgresso* barra) {
  elenco = ElencoFile{};
  Cursore c(byte);
  ElencoFile letto;
  if (!c.Intero(letto.NumeroFile) || !StringaStretta(c, letto.CartellaBase)) return false;
  // Each entry takes at least its name's length field and its size.
  if (letto.NumeroFile < 0 || static_cast<std::size_t>(letto.NumeroFile) > c.Restanti() / 8) return false;
  const auto n = static_cast<std::size_t>(letto.NumeroFile);
  letto.NomiFile.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    // What is left must still hold the other names' length fields and all the sizes.
    if (!StringaStretta(c, letto.NomiFile[i]) || c.Restanti() < 4 * (n - i - 1) + 4 * n) return false;
    c.Avanza(barra);
  }
  letto.DimensioniFile.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    if (!c.Intero(letto.DimensioniFile[i]) || letto.DimensioniFile[i] < 0) return false;
    c.Avanza(barra);
  }
  // A list ends with its last size; more bytes mean a file of another kind.
  if (c.Restanti() != 0) return false;
  elenco = std::move(letto);
  return true;
}

PezziElenco PezziElencoTollerante(std::string_view byte, support::BarraProgresso* barra) {
  PezziElenco p;
  p.guasto = PercorriTollerante(byte, barra, p.numero, p.base, p.dimensioni, [&](PezzoElenco nome) {
    if (p.nomi.empty()) p.nomi.reserve(static_cast<std::size_t>(p.numero));
    p.nomi.push_back(nome);
  });
  return p;
}

GuastoElenco CaricaElencoTollerante(const std::string& NomeFile, ElencoFile& elenco,
                                    support::BarraProgresso* barra) {
  elenco = ElencoFile{};
  std::string byte;
  if (const GuastoElenco g = LeggiFile(NomeFile, byte); g != GuastoElenco::kNessuno) return g;
  const auto testo = [&](PezzoElenco t) { return byte.substr(t.posizione, t.lunghezza); };
  PezzoElenco base;
  std::size_t dimensioni = 0;
  const GuastoElenco g =
      PercorriTollerante(byte, barra, elenco.NumeroFile, base, dimensioni, [&](PezzoElenco nome) {
        if (elenco.NomiFile.empty()) elenco.NomiFile.reserve(static_cast<std::size_t>(elenco.NumeroFile));
        elenco.NomiFile.push_back(testo(nome));
      });
  elenco.CartellaBase = testo(base);
  if (g != GuastoElenco::kNessuno) {
    elenco.NumeroFile = 0;
    return g;
  }
  Cursore c(byte, dimensioni);
  elenco.DimensioniFile.assign(elenco.NomiFile.size(), 0);
  for (std::int32_t& d : elenco.DimensioniFile) {
    c.Intero(d);
    c.Avanza(barra);
  }
  return GuastoElenco::kNessuno;
}

}  // namespace formats
