// What an unpacked snapshot says, read once: each member as its reader took it, or why it could not take it.
// The built-in checks and the rules both judge these facts and nothing else, so that a rule sees exactly what
// a check sees.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/ambiente_dati.h"
#include "analysis/elenchi.h"
#include "collection/membri.h"
#include "collection/snapshot.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"

namespace analysis {

// How a member of the snapshot was read.
enum class StatoMembro {
  // Not in the snapshot.
  assente,
  // In the snapshot, but its reader refused it (or read only part of it); `problema` says why.
  danneggiato,
  letto,
};

struct Record {
  StatoMembro stato = StatoMembro::assente;
  std::string problema;
  // The file's length in bytes; 0 when it is absent.
  std::int64_t dimensione = 0;
};

// A list member: the entries read (all of them when `stato` is letto, those before the fault when not).
struct ListaFatti : Record {
  std::shared_ptr<const ElencoLetto> letto;
};

struct ArchivioFatti : Record {
  formats::ArchivioHeader header;
  // The level records the file holds whole, in order; fewer than header.TotLivelli when it is cut.
  std::vector<formats::ArchivioLivello> livelli;
};

struct ScriptFatti : Record {
  // The level files the script's table names, each with ".tr4" behind it, empty names left out: those the
  // script report shows, but for a long last name, which that report cuts.
  std::vector<std::string> livelli;
};

struct Fatti {
  std::string cartellaDati;
  const collection::ContenutoSnapshot* contenuto = nullptr;

  Record header;
  formats::InfoHeader infoHeader;
  Record preferenze;
  formats::PrefRecord prf;
  ArchivioFatti archivio;
  // The lists by the member they come from: elencoOrdl, elencoTrle, elencoArchivio.
  ListaFatti ordl, trle, dirarc;
  Record ordeio;
  ScriptFatti script;
  AmbienteLetto ambiente;

  // The state of any member, walking the members' table.
  StatoMembro Stato(collection::Membro m) const;
  // The record of a member; nullptr for the environment, which has a state of its own.
  const Record* RecordDi(collection::Membro m) const;
  // The list of a list member; nullptr for any other.
  const ListaFatti* ListaDi(collection::Membro m) const;
};

// The facts of the files a snapshot left in `cartellaDati`. `lettore`, when given, hands over the lists
// already read for someone else.
Fatti LeggiFatti(const std::string& cartellaDati, const collection::ContenutoSnapshot& contenuto,
                 const LettoreElenchi& lettore = {});

}  // namespace analysis
