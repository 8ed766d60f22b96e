// The machine the program sees, in Windows terms: drive-letter paths, attribute bits, folder listings. On
// Windows these are the Win32 calls; everywhere else they are served from a Wine prefix. Paths and names are
// byte strings in Windows-1252.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

// Error numbers as the platform reports them to the program. Most callers only need "some error"; a few
// decisions hang on 68 and 76.
enum Errore : int {
  kNessunErrore = 0,
  kErrFileNotFound = 53,
  kErrFileAlreadyOpen = 55,
  kErrDiskFull = 61,
  kErrDeviceUnavailable = 68,
  kErrPermissionDenied = 70,
  kErrPathFileAccess = 75,
  kErrPathNotFound = 76,
  kErrBadFileName = 52,
};

// File attribute bits.
enum Attributo : int {
  kAttrReadOnly = 1,
  kAttrHidden = 2,
  kAttrSystem = 4,
  kAttrDirectory = 16,
  kAttrArchive = 32,
};

// Selects the Wine prefix that stands for the machine (ignored on Windows). Without a call the prefix is
// WINEPREFIX, else ~/.wine.
void UsaPrefisso(const std::string& hostFolder);
std::string PrefissoCorrente();

// The reads below (enumeration, attributes, length, File::ApriLettura) see the machine's files as the level
// tools see them, through the user's VirtualStore where Windows would virtualize them (vista_virtuale.h).
//
// A listing of the entries a pattern matches, which its caller owns and walks: any number may be under way
// at once, and other calls of the machine layer leave them alone. `pattern`'s last component may hold `*`
// and `?`, or it is a folder path ending in `\` for everything the folder holds ("." and ".." included when
// folders are asked for, but not at a drive root). `mask` adds hidden (2), system (4) and folders (16) to the
// plain and read-only files that are always given. The names are read when the listing is made.
class Enumerazione {
 public:
  Enumerazione() = default;
  Enumerazione(const std::string& pattern, int mask);
  // One name a call; "" at the end, with *err set when an error ended the listing (at its start, or after
  // some names), and from then on "" with no error.
  std::string Prossima(int* err);

 private:
  std::vector<std::string> nomi_;
  std::size_t prossima_ = 0;
  int errFine_ = 0;
};

// Attributes of a path; -1 with *err set when the path cannot be read.
int LeggiAttributi(const std::string& path, int* err);
// Never through a link: for a link of the name nothing is changed (true), and what it names stays as it was.
bool ImpostaAttributi(const std::string& path, int attr, int* err);

// Length of a file; -1 with *err set on failure.
std::int64_t LunghezzaFile(const std::string& path, int* err);

bool EliminaFile(const std::string& path, int* err);

// Puts the file `da` in the place of `a`, in one step: a file or a link of that name is replaced, never
// written through; a folder there fails the call. Both in one folder.
bool SostituisciFile(const std::string& da, const std::string& a, int* err);

// The program's own working files are reached from a folder of its own (`base`, which may itself be reached
// through links) and never through a symbolic link, a junction or a mount point below it: a link made by
// accident must not let the program write or delete in a folder of the user's. `percorso` is `base`, "\"
// and the names below it. A link on the way fails the call with kErrPathFileAccess, touching nothing.
//
// Deletes the file, read-only or not; a link in its place is deleted itself, never what it names.
bool EliminaFileSotto(const std::string& base, const std::string& percorso, int* err);
// What stands at `percorso` below `base`, reached as EliminaFileSotto reaches it and not followed if it is a
// link (a symbolic link, a junction or a mount point).
enum class Voce { manca, file, cartella, collegamento };
Voce VoceSotto(const std::string& base, const std::string& percorso, int* err);
// Makes one folder level; the parent must exist.
bool CreaUnaCartella(const std::string& path, int* err);

// The process's current folder and the folder of the running executable, as Windows paths.
std::string CartellaCorrente();
std::string CartellaEseguibile();

// The program folder, which holds the working files, Dati and the sample lists, shared by every program of
// CheckORDL in one folder: the executable's folder where this user may write there (a portable copy), else
// the user's own data folder, CartellaUtente(). It need not exist yet: PreparaCartella makes it.
// The Wine-prefix back end never takes a folder below /usr, which belongs to the system even for root.
std::string CartellaProgramma();
// $XDG_DATA_HOME/checkordl (an absolute XDG_DATA_HOME only), else ~/.local/share/checkordl; on Windows
// %LOCALAPPDATA%\CheckORDL. "" when the machine names no such place.
std::string CartellaUtente();
// Makes `cartella` and the folders above it that are missing (readable by their owner only, elsewhere than
// on Windows); false, with the system's reason in `motivo`, when one of them cannot be made.
bool PreparaCartella(const std::string& cartella, std::string* motivo);

// Host path <-> Windows path. `PercorsoHost` resolves each component without regard to case, as the
// platform does; a component that does not exist keeps the name as given. `PercorsoWindows` gives "" for a
// host path that no drive holds.
std::string PercorsoHost(const std::string& winPath, int* err);
std::string PercorsoWindows(const std::string& hostPath);

// Wine prefix only: the host folder a drive letter's link names (whether or not it exists), or nothing
// when the prefix names no such drive. Z: stands for / when the prefix names none.
std::optional<std::string> DestinazioneDrive(char lettera);

// Windows-1252 <-> UTF-8 for host names and the console; a character that Windows-1252 cannot hold
// becomes '?'.
std::string DaUtf8(const std::string& utf8);
std::string VersoUtf8(const std::string& cp1252);

// A file opened for raw byte access. Movable, closes itself.
class File {
 public:
  File() = default;
  File(File&& other) noexcept;
  File& operator=(File&& other) noexcept;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File();

  // Through the view of a legacy program (vista_virtuale.h): a VirtualStore copy is the file read.
  static File ApriLettura(const std::string& winPath, int* err);
  // As the platform opens it for this program; the machine layer's own reads.
  static File ApriLetturaGrezza(const std::string& winPath, int* err);
  // Creates the file or cuts it to nothing; the folder must exist.
  static File ApriScrittura(const std::string& winPath, int* err);
  // The same below `base`, as EliminaFileSotto reaches it; a link in the file's place is not written through.
  static File ApriScritturaSotto(const std::string& base, const std::string& percorso, int* err);

  // A new file that must not be there yet: never an existing file, nor through a link of its name. The
  // folder must exist.
  static File CreaNuovo(const std::string& winPath, int* err);

  bool Aperto() const { return handle_ != kNoHandle; }
  std::int64_t Lunghezza() const;
  // Reads up to n bytes; gives how many were read, 0 at the end or on error.
  std::size_t Leggi(char* buf, std::size_t n);
  // A read failed (as against reaching the end of the file).
  bool ErroreLettura() const { return erroreLettura_; }
  bool Scrivi(const char* buf, std::size_t n);
  // What was written is on the disk.
  bool Scarica();
  // Moves the position forward by n bytes.
  bool Salta(std::int64_t n);
  std::int64_t Posizione() const;
  void Chiudi();

 private:
  static constexpr std::intptr_t kNoHandle = -1;
  std::intptr_t handle_ = kNoHandle;
  bool erroreLettura_ = false;
};

// One program at a time per program folder: an exclusive hold on the lock file `checkordl.lock` in it,
// waited for a moment. The system lets go of it when the process ends, however it ends. Holds taken again
// by the same process on the same folder nest. A folder where no lock file can be made is worked in
// without one: the work itself then fails as it would have. A lock file that is there but cannot be held
// (a folder, a link, a file that refuses the lock) refuses the work.
class BloccoCartella {
 public:
  BloccoCartella() = default;
  explicit BloccoCartella(const std::string& cartella);
  BloccoCartella(BloccoCartella&& other) noexcept;
  BloccoCartella& operator=(BloccoCartella&& other) noexcept;
  BloccoCartella(const BloccoCartella&) = delete;
  BloccoCartella& operator=(const BloccoCartella&) = delete;
  ~BloccoCartella();

  // Nothing is held, as when another process held the folder all the while.
  static BloccoCartella Rifiutato() {
    BloccoCartella b;
    b.occupato_ = true;
    return b;
  }

  // Another process held the folder all the while, or it was refused: nothing is held.
  bool Occupato() const { return occupato_; }
  // Why the lock file could not be held; "" when another process held it.
  const std::string& Motivo() const { return motivo_; }

 private:
  void Rilascia();
  std::string chiave_;
  bool occupato_ = false;
  std::string motivo_;
};

}  // namespace host
