#include "analysis/fatti.h"

#include <algorithm>

#include "formats/codifica.h"
#include "formats/script.h"
#include "host/macchina.h"
#include "support/files.h"

namespace analysis {
namespace {

constexpr const char* kNonSiApre = "it cannot be opened";

// Up to `massimo` bytes of a member that is there, with its length; false, the record saying why, when it is
// absent or cannot be opened.
bool Apri(const std::string& percorso, std::size_t massimo, Record& r, std::string& byte) {
  if (percorso.empty() || !support::FileExists(percorso)) return false;
  if (!formats::LeggiTesta(percorso, massimo, &byte, &r.dimensione)) {
    r.stato = StatoMembro::danneggiato;
    r.problema = kNonSiApre;
    return false;
  }
  r.stato = StatoMembro::letto;
  return true;
}

void Danneggiato(Record& r, std::string problema) {
  r.stato = StatoMembro::danneggiato;
  r.problema = std::move(problema);
}

// A fixed record is read whole or not at all: a file of another length is another record, or a cut one.
void Lunghezza(Record& r, std::size_t attesa) {
  if (r.dimensione != static_cast<std::int64_t>(attesa))
    Danneggiato(r, std::to_string(r.dimensione) + " bytes, not the record's " + std::to_string(attesa));
}

// What went wrong reading a list: the messages its reader would have shown, "" when it read cleanly.
std::string Problema(const ElencoLetto& letto) {
  std::string problema;
  for (const auto& m : letto.messaggi) problema += (problema.empty() ? "" : "; ") + m.second;
  return problema;
}

void LeggiLista(const std::string& cartellaDati, collection::Membro m, const LettoreElenchi& lettore,
                ListaFatti& l) {
  const std::string percorso = collection::FileDati(cartellaDati, m);
  if (!support::FileExists(percorso)) return;
  l.letto = lettore ? lettore(collection::VoceDi(m).nomeDati)
                    : std::make_shared<const ElencoLetto>(LeggiElencoUnaVolta(percorso));
  int err = 0;
  if (host::File f = host::File::ApriLettura(percorso, &err); f.Aperto()) l.dimensione = f.Lunghezza();
  l.problema = Problema(*l.letto);
  l.stato = l.problema.empty() ? StatoMembro::letto : StatoMembro::danneggiato;
}

// The header, then as many level records as it counts and the file holds whole.
void LeggiArchivio(const std::string& percorso, ArchivioFatti& a) {
  using formats::ArchivioHeader, formats::ArchivioLivello;
  std::string byte;
  if (!Apri(percorso, ArchivioHeader::kDimensione, a, byte)) return;
  if (byte.size() < ArchivioHeader::kDimensione)
    return Danneggiato(a, std::to_string(byte.size()) + " bytes, shorter than the archive's header of " +
                              std::to_string(ArchivioHeader::kDimensione));
  a.header = formats::DecodificaArchivioHeader(byte);
  const std::int32_t contati = a.header.TotLivelli;
  if (contati < 0) return Danneggiato(a, "its header counts " + std::to_string(contati) + " levels");
  // Bounded by what the file holds before anything is read for it.
  const std::int64_t interi = (a.dimensione - static_cast<std::int64_t>(ArchivioHeader::kDimensione)) /
                              static_cast<std::int64_t>(ArchivioLivello::kDimensione);
  const std::int64_t n = std::min<std::int64_t>(contati, interi);
  if (n > 0 &&
      formats::LeggiTesta(
          percorso, ArchivioHeader::kDimensione + static_cast<std::size_t>(n) * ArchivioLivello::kDimensione,
          &byte, nullptr))
    a.livelli = formats::DecodificaLivelli(byte, static_cast<std::int32_t>(n));
  if (static_cast<std::int64_t>(a.livelli.size()) < contati)
    Danneggiato(a, "its header counts " + std::to_string(contati) + " levels, the file holds " +
                       std::to_string(a.livelli.size()) + " whole");
}

void LeggiScript(const std::string& percorso, ScriptFatti& s) {
  std::string byte;
  if (!Apri(percorso, formats::kLetturaScript, s, byte)) return;
  formats::TabellaScript t = formats::AnalizzaTabellaScript(byte);
  if (!t.problema.empty()) return Danneggiato(s, std::move(t.problema));
  s.livelli = std::move(t.livelli);
  std::erase_if(s.livelli, [](const std::string& l) { return l == ".tr4"; });
}

}  // namespace

const ListaFatti* Fatti::ListaDi(collection::Membro m) const {
  using collection::Membro;
  if (m == Membro::elencoOrdl) return &ordl;
  if (m == Membro::elencoTrle) return &trle;
  if (m == Membro::elencoArchivio) return &dirarc;
  return nullptr;
}

const Record* Fatti::RecordDi(collection::Membro m) const {
  using collection::Membro;
  if (const ListaFatti* l = ListaDi(m)) return l;
  switch (m) {
    case Membro::intestazione:
      return &header;
    case Membro::preferenze:
      return &preferenze;
    case Membro::archivio:
      return &archivio;
    case Membro::ordeio:
      return &ordeio;
    case Membro::script:
      return &script;
    default:
      return nullptr;
  }
}

StatoMembro Fatti::Stato(collection::Membro m) const {
  if (const Record* r = RecordDi(m)) return r->stato;
  switch (ambiente.stato) {
    case StatoAmbiente::assente:
      return StatoMembro::assente;
    case StatoAmbiente::illeggibile:
      return StatoMembro::danneggiato;
    case StatoAmbiente::letto:
      break;
  }
  return StatoMembro::letto;
}

Fatti LeggiFatti(const std::string& cartellaDati, const collection::ContenutoSnapshot& contenuto,
                 const LettoreElenchi& lettore) {
  using collection::Membro;
  Fatti f;
  f.cartellaDati = cartellaDati;
  f.contenuto = &contenuto;
  const auto file = [&](Membro m) { return collection::FileDati(cartellaDati, m); };
  std::string byte;
  if (Apri(file(Membro::intestazione), formats::InfoHeader::kDimensione, f.header, byte)) {
    f.infoHeader = formats::DecodificaInfoHeader(byte);
    Lunghezza(f.header, formats::InfoHeader::kDimensione);
  }
  if (Apri(file(Membro::preferenze), formats::PrefRecord::kDimensione, f.preferenze, byte)) {
    f.prf = formats::DecodificaPreferenze(byte);
    Lunghezza(f.preferenze, formats::PrefRecord::kDimensione);
  }
  LeggiArchivio(collection::TrovaArchivio(contenuto, cartellaDati), f.archivio);
  LeggiLista(cartellaDati, Membro::elencoOrdl, lettore, f.ordl);
  LeggiLista(cartellaDati, Membro::elencoTrle, lettore, f.trle);
  LeggiLista(cartellaDati, Membro::elencoArchivio, lettore, f.dirarc);
  Apri(file(Membro::ordeio), 0, f.ordeio, byte);
  LeggiScript(file(Membro::script), f.script);
  f.ambiente = LeggiAmbienteDati(cartellaDati);
  return f;
}

}  // namespace analysis
