#include "macchina_prova.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "host/machine.h"

namespace fs = std::filesystem;

MacchinaProva::MacchinaProva() {
  std::string modello = (fs::temp_directory_path() / "checkordl-XXXXXX").string();
  if (!::mkdtemp(modello.data())) throw std::runtime_error("mkdtemp");
  prefisso_ = modello;
  fs::create_directories(prefisso_ + "/dosdevices");
  fs::create_directories(prefisso_ + "/drive_c");
  fs::create_directory_symlink("../drive_c", prefisso_ + "/dosdevices/c:");
  fs::create_directory_symlink("../non_montato", prefisso_ + "/dosdevices/d:");
  host::UsaPrefisso(prefisso_);
}

MacchinaProva::~MacchinaProva() {
  std::error_code ec;
  // Read-only files and folders must not stop the clean-up.
  for (auto it = fs::recursive_directory_iterator(prefisso_, ec); !ec && it != fs::end(it); it.increment(ec))
    if (!it->is_symlink()) ::chmod(it->path().c_str(), it->is_directory() ? 0755 : 0644);
  fs::remove_all(prefisso_, ec);
}

std::string MacchinaProva::C(const std::string& relativo) const {
  std::string r = relativo;
  for (char& c : r)
    if (c == '\\') c = '/';
  return prefisso_ + "/drive_c/" + r;
}

void MacchinaProva::ScriviHost(const std::string& host, const std::string& byte) {
  fs::create_directories(fs::path(host).parent_path());
  std::ofstream f(host, std::ios::binary | std::ios::trunc);
  f.write(byte.data(), static_cast<std::streamsize>(byte.size()));
}

std::string MacchinaProva::LeggiHost(const std::string& host) {
  std::ifstream f(host, std::ios::binary);
  std::ostringstream s;
  s << f.rdbuf();
  return s.str();
}

bool MacchinaProva::EsisteHost(const std::string& host) {
  struct stat st {};
  return ::lstat(host.c_str(), &st) == 0;
}

std::string Le32(std::int32_t v) {
  std::string s(4, '\0');
  for (int i = 0; i < 4; ++i) s[i] = static_cast<char>((static_cast<std::uint32_t>(v) >> (8 * i)) & 0xFF);
  return s;
}
