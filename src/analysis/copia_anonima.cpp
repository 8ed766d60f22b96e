#include "analysis/copia_anonima.h"

#include <algorithm>
#include <limits>
#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "analysis/ambiente_dati.h"
#include "analysis/riepilogo.h"
#include "collection/membri.h"
#include "formats/ambiente.h"
#include "formats/archivio.h"
#include "formats/elenco.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "support/files.h"

namespace analysis {
namespace {

using collection::Lettore;
using Json = nlohmann::ordered_json;

// Far deeper than anything a check run writes, yet shallow enough for the walk and the writer, which recurse.
constexpr int kProfonditaJson = 64;
// Far more keys than any object a check run writes holds: an object that keeps its order finds a key by
// looking at each one, so a document of a few flat objects of a million keys would take hours.
constexpr std::size_t kChiaviJson = 1024;

// The document, or nothing when it is no JSON or passes the limits above.
std::optional<Json> DocumentoJson(const std::string& byte) {
  bool fuori = false;
  std::vector<std::size_t> chiavi(kProfonditaJson + 2, 0);
  const Json::parser_callback_t limite = [&](int profondita, Json::parse_event_t evento, Json&) {
    if (fuori || profondita > kProfonditaJson) {
      fuori = true;
      return false;
    }
    const auto livello = static_cast<std::size_t>(profondita);
    // A new object's keys come at the next depth.
    if (evento == Json::parse_event_t::object_start) chiavi[livello + 1] = 0;
    if (evento == Json::parse_event_t::key && ++chiavi[livello] > kChiaviJson) fuori = true;
    return !fuori;
  };
  Json j = Json::parse(byte, limite, false);
  if (j.is_discarded() || fuori) return std::nullopt;
  return j;
}

// How a member's bytes are laid out, as the table of members says for the file the reports would take it
// for; nothing for a file no report reads, whose bytes then keep their places.
std::optional<Lettore> LettoreDi(const std::string& nome) {
  const std::optional<collection::Membro> m = collection::MembroDiNome(nome);
  if (!m) return std::nullopt;
  return collection::VoceDi(*m).lettore;
}

class Anonimizzatore {
 public:
  explicit Anonimizzatore(const OpzioniAnonimo& o) : opzioni_(o) {}

  // The table's names first: the stand-ins are numbered in the order a reader meets the names.
  void Tabella(const collection::ContenutoSnapshot& t, CopiaAnonima& c) {
    c.copia.tabella.Numero = t.Numero;
    for (const std::string& nome : t.Nomi) {
      c.copia.tabella.Nomi.push_back(StringaLunga(nome, c.tabella));
      c.membri.push_back({c.copia.tabella.Nomi.back(), 0});
    }
  }

  // The next member, `nome` as the table named it. False when its copy would not fit a size of the table.
  bool Membro(const std::string& nome, std::string byte, CopiaAnonima& c) {
    MembroAnonimo& m = c.membri[c.copia.corpi.size()];
    c.copia.corpi.push_back(Corpo(LettoreDi(nome), std::move(byte), m.sostituzioni));
    const std::size_t dimensione = c.copia.corpi.back().size();
    if (dimensione > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) return false;
    c.copia.tabella.Dimensioni.push_back(static_cast<std::int32_t>(dimensione));
    return true;
  }

  const std::vector<VoceChiave>& Chiave() const { return s_.Chiave(); }

 private:
  std::string Corpo(std::optional<Lettore> lettore, std::string byte, std::int64_t& n) {
    // A file no report reads has no layout this copy knows: its bytes keep their places, as the script's do.
    if (!lettore) {
      AnonimizzaInPosto(byte, 0, byte.size(), s_, n);
      return byte;
    }
    switch (*lettore) {
      case Lettore::infoHeader:
      case Lettore::preferenze:
      case Lettore::archivio:
        Record(byte, CampiDi(*lettore, byte.size()), n);
        if (*lettore == Lettore::archivio && opzioni_.autori) Autori(byte, n);
        break;
      case Lettore::elenco:
        return Elenco(std::move(byte), n);
      case Lettore::testo:
        return AnonimizzaTesto(byte, s_, n);
      case Lettore::ambiente:
        return Ambiente(std::move(byte), n);
      case Lettore::script:
        // Offsets fix where its names lie, as they may in a file no report reads.
        AnonimizzaInPosto(byte, 0, byte.size(), s_, n);
        return byte;
    }
    // What the fields do not hold (a short or long file, a path across them) is looked at in place.
    AnonimizzaInPosto(byte, 0, byte.size(), s_, n, true);
    return byte;
  }

  // A string behind its length takes the stand-ins' own lengths, unless that would pass the longest one a
  // reader takes.
  std::string StringaLunga(const std::string& t, std::int64_t& n) {
    std::int64_t k = 0;
    std::string r = AnonimizzaTesto(t, s_, k);
    if (r.size() > static_cast<std::size_t>(formats::kLunghezzaMassimaNome)) {
      r = t;
      k = 0;
      AnonimizzaInPosto(r, 0, r.size(), s_, k);
    }
    n += k;
    return r;
  }

  // The places of a record member's fixed strings: the record's own, or the archive's header's and each
  // level's, wherever one begins (a cut last one as far as it goes).
  static std::vector<formats::CampoTesto> CampiDi(Lettore lettore, std::size_t dimensione) {
    if (lettore == Lettore::infoHeader) return formats::CampiTestoInfoHeader();
    if (lettore == Lettore::preferenze) return formats::CampiTestoPreferenze();
    std::vector<formats::CampoTesto> campi = formats::CampiTestoArchivioHeader();
    const std::vector<formats::CampoTesto> livello = formats::CampiTestoLivello();
    for (std::size_t da = formats::ArchivioHeader::kDimensione; da < dimensione;
         da += formats::ArchivioLivello::kDimensione)
      for (formats::CampoTesto c : livello) {
        c.posizione += da;
        campi.push_back(c);
      }
    return campi;
  }

  // A name that no one field holds whole behind its folder of profiles (a path across two fields, or outside
  // them) is replaced in place first: the fields' own replacements move text within a field, and would cut
  // such a path where a later look could no longer find its name.
  void Record(std::string& byte, const std::vector<formats::CampoTesto>& campi, std::int64_t& n) {
    std::set<std::pair<std::size_t, std::size_t>> neiCampi;
    for (const formats::CampoTesto& c : campi)
      if (c.posizione < byte.size())
        for (const Tratto& t : NomiNelTesto(std::string_view(byte).substr(c.posizione, c.lunghezza)))
          neiCampi.insert({c.posizione + t.posizione, t.lunghezza});
    for (const Tratto& t : NomiNelTesto(byte))
      if (!neiCampi.contains({t.posizione, t.lunghezza})) SostituisciInPosto(byte, t, s_, n);
    for (const formats::CampoTesto& c : campi) AnonimizzaCampo(byte, c.posizione, c.lunghezza, s_, n);
  }

  void Autori(std::string& byte, std::int64_t& n) {
    const formats::CampiAutore autore = formats::CampiAutoreLivello();
    for (std::size_t da = formats::ArchivioHeader::kDimensione; da < byte.size();
         da += formats::ArchivioLivello::kDimensione) {
      Autore(byte, da + autore.Nome.posizione, autore.Nome.lunghezza, Genere::autore, n);
      Autore(byte, da + autore.Email.posizione, autore.Email.lunghezza, Genere::email, n);
      Autore(byte, da + autore.Sito.posizione, autore.Sito.lunghezza, Genere::sito, n);
    }
  }

  // The whole value of the field, blanks and NULs around it aside, by its stand-in, blank-filled.
  void Autore(std::string& byte, std::size_t da, std::size_t lunghezza, Genere genere, std::int64_t& n) {
    if (da >= byte.size()) return;
    lunghezza = std::min(lunghezza, byte.size() - da);
    const std::string_view campo = std::string_view(byte).substr(da, lunghezza);
    const std::size_t inizio = campo.find_first_not_of(std::string_view(" \0", 2));
    if (inizio == std::string_view::npos) return;
    const std::size_t fine = campo.find_last_not_of(std::string_view(" \0", 2)) + 1;
    std::string nuovo = s_.Di(genere, campo.substr(inizio, fine - inizio));
    nuovo.resize(lunghezza, ' ');
    byte.replace(da, lunghezza, nuovo);
    ++n;
  }

  // A list as this program writes it takes names of any length; any other keeps every byte's place, each
  // name read as the reports read it, below its folder.
  std::string Elenco(std::string byte, std::int64_t& n) {
    formats::ElencoFile e;
    if (!formats::DecodificaElencoStretto(byte, e)) {
      ElencoInPosto(byte, n);
      return byte;
    }
    const std::int64_t prima = n;
    const std::string base = e.CartellaBase;
    e.CartellaBase = StringaLunga(base, n);
    std::string appoggio;
    for (std::string& nome : e.NomiFile) {
      std::int64_t k = 0;
      std::string nuovo = AnonimizzaSotto(base, nome, s_, k, appoggio);
      if (nuovo.size() > static_cast<std::size_t>(formats::kLunghezzaMassimaNome)) {
        k = 0;
        nuovo = AnonimizzaSotto(base, nome, s_, k, appoggio, true);
      }
      nome = std::move(nuovo);
      n += k;
    }
    return n == prima ? byte : formats::CodificaElenco(e);
  }

  void ElencoInPosto(std::string& byte, std::int64_t& n) {
    const formats::PezziElenco p = formats::PezziElencoTollerante(byte);
    const std::string base = byte.substr(p.base.posizione, p.base.lunghezza);
    AnonimizzaInPosto(byte, p.base.posizione, p.base.posizione + p.base.lunghezza, s_, n);
    std::string appoggio;
    for (const formats::PezzoElenco& nome : p.nomi) {
      const std::string nuovo = AnonimizzaSotto(
          base, std::string_view(byte).substr(nome.posizione, nome.lunghezza), s_, n, appoggio, true);
      byte.replace(nome.posizione, nome.lunghezza, nuovo);
    }
    AnonimizzaInPosto(byte, 0, byte.size(), s_, n, true);
  }

  // A JSON document stays one, whatever fields it holds: every text in it (keys too) is read as the other
  // members' paths are, in Windows-1252, and takes the same stand-ins. Where the stand-ins would make a text
  // longer than the environment's reader takes, each is made as long as its name instead. Bytes that are no
  // JSON this copy can write back keep their places, as a file no report reads.
  std::string Ambiente(std::string byte, std::int64_t& n) {
    if (byte.size() <= static_cast<std::size_t>(kAmbienteMassimo)) {
      if (const std::optional<Json> j = DocumentoJson(byte)) {
        for (const bool inPosto : {false, true}) {
          std::int64_t k = 0;
          Json copia = *j;
          Testi(copia, inPosto, k);
          std::string testo = copia.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
          if (!inPosto && Leggibile(byte) && !Leggibile(testo)) continue;
          n += k;
          return testo;
        }
      }
    }
    for (const Tratto& t : NomiNelTesto(byte)) {
      const std::string nome = host::DaUtf8(byte.substr(t.posizione, t.lunghezza));
      byte.replace(t.posizione, t.lunghezza,
                   SostitutoLungo(host::VersoUtf8(s_.Di(Genere::utente, nome)), t.lunghezza));
      ++n;
    }
    return byte;
  }

  static bool Leggibile(const std::string& byte) {
    formats::Ambiente a;
    std::string motivo;
    return formats::DecodificaAmbiente(byte, &a, &motivo);
  }

  void Testi(Json& j, bool inPosto, std::int64_t& n) {
    if (j.is_string()) {
      j = Testo(j.get_ref<const std::string&>(), inPosto, n);
    } else if (j.is_array()) {
      for (Json& v : j) Testi(v, inPosto, n);
    } else if (j.is_object()) {
      Json o = Json::object();
      for (auto& [chiave, v] : j.items()) {
        Testi(v, inPosto, n);
        o[Testo(chiave, inPosto, n)] = std::move(v);
      }
      j = std::move(o);
    }
  }

  std::string Testo(const std::string& utf8, bool inPosto, std::int64_t& n) {
    // A text without a profile path is left as it is, characters outside the code page and all.
    if (NomiNelTesto(utf8).empty()) return utf8;
    std::string t = host::DaUtf8(utf8);
    if (!inPosto) return host::VersoUtf8(AnonimizzaTesto(t, s_, n));
    AnonimizzaInPosto(t, 0, t.size(), s_, n);
    return host::VersoUtf8(t);
  }

  OpzioniAnonimo opzioni_;
  Sostituti s_;
};

bool StessaTabella(const collection::ContenutoSnapshot& a, const collection::ContenutoSnapshot& b) {
  return a.Numero == b.Numero && a.Nomi == b.Nomi && a.Dimensioni == b.Dimensioni;
}

// `a` written whole would replace `b`, or clear it away as its own partial file, or the other way round.
bool Sovrapposti(const std::string& a, const std::string& b) {
  return support::StessoFile(a, b) || support::StessoFile(a + support::kSuffissoParziale, b) ||
         support::StessoFile(a, b + support::kSuffissoParziale);
}

std::string TroppoGrande(const std::string& membro) {
  return "The anonymized copy cannot hold " + membro + ": it would be 2 GB or more";
}

// The account names as the search for what the copy keeps looks for them, in capitals: each whole, and each
// word of three letters or more of a name of several (a level named after the first name alone names the
// person as well).
std::vector<std::string> NomiCercati(const std::vector<VoceChiave>& chiave) {
  std::vector<std::string> nomi;
  for (const VoceChiave& v : chiave) {
    if (v.genere != Genere::utente) continue;
    const std::string m = host::Maiuscolo(v.originale);
    nomi.push_back(m);
    for (std::size_t i = m.find_first_not_of(' '); i != std::string::npos; i = m.find_first_not_of(' ', i)) {
      const std::size_t fine = std::min(m.find(' ', i), m.size());
      if (fine - i >= 3 && fine - i < m.size()) nomi.push_back(m.substr(i, fine - i));
      i = fine;
    }
  }
  std::sort(nomi.begin(), nomi.end());
  nomi.erase(std::unique(nomi.begin(), nomi.end()), nomi.end());
  return nomi;
}

// One pass over each listing and over ordeio.txt: every piece is put in capitals once, in one buffer, and
// looked through for the few names; only a piece that holds one is kept, once.
class RaccoltaResidui {
 public:
  RaccoltaResidui(const std::vector<VoceChiave>& chiave, std::size_t massimo)
      : nomi_(NomiCercati(chiave)), massimo_(massimo) {
    // What the copy itself put there, and the folders that hold the profiles, name no one: an account
    // called "user" (as under Wine on many a Linux machine) is in every stand-in and in "Users".
    for (const VoceChiave& v : chiave) copia_.push_back(host::Maiuscolo(v.sostituto));
    for (const char* radice : {"USERS", "DOCUMENTS AND SETTINGS", "DOCUME~1", "HOME"})
      copia_.emplace_back(radice);
  }

  void Pezzo(std::string_view testo, const std::string& dove) {
    if (testo.empty()) return;
    maiuscolo_.assign(testo);
    for (char& c : maiuscolo_) c = host::Maiuscola(c);
    if (!Contiene()) return;
    for (const std::string& t : copia_)
      for (std::size_t p = maiuscolo_.find(t); p != std::string::npos; p = maiuscolo_.find(t, p + t.size()))
        maiuscolo_.replace(p, t.size(), t.size(), '\0');
    if (!Contiene() || !visti_.emplace(testo).second) return;
    if (r_.voci.size() < massimo_)
      r_.voci.push_back({std::string(testo), dove});
    else
      ++r_.oltre;
  }

  // A path of a listing: its folders' names, then its last one's as `ultimo` says.
  void Percorso(std::string_view percorso, const std::string& cartella, const std::string& ultimo) {
    std::size_t inizio = 0;
    for (std::size_t fine = percorso.find_first_of("\\/");; fine = percorso.find_first_of("\\/", inizio)) {
      if (fine == std::string_view::npos) {
        Pezzo(percorso.substr(inizio), ultimo);
        return;
      }
      Pezzo(percorso.substr(inizio, fine - inizio), cartella);
      inizio = fine + 1;
    }
  }

  void Parole(std::string_view testo, const std::string& dove) {
    constexpr std::string_view kSpazi = " \t\r\n";
    constexpr std::string_view kAttorno = "\"'()[]<>,;.!?";
    for (std::size_t i = testo.find_first_not_of(kSpazi); i != std::string_view::npos;
         i = testo.find_first_not_of(kSpazi, i)) {
      const std::size_t fine = std::min(testo.find_first_of(kSpazi, i), testo.size());
      std::string_view parola = testo.substr(i, fine - i);
      while (!parola.empty() && kAttorno.find(parola.front()) != std::string_view::npos)
        parola.remove_prefix(1);
      while (!parola.empty() && kAttorno.find(parola.back()) != std::string_view::npos)
        parola.remove_suffix(1);
      Pezzo(parola, dove);
      i = fine;
    }
  }

  bool Vuota() const { return nomi_.empty(); }
  Residui Esito() && { return std::move(r_); }

 private:
  bool Contiene() const {
    for (const std::string& n : nomi_)
      if (maiuscolo_.find(n) != std::string::npos) return true;
    return false;
  }

  std::vector<std::string> nomi_, copia_;
  std::size_t massimo_;
  std::string maiuscolo_;
  std::unordered_set<std::string> visti_;
  Residui r_;
};

}  // namespace

Residui CercaResidui(const CopiaAnonima& c, std::size_t massimo) {
  RaccoltaResidui raccolta(c.chiave, massimo);
  if (raccolta.Vuota()) return {};
  const std::vector<std::string>& nomi = c.copia.tabella.Nomi;
  for (std::size_t i = 0; i < nomi.size() && i < c.copia.corpi.size(); ++i) {
    const std::optional<collection::Membro> m = collection::MembroDiNome(nomi[i]);
    if (!m) continue;
    const collection::VoceMembro& voce = collection::VoceDi(*m);
    const std::string& byte = c.copia.corpi[i];
    if (voce.lettore == Lettore::elenco) {
      const std::string nome = voce.nomeControllo;
      const std::string cartella = "a folder name in " + nome, file = "a file name in " + nome;
      const formats::PezziElenco p = formats::PezziElencoTollerante(byte);
      const std::string_view b(byte);
      raccolta.Percorso(b.substr(p.base.posizione, p.base.lunghezza), cartella, cartella);
      for (const formats::PezzoElenco& pezzo : p.nomi)
        raccolta.Percorso(b.substr(pezzo.posizione, pezzo.lunghezza), cartella, file);
    } else if (*m == collection::Membro::ordeio) {
      raccolta.Parole(byte, std::string("a word of ") + voce.nomeControllo);
    }
  }
  return std::move(raccolta).Esito();
}

std::string TestoResidui(const CopiaAnonima& c, const Residui& r) {
  if (NomiCercati(c.chiave).empty()) return {};
  if (r.voci.empty())
    return "No file or folder name, nor any word of ordeio.txt, in it holds an account name it replaced.";
  std::string t =
      "It keeps these names, which hold an account name it replaced and may still name the person:";
  for (const Residuo& v : r.voci) t += "\r\n  " + v.testo + " (" + v.dove + ")";
  if (r.oltre > 0) t += "\r\n  and " + std::to_string(r.oltre) + " more";
  return t;
}

CopiaAnonima Anonimizza(const collection::SnapshotInMemoria& originale, const OpzioniAnonimo& opzioni) {
  Anonimizzatore a(opzioni);
  CopiaAnonima c;
  a.Tabella(originale.tabella, c);
  for (std::size_t i = 0; i < originale.corpi.size(); ++i)
    if (!a.Membro(originale.tabella.Nomi[i], originale.corpi[i], c))
      c.errore = TroppoGrande(c.membri[i].nome);
  c.chiave = a.Chiave();
  return c;
}

std::int64_t TotaleSostituzioni(const CopiaAnonima& c) {
  std::int64_t n = c.tabella;
  for (const MembroAnonimo& m : c.membri) n += m.sostituzioni;
  return n;
}

std::string NomeCopiaAnonima(const std::string& snapshot) {
  const std::size_t nome = snapshot.find_last_of("\\:") + 1;
  const std::size_t punto = snapshot.rfind('.');
  const std::size_t fine = punto == std::string::npos || punto < nome ? snapshot.size() : punto;
  return snapshot.substr(0, fine) + "-anonymous" + snapshot.substr(fine);
}

std::string NomeChiave(const std::string& copia) {
  const std::size_t nome = copia.find_last_of("\\:") + 1;
  const std::size_t punto = copia.rfind('.');
  const std::size_t fine = punto == std::string::npos || punto < nome ? copia.size() : punto;
  return copia.substr(0, fine) + "-key.txt";
}

std::string TestoCopiaAnonima(const CopiaAnonima& c, const std::string& copia) {
  const std::string salvata = "The anonymized copy is saved as " + copia + ".\r\n";
  if (c.chiave.empty())
    return salvata + "No account name was found in its paths: it holds what the snapshot holds.";
  const auto utenti = static_cast<std::size_t>(std::count_if(
      c.chiave.begin(), c.chiave.end(), [](const VoceChiave& v) { return v.genere == Genere::utente; }));
  const std::size_t autori = c.chiave.size() - utenti;
  const std::string testo =
      salvata + "It replaced " + std::to_string(utenti) + (utenti == 1 ? " account name" : " account names") +
      (autori == 0 ? ""
                   : " and " + std::to_string(autori) + " of the level authors' names, addresses and sites") +
      " in " + std::to_string(TotaleSostituzioni(c)) +
      " places; check it with \"Leggi Dati\" before you post it.";
  const std::string residui = TestoResidui(c, CercaResidui(c));
  return residui.empty() ? testo : testo + "\r\n" + residui;
}

std::string SalvaCopiaAnonima(const RichiestaCopia& r, CopiaAnonima& esito) {
  const auto illeggibile = [&](const std::string& motivo) {
    return "The snapshot cannot be read: " + r.snapshot + ": " + motivo;
  };
  if (!support::FileExists(r.snapshot)) return illeggibile(kSnapshotMancante);
  // Written over, the snapshot would be gone, and with it the only way to read the key's answer back; a
  // key in the copy's place would post the names.
  if (Sovrapposti(r.copia, r.snapshot))
    return "The anonymized copy must not replace the snapshot " + r.snapshot + ": choose another name";
  if (!r.fileChiave.empty() && (Sovrapposti(r.fileChiave, r.snapshot) || Sovrapposti(r.fileChiave, r.copia)))
    return "The key " + r.fileChiave +
           " must be a file apart from the snapshot and the copy: choose another name";
  collection::LettoreSnapshot lettore;
  if (!lettore.Apri(r.snapshot)) return illeggibile(kSnapshotIlleggibile);
  if (r.aperto && !StessaTabella(*r.aperto, lettore.Tabella()))
    return "The snapshot " + r.snapshot + " has changed since it was opened: open it again";
  esito = CopiaAnonima{};
  Anonimizzatore a(r.opzioni);
  a.Tabella(lettore.Tabella(), esito);
  try {
    // One member of the original in memory at a time, beside the copy made so far.
    std::string corpo;
    for (const std::string& nome : lettore.Tabella().Nomi) {
      if (!lettore.Prossimo(corpo)) return illeggibile(kSnapshotIlleggibile);
      if (!a.Membro(nome, std::move(corpo), esito))
        return TroppoGrande(esito.membri[esito.copia.corpi.size() - 1].nome);
    }
  } catch (const std::bad_alloc&) {
    return illeggibile("there is not enough memory for it");
  }
  esito.chiave = a.Chiave();
  if (!collection::ScriviSnapshot(r.copia, esito.copia)) return "Error saving " + r.copia;
  if (r.fileChiave.empty()) return {};
  std::string chiave;
  for (const VoceChiave& v : esito.chiave) chiave += v.sostituto + "\t" + v.originale + "\r\n";
  if (!support::ScriviFileIntero(r.fileChiave, {chiave})) return "Error saving " + r.fileChiave;
  return {};
}

}  // namespace analysis
