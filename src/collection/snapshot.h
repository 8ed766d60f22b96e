// The snapshot: one file that carries a support case, as a count, a table of names and sizes, and the
// members' bytes one behind the other. No signature, version, checksum or compression.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/macchina.h"
#include "support/files.h"
#include "support/interfacce.h"

namespace collection {

struct ContenutoSnapshot {
  std::int32_t Numero = 0;
  std::vector<std::string> Nomi;
  std::vector<std::int32_t> Dimensioni;
};

// A member that exists but could not be read, and so was left out of the snapshot: its path and the
// platform's error number (kErrFileAlreadyOpen when another program holds it open without sharing,
// kErrPermissionDenied when access is denied, another number for anything else).
struct MembroEscluso {
  std::string percorso;
  int errore = 0;
};

// A member made in memory and packed behind the files: its name in the table, and its bytes made from the
// files packed and those left out so far. They are made again each time a file is left out, so that what it
// says always matches the snapshot it is in. No bytes (or an exception) leave it out, the files still packed.
struct MembroGenerato {
  std::string nome;
  std::function<std::string(const std::vector<std::string>& packati,
                            const std::vector<MembroEscluso>& esclusi)>
      corpo;
};

// Packs the members that exist and can be read, in order, then `generato` when given. False when the
// snapshot cannot be written whole, and then no file of its name is left. It is written as NomeFile +
// kSuffissoParziale first. `esclusi`, when given, receives the members that exist but could not be read, in
// order (empty when the snapshot was not written).
using support::kSuffissoParziale;
bool SalvaSnapshot(const std::string& NomeFile, const std::vector<std::string>& Membri,
                   std::int32_t NumeroMembri, support::Didascalia& labelInfo, support::BarraProgresso& barra,
                   std::vector<MembroEscluso>* esclusi = nullptr, const MembroGenerato* generato = nullptr);

// Why a member was left out, from the platform's error number: "another program holds it open", ...
const char* MotivoEsclusione(int errore);

// The plain message that names each member left out and why, and what the user can do about it; "" when
// none was.
std::string MessaggioEsclusi(const std::vector<MembroEscluso>& esclusi);

// Unpacks every member into the existing folder `Cartella` by the last component of its name. True when the
// end of the snapshot was reached; members unpacked before a failure stay. With `base`, a folder of the
// program's own that holds `Cartella`, no member is written through a link below it (a member that would be
// is passed over, as one that cannot be written).
bool EstraiSnapshot(const std::string& NomeFile, const std::string& Cartella, ContenutoSnapshot& contenuto,
                    const std::string& base = {});

// A snapshot read one member at a time, each size held against what the file still holds before room is
// made for it; bytes behind the last body are never read.
class LettoreSnapshot {
 public:
  // False when the file cannot be opened or its table runs past its end.
  bool Apri(const std::string& NomeFile);
  const ContenutoSnapshot& Tabella() const { return tabella_; }
  // The next member's bytes, in table order; false past the last, or when it runs past the end of the file
  // or cannot be read.
  bool Prossimo(std::string& corpo);

 private:
  host::File in_;
  std::int64_t lunghezza_ = 0;
  ContenutoSnapshot tabella_;
  std::size_t prossimo_ = 0;
};

// A snapshot read whole: its table and each member's bytes, in table order.
struct SnapshotInMemoria {
  ContenutoSnapshot tabella;
  std::vector<std::string> corpi;
};
// False, as for EstraiSnapshot, when its table or a body goes past the end of the bytes; bytes behind the
// last body are not kept.
bool DecodificaSnapshot(std::string_view byte, SnapshotInMemoria& s);
std::string CodificaSnapshot(const SnapshotInMemoria& s);
// Written whole or not at all, as SalvaSnapshot writes; the table's sizes must be the bodies'.
bool ScriviSnapshot(const std::string& NomeFile, const SnapshotInMemoria& s);

// The name a member may be written under inside the target folder, or "" when its name must not be
// written at all (empty, only dots and blanks, a "/" or NUL, a device name).
std::string NomeDestinazione(const std::string& nomeMembro);

}  // namespace collection
