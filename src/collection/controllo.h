// The check run: from the two folders shown in the main window to the snapshot that the user mails.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "collection/principale.h"

namespace collection {

// Where the snapshot is written, and named in the message when it cannot be written anywhere.
inline constexpr const char* kNomeSnapshot = "C:\\INFO_ORDL.BIN";

// The members wanted in the snapshot, in the order of adding.
struct MembriSnapshot {
  std::vector<std::string> Membri;
  std::int32_t NumeroMembri = 0;
};

void AggiungiMembro(MembriSnapshot& m, const std::string& percorso);

// The handler of "Start check". Ends in a prompt and the folder dialog when a folder label is empty;
// otherwise ends by closing the main window, which ends the program.
void Pul_Start_Click(Principale& p);

// The support contact named in the closing message: the first line of contatto.txt in `cartella` (the
// executable's folder), so that whoever hands the program to their community can set it without a
// compiler; else the build's CHECKORDL_SUPPORT_EMAIL.
inline constexpr const char* kFileContatto = "contatto.txt";
std::string IndirizzoSupporto(const std::string& cartella = host::CartellaEseguibile());

}  // namespace collection
