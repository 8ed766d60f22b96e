#include "collection/scansione.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

#include "collection/snapshot.h"
#include "host/collegamenti.h"
#include "host/machine.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace collection {
namespace {

constexpr std::size_t kPezzoScrittura = 1 << 20;

// A file of 2 GiB or more has no 32-bit size; it is recorded as 0, as a size that could not be read.
std::int32_t Dimensione32(std::int64_t n) {
  return n < 0 || n > std::numeric_limits<std::int32_t>::max() ? 0 : static_cast<std::int32_t>(n);
}

// Reads a list in pieces, knowing how much of the file is left, so that nothing is made for a count or a
// length that the rest of the file could not hold.
class Lettore {
 public:
  Lettore(host::File& file, std::int64_t lunghezza)
      : file_(file), lunghezza_(lunghezza), pezzo_(std::make_unique<char[]>(kPezzo)) {}

  std::int64_t Posizione() const { return letti_; }
  std::int64_t Restanti() const { return lunghezza_ - letti_; }

  bool Leggi(char* dove, std::size_t n) {
    if (static_cast<std::int64_t>(n) > Restanti()) return false;
    while (n > 0) {
      if (inizio_ == fine_) {
        inizio_ = 0;
        fine_ = file_.Leggi(pezzo_.get(), kPezzo);
        if (fine_ == 0) return false;
      }
      const std::size_t k = std::min(n, fine_ - inizio_);
      std::copy_n(pezzo_.get() + inizio_, k, dove);
      inizio_ += k;
      dove += k;
      n -= k;
      letti_ += static_cast<std::int64_t>(k);
    }
    return true;
  }

  bool Intero(std::int32_t* v) {
    std::array<unsigned char, 4> b{};
    if (!Leggi(reinterpret_cast<char*>(b.data()), b.size())) return false;
    *v = static_cast<std::int32_t>(
        static_cast<std::uint32_t>(b[0]) | (static_cast<std::uint32_t>(b[1]) << 8) |
        (static_cast<std::uint32_t>(b[2]) << 16) | (static_cast<std::uint32_t>(b[3]) << 24));
    return true;
  }

  // The writer has no limit, but no path comes near the length that the snapshot's reader takes.
  bool Stringa(std::string* s) {
    std::int32_t n = 0;
    if (!Intero(&n) || n < 0 || n > kLunghezzaMassimaNome || n > Restanti()) return false;
    s->resize(static_cast<std::size_t>(n));
    return Leggi(s->data(), s->size());
  }

 private:
  static constexpr std::size_t kPezzo = 64 * 1024;
  host::File& file_;
  std::int64_t lunghezza_;
  std::int64_t letti_ = 0;
  std::unique_ptr<char[]> pezzo_;
  std::size_t inizio_ = 0, fine_ = 0;
};

void MostraInfo(Principale& p, const std::string& testo) {
  p.Label_Info.ImpostaTesto(testo);
  p.Label_Info.Ridisegna();
}

}  // namespace

bool AggiungiFileAllElenco(Scansione& scansione, const std::string& path, std::int64_t dimensione) {
  scansione.FileTrovati.push_back(path);
  scansione.DimensioniTrovate.resize(scansione.FileTrovati.size(), -1);
  scansione.DimensioniTrovate.back() = dimensione;
  ++scansione.NumeroFileTrovati;
  return true;
}

bool ScansioneCartella(Scansione& scansione, const std::string& cartella, support::CicloEventi& eventi) {
  // Folders still to walk, the next one last. A stack of our own rather than recursion, so the depth of a
  // tree cannot exhaust the call stack. Each folder is read whole before any sub-folder is entered.
  std::vector<host::CartellaDaLeggere> daFare = {host::ApriCartella(cartella)};
  std::vector<host::VoceCartella> voci;
  std::vector<host::CartellaDaLeggere> sottocartelle;
  while (!daFare.empty()) {
    const host::CartellaDaLeggere c = std::move(daFare.back());
    daFare.pop_back();
    eventi.UnTurno();
    const std::string base =
        !c.percorso.empty() && c.percorso.back() == '\\' ? c.percorso : c.percorso + '\\';
    // Hidden and system entries, folders among them, do not come back.
    host::LeggiCartella(c, host::kAttrDirectory, voci);
    sottocartelle.clear();
    for (const auto& v : voci) {
      if (!(v.attributi & host::kAttrDirectory))
        AggiungiFileAllElenco(scansione, base + v.nome, v.dimensione);
      else if (!v.collegamento)
        sottocartelle.push_back(host::Sottocartella(c, v.nome));
    }
    daFare.insert(daFare.end(), std::make_move_iterator(sottocartelle.rbegin()),
                  std::make_move_iterator(sottocartelle.rend()));
  }
  return true;
}

std::string NomeRelativo(const std::string& percorso, const std::string& base) {
  // Every path of a walk begins with its base, so the search is rarely needed.
  if (percorso.size() >= base.size() &&
      host::UgualiSenzaCaso(std::string_view(percorso).substr(0, base.size()), base))
    return percorso.substr(base.size());
  const std::size_t k = host::Maiuscolo(percorso).find(host::Maiuscolo(base));
  if (k == std::string::npos) return percorso;
  return percorso.substr(0, k) + percorso.substr(k + base.size());
}

bool CreaElencoFile(const std::string& NomeFile, const std::string& Cartella, Principale& principale) {
  support::CancellaFile(NomeFile);
  if (Cartella.empty() || !support::DirExists(Cartella)) return false;

  Scansione scansione;
  MostraInfo(principale, "Parsing folder \"" + Cartella + "\" in progress...");
  ScansioneCartella(scansione, Cartella, principale.Eventi);

  ElencoFile elenco;
  elenco.CartellaBase = Cartella;
  elenco.NumeroFile = scansione.NumeroFileTrovati;
  elenco.NomiFile.resize(static_cast<std::size_t>(elenco.NumeroFile));
  elenco.DimensioniFile.resize(static_cast<std::size_t>(elenco.NumeroFile));
  for (std::int32_t i = 0; i < elenco.NumeroFile; ++i) {
    support::AggiornaProgresso(principale.ProgressBar1, elenco.NumeroFile, i + 1);
    std::string& trovato = scansione.FileTrovati[static_cast<std::size_t>(i)];
    elenco.NomiFile[i] = NomeRelativo(trovato, Cartella);
    std::int64_t dimensione = scansione.DimensioniTrovate[static_cast<std::size_t>(i)];
    if (dimensione < 0) {
      int err = 0;
      dimensione = host::LunghezzaFile(trovato, &err);
      if (err) dimensione = 0;
    }
    elenco.DimensioniFile[i] = Dimensione32(dimensione);
    std::string().swap(trovato);  // the full path is no longer needed; keeps the peak at one copy
  }
  principale.ProgressBar1.SetValue(0);
  principale.ProgressBar1.Refresh();
  MostraInfo(principale, "Saving file list in progress...");

  const bool scritto = ScriviElencoFile(NomeFile, elenco);
  MostraInfo(principale, "");
  return scritto;
}

bool ScriviElencoFile(const std::string& NomeFile, const ElencoFile& elenco) {
  int err = 0;
  host::File out = host::File::ApriScrittura(NomeFile, &err);
  if (err || !out.Aperto()) return false;
  const auto n = static_cast<std::size_t>(std::max<std::int32_t>(elenco.NumeroFile, 0));
  // The fields go through a buffer written in pieces: two writes a name would cost more than the walk.
  std::string pezzo;
  pezzo.reserve(kPezzoScrittura + 4096);
  auto scarica = [&](bool sempre) {
    if (sempre || pezzo.size() >= kPezzoScrittura) {
      out.Scrivi(pezzo.data(), pezzo.size());
      pezzo.clear();
    }
  };
  AccodaIntero(pezzo, elenco.NumeroFile);
  AccodaStringaLunga(pezzo, elenco.CartellaBase);
  for (std::size_t i = 0; i < n; ++i) {
    AccodaStringaLunga(pezzo, elenco.NomiFile[i]);
    scarica(false);
  }
  for (std::size_t i = 0; i < n; ++i) {
    AccodaIntero(pezzo, elenco.DimensioniFile[i]);
    scarica(false);
  }
  scarica(true);
  return true;
}

bool CaricaElencoFile(const std::string& NomeFile, ElencoFile& elenco, support::BarraProgresso* barra) {
  elenco = ElencoFile{};
  int err = 0;
  host::File in = host::File::ApriLettura(NomeFile, &err);
  if (err || !in.Aperto()) return false;
  const std::int64_t lunghezza = in.Lunghezza();
  if (lunghezza < 0) return false;
  Lettore l(in, lunghezza);
  auto avanza = [&] {
    if (barra)
      support::AggiornaProgresso(*barra, static_cast<double>(lunghezza), static_cast<double>(l.Posizione()));
  };

  ElencoFile letto;
  if (!l.Intero(&letto.NumeroFile) || !l.Stringa(&letto.CartellaBase)) return false;
  // Each entry takes at least its name's length field and its size.
  if (letto.NumeroFile < 0 || letto.NumeroFile > l.Restanti() / 8) return false;
  const auto n = static_cast<std::size_t>(letto.NumeroFile);
  letto.NomiFile.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    // What is left must still hold the other names' length fields and all the sizes.
    if (!l.Stringa(&letto.NomiFile[i]) || l.Restanti() < static_cast<std::int64_t>(4 * (n - i - 1) + 4 * n))
      return false;
    avanza();
  }
  letto.DimensioniFile.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    if (!l.Intero(&letto.DimensioniFile[i]) || letto.DimensioniFile[i] < 0) return false;
    avanza();
  }
  // A list ends with its last size; more bytes mean a file of another kind.
  if (l.Restanti() != 0) return false;
  elenco = std::move(letto);
  return true;
}

}  // namespace collection
