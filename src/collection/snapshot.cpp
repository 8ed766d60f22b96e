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

// A 32-bit length and that many bytes, no terminator.
void ScriviStringaLunga(const std::string& testo, std::string& byte) {
  host::AccodaLE(byte, static_cast<std::uint32_t>(testo.size()));
  byte += testo;
}

// False when the file ends first.
template <typename Sorgente>
bool LeggiIntero(Sorgente& f, std::int32_t* v) {
  std::string b(4, '\0');
  if (f.Leggi(b.data(), b.size()) != b.size()) return false;
  *v = host::I32LE(b, 0);
  return true;
}

// Bytes in memory read as a file is: the snapshot's table has one reader for both.
class ByteInMemoria {
 public:
  explicit ByteInMemoria(std::string_view byte) : byte_(byte) {}
  std::size_t Leggi(char* buf, std::size_t n) {
    n = byte_.substr(pos_).copy(buf, n);
    pos_ += n;
    return n;
  }
  std::int64_t Posizione() const { return static_cast<std::int64_t>(pos_); }
  std::string_view Prendi(std::size_t n) {
    const std::string_view s = byte_.substr(pos_, n);
    pos_ += s.size();
    return s;
  }

 private:
  std::string_view byte_;
  std::size_t pos_ = 0;
};

// The count and the table, every count and length held against the `lunghezza` of the whole file before
// anything is made for it. A name's length outside 1 to the longest gives "" and the read goes on behind
// the length field.
template <typename Sorgente>
bool LeggiTabella(Sorgente& in, std::int64_t lunghezza, ContenutoSnapshot& contenuto) {
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
  return true;
}

std::string CodificaTabella(const ContenutoSnapshot& t) {
  std::string b;
  host::AccodaLE(b, static_cast<std::uint32_t>(t.Numero));
  for (std::int32_t i = 0; i < t.Numero; ++i) {
    ScriviStringaLunga(t.Nomi[i], b);
    host::AccodaLE(b, static_cast<std::uint32_t>(t.Dimensioni[i]));
  }
  return b;
}

// The size a member is recorded with: 0 when it cannot be measured or does not fit 32 bits.
std::int32_t Misura(const std::string& percorso) {
  int err = 0;
  const std::int64_t n = host::LunghezzaFile(percorso, &err);
  if (err || n < 0 || n > std::numeric_limits<std::int32_t>::max()) return 0;
  return static_cast<std::int32_t>(n);
}

// Why writing the snapshot stopped: its own file failed, or a member could not be read whole.
enum class Guasto { nessuno, scrittura, membro };

// Copies exactly `dimensione` bytes of the member into the snapshot, so that the table and the bodies agree:
// a member that grew meanwhile is cut, one that shrank is made up with NULs. A member that cannot be opened,
// or whose reading fails, is a failure of the member, with the platform's error in `errore`.
Guasto CopiaCorpo(const std::string& percorso, std::int64_t dimensione, host::File& out, char* pezzo,
                  int* errore) {
  host::File in = host::File::ApriLettura(percorso, errore);
  if (*errore || !in.Aperto()) {
    if (!*errore) *errore = host::kErrPathFileAccess;
    return Guasto::membro;
  }
  bool finito = false;
  for (std::int64_t restante = dimensione; restante > 0;) {
    const auto voglio = static_cast<std::size_t>(std::min<std::int64_t>(restante, kPezzo));
    const std::size_t avuti = finito ? 0 : in.Leggi(pezzo, voglio);
    if (in.ErroreLettura()) {
      *errore = host::kErrPathFileAccess;
      return Guasto::membro;
    }
    if (avuti < voglio) {
      finito = true;
      std::fill(pezzo + avuti, pezzo + voglio, '\0');
    }
    if (!out.Scrivi(pezzo, voglio)) return Guasto::scrittura;
    restante -= static_cast<std::int64_t>(voglio);
  }
  return Guasto::nessuno;
}

// The member made in memory, for the files `t` holds and those left out so far; "" when there is none or it
// could not be made.
std::string CorpoGenerato(const MembroGenerato* generato, const ContenutoSnapshot& t,
                          const std::vector<MembroEscluso>& fuori) {
  if (!generato || !generato->corpo) return {};
  try {
    std::string corpo = generato->corpo(t.Nomi, fuori);
    return corpo.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) ? std::string()
                                                                                             : corpo;
  } catch (...) {
    return {};
  }
}

// The whole snapshot into the new file `out`: the files of `t`, then `ultimo` under `nomeUltimo` when it is
// not empty. `membro` is the index of a file that could not be read, `errore` why.
Guasto ScriviContenuto(host::File& out, const ContenutoSnapshot& t, const std::string& nomeUltimo,
                       const std::string& ultimo, support::BarraProgresso& barra, std::size_t* membro,
                       int* errore) {
  ContenutoSnapshot tutta = t;
  if (!ultimo.empty()) {
    tutta.Nomi.push_back(nomeUltimo);
    tutta.Dimensioni.push_back(static_cast<std::int32_t>(ultimo.size()));
    ++tutta.Numero;
  }
  const std::string tabella = CodificaTabella(tutta);
  if (!out.Scrivi(tabella.data(), tabella.size())) return Guasto::scrittura;
  const auto pezzo = std::make_unique<char[]>(kPezzo);
  for (std::int32_t i = 0; i < t.Numero; ++i) {
    support::AggiornaProgresso(barra, t.Numero, i + 1);
    if (const Guasto g = CopiaCorpo(t.Nomi[i], t.Dimensioni[i], out, pezzo.get(), errore);
        g != Guasto::nessuno) {
      *membro = static_cast<std::size_t>(i);
      return g;
    }
  }
  // Made in memory, it takes no time worth a step of the bar.
  return ultimo.empty() || out.Scrivi(ultimo.data(), ultimo.size()) ? Guasto::nessuno : Guasto::scrittura;
}

// One member into its file below `base`, written whole. A file of that name is written over (keeping the
// spelling of its name); what cannot be (a link, a read-only file) is replaced, as archive tools do: the
// member is written beside it and put in its place, a link itself going, never what it names. False, with
// nothing of the member left, when it cannot be written; the snapshot's position is then no longer known.
bool EstraiMembro(host::File& in, std::int64_t dimensione, const std::string& destinazione,
                  const std::string& base, char* pezzo) {
  int err = 0;
  host::File out = host::File::ApriScritturaSotto(base, destinazione, &err);
  const bool aParte = err == host::kErrPathFileAccess;
  const std::string scritto = aParte ? destinazione + kSuffissoParziale : destinazione;
  if (aParte) {
    host::EliminaFileSotto(base, scritto, &err);
    out = host::File::ApriScritturaSotto(base, scritto, &err);
  }
  bool ok = !err && out.Aperto();
  for (std::int64_t restante = dimensione; ok && restante > 0;) {
    const auto voglio = static_cast<std::size_t>(std::min<std::int64_t>(restante, kPezzo));
    ok = in.Leggi(pezzo, voglio) == voglio && out.Scrivi(pezzo, voglio);
    restante -= static_cast<std::int64_t>(voglio);
  }
  out.Chiudi();
  if (ok && aParte)
    ok = host::SostituisciFile(scritto, destinazione, &err) ||
         (host::EliminaFileSotto(base, destinazione, &err) &&
          host::SostituisciFile(scritto, destinazione, &err));
  if (!ok) host::EliminaFileSotto(base, scritto, &err);
  return ok;
}

void Togli(ContenutoSnapshot& t, std::size_t i) {
  t.Nomi.erase(t.Nomi.begin() + static_cast<std::ptrdiff_t>(i));
  t.Dimensioni.erase(t.Dimensioni.begin() + static_cast<std::ptrdiff_t>(i));
  --t.Numero;
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
                   std::int32_t NumeroMembri, support::Didascalia& labelInfo, support::BarraProgresso& barra,
                   std::vector<MembroEscluso>* esclusi, const MembroGenerato* generato) {
  std::vector<MembroEscluso> fuori;
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

  // Written whole under a name of its own beside the snapshot, then put in the snapshot's place in one
  // step: a full disk, a failing write or a process killed meanwhile leaves no snapshot that is not whole,
  // and a link at the snapshot's name is replaced, never written through. A member that cannot be read is
  // left out and recorded with its reason: the table and the bodies always agree.
  for (;;) {
    Guasto g = Guasto::nessuno;
    std::size_t membro = 0;
    int errore = 0;
    const std::string ultimo = CorpoGenerato(generato, t, fuori);
    if (support::ScriviFileIntero(NomeFile, [&](host::File& out) {
          g = ScriviContenuto(out, t, generato ? generato->nome : std::string(), ultimo, barra, &membro,
                              &errore);
          return g == Guasto::nessuno;
        }))
      break;
    if (g != Guasto::membro) {
      if (esclusi) esclusi->clear();
      return false;
    }
    // One that went meanwhile is missing, as one that was never there; the others are named.
    if (errore != host::kErrFileNotFound && errore != host::kErrPathNotFound)
      fuori.push_back({t.Nomi[membro], errore});
    Togli(t, membro);
  }
  if (esclusi) *esclusi = std::move(fuori);

  labelInfo.ImpostaTesto("");
  labelInfo.Ridisegna();
  barra.SetValue(0);
  barra.Refresh();
  return true;
}

const char* MotivoEsclusione(int errore) {
  if (errore == host::kErrFileAlreadyOpen) return "another program holds it open";
  if (errore == host::kErrPermissionDenied) return "access is denied";
  return "it cannot be read";
}

std::string MessaggioEsclusi(const std::vector<MembroEscluso>& esclusi) {
  if (esclusi.empty()) return {};
  std::string testo = "These files could not be read and are not in the snapshot:\r\n";
  for (const MembroEscluso& e : esclusi) testo += e.percorso + " (" + MotivoEsclusione(e.errore) + ")\r\n";
  return testo + "Close Ordelio and the level editor, then run the check again.";
}

bool EstraiSnapshot(const std::string& NomeFile, const std::string& Cartella, ContenutoSnapshot& contenuto,
                    const std::string& base) {
  if (!support::FileExists(NomeFile)) return false;
  int err = 0;
  host::File in = host::File::ApriLettura(NomeFile, &err);
  if (err || !in.Aperto()) return false;
  const std::int64_t lunghezza = in.Lunghezza();
  if (!LeggiTabella(in, lunghezza, contenuto)) return false;
  const std::int32_t numero = contenuto.Numero;

  const auto pezzo = std::make_unique<char[]>(kPezzo);
  for (std::int32_t i = 0; i < numero; ++i) {
    const std::int32_t dimensione = contenuto.Dimensioni[i];
    if (dimensione < 0 || dimensione > lunghezza - in.Posizione()) return false;
    const std::string nome = NomeDestinazione(contenuto.Nomi[i]);
    if (nome.empty()) {
      if (!in.Salta(dimensione)) return false;
      continue;
    }
    if (!EstraiMembro(in, dimensione, Cartella + "\\" + nome, base.empty() ? Cartella : base, pezzo.get()))
      return false;
  }
  return true;
}

bool DecodificaSnapshot(std::string_view byte, SnapshotInMemoria& s) {
  s = SnapshotInMemoria{};
  ByteInMemoria in(byte);
  const auto lunghezza = static_cast<std::int64_t>(byte.size());
  if (!LeggiTabella(in, lunghezza, s.tabella)) return false;
  s.corpi.reserve(static_cast<std::size_t>(s.tabella.Numero));
  for (const std::int32_t dimensione : s.tabella.Dimensioni) {
    if (dimensione < 0 || dimensione > lunghezza - in.Posizione()) return false;
    s.corpi.emplace_back(in.Prendi(static_cast<std::size_t>(dimensione)));
  }
  return true;
}

bool LettoreSnapshot::Apri(const std::string& NomeFile) {
  int err = 0;
  in_ = host::File::ApriLettura(NomeFile, &err);
  if (err || !in_.Aperto()) return false;
  lunghezza_ = in_.Lunghezza();
  return lunghezza_ >= 0 && LeggiTabella(in_, lunghezza_, tabella_);
}

bool LettoreSnapshot::Prossimo(std::string& corpo) {
  if (prossimo_ >= tabella_.Dimensioni.size()) return false;
  const std::int32_t dimensione = tabella_.Dimensioni[prossimo_++];
  if (dimensione < 0 || dimensione > lunghezza_ - in_.Posizione()) return false;
  corpo.assign(static_cast<std::size_t>(dimensione), '\0');
  return in_.Leggi(corpo.data(), corpo.size()) == corpo.size() && !in_.ErroreLettura();
}

std::string CodificaSnapshot(const SnapshotInMemoria& s) {
  std::string byte = CodificaTabella(s.tabella);
  for (const std::string& corpo : s.corpi) byte += corpo;
  return byte;
}

bool ScriviSnapshot(const std::string& NomeFile, const SnapshotInMemoria& s) {
  const std::string tabella = CodificaTabella(s.tabella);
  std::vector<std::string_view> pezzi = {tabella};
  for (const std::string& corpo : s.corpi) pezzi.push_back(corpo);
  return support::ScriviFileIntero(NomeFile, pezzi);
}

}  // namespace collection
