// The snapshot, the first thing every file a supporter opens meets: unpacked into a folder of its own, it
// may write there and nowhere else, and its table stays within what the file can hold.
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <set>
#include <string>

#include "collection/snapshot.h"
#include "prefisso_fuzz.h"

namespace {

std::set<std::string> Nomi(const std::string& cartella) {
  std::set<std::string> nomi;
  DIR* d = ::opendir(cartella.c_str());
  if (!d) std::abort();
  while (const dirent* e = ::readdir(d)) {
    const std::string n = e->d_name;
    if (n != "." && n != "..") nomi.insert(n);
  }
  ::closedir(d);
  return nomi;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string& prefisso = PrefissoFuzz();
  const std::string drive = prefisso + "/drive_c";
  const std::string uscita = drive + "/Dati";
  ::mkdir(uscita.c_str(), 0700);
  for (const auto& nome : Nomi(uscita))
    if (::unlink((uscita + "/" + nome).c_str())) std::abort();
  {
    std::ofstream f(drive + "/s.bin", std::ios::binary | std::ios::trunc);
    f.write(reinterpret_cast<const char*>(dati), static_cast<std::streamsize>(n));
  }

  collection::ContenutoSnapshot contenuto;
  collection::EstraiSnapshot("C:\\s.bin", "C:\\Dati", contenuto);

  // A table entry costs at least eight bytes of the file.
  if (contenuto.Numero < 0 || contenuto.Nomi.size() > n / 8 + 1 ||
      contenuto.Dimensioni.size() != contenuto.Nomi.size())
    std::abort();
  // Nothing beside the target folder changed, and inside it only plain files.
  if (Nomi(prefisso) != std::set<std::string>{"dosdevices", "drive_c"} ||
      Nomi(drive) != std::set<std::string>{"Dati", "s.bin"} ||
      Nomi(prefisso + "/dosdevices") != std::set<std::string>{"c:"})
    std::abort();
  for (const auto& nome : Nomi(uscita)) {
    struct stat st {};
    if (::lstat((uscita + "/" + nome).c_str(), &st) || !S_ISREG(st.st_mode)) std::abort();
  }
  return 0;
}
