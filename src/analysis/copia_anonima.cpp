#include "analysis/copia_anonima.h"

#include "analysis/riepilogo.h"
#include "formats/archivio.h"
#include "formats/elenco.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "host/nomi.h"
#include "support/files.h"

namespace analysis {
namespace {

// How a member is read, by its file name as the reports find it.
enum class Tipo { intestazione, preferenze, archivio, elenco, testo, byte };

Tipo TipoMembro(const std::string& nome) {
  const std::string n = host::Maiuscolo(collection::NomeDestinazione(nome));
  const std::string estensione = n.substr(std::min(n.rfind('.'), n.size()));
  if (n == "INFOFILE.BIN") return Tipo::intestazione;
  if (n == "ORDELIO.PRF") return Tipo::preferenze;
  if (n == "ORDEIO.TXT") return Tipo::testo;
  if (estensione == ".QLV") return Tipo::archivio;
  if (estensione == ".EL" || estensione == ".LE") return Tipo::elenco;
  return Tipo::byte;
}

class Anonimizzatore {
 public:
  explicit Anonimizzatore(const OpzioniAnonimo& o) : opzioni_(o) {}

  std::string Membro(Tipo tipo, std::string byte, std::int64_t& n) {
    switch (tipo) {
      case Tipo::intestazione:
        Record(byte, 0, formats::CampiTestoInfoHeader(), n);
        AnonimizzaInPosto(byte, std::min(byte.size(), formats::InfoHeader::kDimensione), byte.size(), s_, n);
        return byte;
      case Tipo::preferenze:
        Record(byte, 0, formats::CampiTestoPreferenze(), n);
        AnonimizzaInPosto(byte, std::min(byte.size(), formats::PrefRecord::kDimensione), byte.size(), s_, n);
        return byte;
      case Tipo::archivio:
        Archivio(byte, n);
        return byte;
      case Tipo::elenco:
        return Elenco(std::move(byte), n);
      case Tipo::testo:
        return AnonimizzaTesto(byte, s_, n);
      case Tipo::byte:
        break;
    }
    AnonimizzaInPosto(byte, 0, byte.size(), s_, n);
    return byte;
  }

  std::string Testo(const std::string& t, std::int64_t& n) { return AnonimizzaTesto(t, s_, n); }
  const std::vector<VoceChiave>& Chiave() const { return s_.Chiave(); }

 private:
  void Record(std::string& byte, std::size_t da, const std::vector<formats::CampoTesto>& campi, std::int64_t& n) {
    for (const formats::CampoTesto& c : campi) AnonimizzaCampo(byte, da + c.posizione, c.lunghezza, s_, n);
  }

  // The header, then a level record wherever one begins, a cut last one as far as it goes.
  void Archivio(std::string& byte, std::int64_t& n) {
    Record(byte, 0, formats::CampiTestoArchivioHeader(), n);
    const auto campi = formats::CampiTestoLivello();
    const formats::CampiAutore autore = formats::CampiAutoreLivello();
    for (std::size_t da = formats::ArchivioHeader::kDimensione; da < byte.size();
         da += formats::ArchivioLivello::kDimensione) {
      Record(byte, da, campi, n);
      if (!opzioni_.autori) continue;
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

  // A list as this program writes it takes names of any length; any other stays byte for byte in place.
  std::string Elenco(std::string byte, std::int64_t& n) {
    formats::ElencoFile e;
    if (!formats::DecodificaElencoStretto(byte, e)) {
      AnonimizzaInPosto(byte, 0, byte.size(), s_, n);
      return byte;
    }
    const std::int64_t prima = n;
    const std::string base = e.CartellaBase;
    e.CartellaBase = AnonimizzaTesto(base, s_, n);
    std::string appoggio;
    for (std::string& nome : e.NomiFile) nome = AnonimizzaSotto(base, nome, s_, n, appoggio);
    return n == prima ? byte : formats::CodificaElenco(e);
  }

  OpzioniAnonimo opzioni_;
  Sostituti s_;
};

bool StessaTabella(const collection::ContenutoSnapshot& a, const collection::ContenutoSnapshot& b) {
  return a.Numero == b.Numero && a.Nomi == b.Nomi && a.Dimensioni == b.Dimensioni;
}

}  // namespace

CopiaAnonima Anonimizza(const collection::SnapshotInMemoria& originale, const OpzioniAnonimo& opzioni) {
  Anonimizzatore a(opzioni);
  CopiaAnonima c;
  collection::ContenutoSnapshot& t = c.copia.tabella;
  t.Numero = originale.tabella.Numero;
  // The table first: the stand-ins are numbered in the order a reader meets the names.
  for (const std::string& nome : originale.tabella.Nomi) t.Nomi.push_back(a.Testo(nome, c.tabella));
  for (std::size_t i = 0; i < originale.corpi.size(); ++i) {
    MembroAnonimo m{t.Nomi[i], 0};
    c.copia.corpi.push_back(a.Membro(TipoMembro(originale.tabella.Nomi[i]), originale.corpi[i], m.sostituzioni));
    t.Dimensioni.push_back(static_cast<std::int32_t>(c.copia.corpi.back().size()));
    c.membri.push_back(std::move(m));
  }
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

std::string TestoCopiaAnonima(const CopiaAnonima& c, const std::string& copia) {
  const std::string salvata = "The anonymized copy is saved as " + copia + ".\r\n";
  if (c.chiave.empty()) return salvata + "No account name was found in its paths: it holds what the snapshot holds.";
  return salvata + "It replaced " + std::to_string(c.chiave.size()) + (c.chiave.size() == 1 ? " account name in " : " account names in ") +
         std::to_string(TotaleSostituzioni(c)) + " places; check it with \"Leggi Dati\" before you post it.";
}

std::string SalvaCopiaAnonima(const RichiestaCopia& r, CopiaAnonima& esito) {
  const auto illeggibile = [&](const std::string& motivo) {
    return "The snapshot cannot be read: " + r.snapshot + ": " + motivo;
  };
  if (!support::FileExists(r.snapshot)) return illeggibile(kSnapshotMancante);
  // Written over, the snapshot would be gone, and with it the only way to read the key's answer back.
  if (host::UgualiSenzaCaso(support::NormalizzaPercorso(r.copia), support::NormalizzaPercorso(r.snapshot)) ||
      host::UgualiSenzaCaso(support::NormalizzaPercorso(r.fileChiave), support::NormalizzaPercorso(r.snapshot)))
    return "The anonymized copy must not replace the snapshot " + r.snapshot + ": choose another name";
  collection::SnapshotInMemoria originale;
  if (!collection::LeggiSnapshot(r.snapshot, originale)) return illeggibile(kSnapshotIlleggibile);
  if (r.aperto && !StessaTabella(*r.aperto, originale.tabella))
    return "The snapshot " + r.snapshot + " has changed since it was opened: open it again";
  esito = Anonimizza(originale, r.opzioni);
  if (!collection::ScriviSnapshot(r.copia, esito.copia)) return "Error saving " + r.copia;
  if (r.fileChiave.empty()) return {};
  std::string chiave;
  for (const VoceChiave& v : esito.chiave) chiave += v.sostituto + "\t" + v.originale + "\r\n";
  if (!support::ScriviFileIntero(r.fileChiave, {chiave})) return "Error saving " + r.fileChiave;
  return {};
}

}  // namespace analysis
