#include "support/testo_uscita.h"

#include <string_view>

#ifndef _WIN32
#include <langinfo.h>
#endif

#include "host/macchina.h"
#include "support/files.h"

namespace support {

std::string TestoLocale(const std::string& testo) {
#ifdef _WIN32
  return testo;
#else
  // The codeset of the locale that main() (or the toolkit) set from the environment.
  const std::string_view codeset = nl_langinfo(CODESET);
  const std::string t = codeset == "UTF-8" ? host::VersoUtf8(testo) : testo;
  std::string lf;
  lf.reserve(t.size());
  for (std::size_t i = 0; i < t.size(); ++i)
    if (t[i] != '\r' || i + 1 == t.size() || t[i + 1] != '\n') lf += t[i];
  return lf;
#endif
}

std::string MotivoScrittura(int errore) {
  switch (errore) {
    case host::kErrPermissionDenied:
    case host::kErrPathFileAccess:
      return "access denied";
    case host::kErrPathNotFound:
    case host::kErrFileNotFound:
      return "the folder does not exist";
    case host::kErrFileAlreadyOpen:
      return "another program has the file open";
    case host::kErrDiskFull:
      return "the disk is full";
    case host::kErrDeviceUnavailable:
      return "the drive is not available";
    case host::kErrBadFileName:
      return "the name is not valid";
    default:
      return "error " + std::to_string(errore);
  }
}

std::string ScriviTestoIntero(const std::string& percorso, const std::string& byte) {
  int errore = 0;
  if (ScriviFileIntero(percorso, {byte}, &errore)) return "";
  // A write that stopped without the platform's word for it: most often a full disk.
  return errore ? MotivoScrittura(errore) : "it could not be written whole";
}

}  // namespace support
