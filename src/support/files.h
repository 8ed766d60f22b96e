// Paths and files in Windows terms. None of these shows anything or lets a failure reach the caller:
// failure is told by the result alone (false or "").
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/macchina.h"

namespace support {

// The last component: what follows the last "\" or ":".
std::string EstraiNomeFile(const std::string& percorso);
// What stands before the last "\".
std::string EstraiCartella(const std::string& percorso);
// The last "." and what follows it, wherever it stands.
std::string EstraiEstensione(const std::string& percorso);

// Every doubled backslash made one, left to right: three become two, four become two.
std::string NormalizzaPercorso(const std::string& percorso);

// True for a file, or a pattern that matches one; false for a folder. Both answer as a listing of the path
// would, and leave every listing under way alone: a path that names one entry by its attributes, a pattern
// (or a folder path ending in "\") by a listing of their own.
bool FileExists(const std::string& percorso);
bool DirExists(const std::string& percorso);

// The whole file as bytes; "" for a missing, empty or unreadable file.
std::string LeggiFile(const std::string& percorso);
// Creates or replaces the file with exactly these bytes; the folder must exist.
bool ScriviFileTesto(const std::string& percorso, const std::string& testo);

// The same, whole or not at all: the pieces one behind the other under the name + ".part" beside it, put in
// place in one step, so that a failure leaves no file of the name that is not whole and a link at the
// name is replaced, never written through. False, with nothing left, when that fails; `errore`, when given,
// then takes the platform's error number (0 when a write stopped without one).
inline constexpr const char* kSuffissoParziale = ".part";
bool ScriviFileIntero(const std::string& percorso, const std::vector<std::string_view>& pezzi,
                      int* errore = nullptr);
// The same for a writer that makes the bytes itself into the new file; false from it writes nothing.
bool ScriviFileIntero(const std::string& percorso, const std::function<bool(host::File&)>& scrivi,
                      int* errore = nullptr);

// The two paths name one file as the machine resolves them: made full from the current folder, without
// regard to case, through the links of a Wine prefix.
bool StessoFile(const std::string& a, const std::string& b);

// True when the folder is there afterwards; makes one level only.
bool CreaCartella(const std::string& percorso);
// True when the file is gone afterwards; a read-only file loses that attribute first. A link of the name goes
// itself where the platform deletes links, and what it names keeps its bytes and attributes.
bool CancellaFile(const std::string& percorso);

// Full paths of the files in `cartella` that match `maschera`, in the platform's order.
std::vector<std::string> ElencaFile(const std::string& cartella, const std::string& maschera,
                                    std::int32_t& numero);
// Deletes the matching files; stops at the first that cannot be deleted. Never through a link: a folder
// that is a symbolic link, a junction or a mount point is not emptied, and a link among the files goes
// itself, not what it names.
bool SvuotaCartella(const std::string& cartella, const std::string& maschera);

// The program's working files below a folder of its own, never through a link (host::EliminaFileSotto), and
// whole or not at all as ScriviFileIntero writes them: `percorso` is `base`, "\" and the names below it. A
// link of the name is replaced itself; a folder, or a read-only, hidden or system file, stays as it is and
// the result is false.
bool ScriviFileSotto(const std::string& base, const std::string& percorso, const std::string& testo);
bool ScriviFileSotto(const std::string& base, const std::string& percorso,
                     const std::function<bool(host::File&)>& scrivi);
// True when the file is gone afterwards.
bool CancellaFileSotto(const std::string& base, const std::string& percorso);

// A working folder of the program, `cartella` below `base`, made ready to take a snapshot: emptied of its
// files, or made. "" when it is ready; else why it is not (it is a file, it is a link, its files cannot all
// be deleted, it cannot be made), in words for a message.
std::string PreparaCartellaDiLavoro(const std::string& base, const std::string& cartella);

}  // namespace support
