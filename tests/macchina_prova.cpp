#include "macchina_prova.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ranges>
#include <set>
#include <sstream>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

#include "host/accesso_registro.h"
#include "host/byte_le.h"
#include "host/macchina.h"

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include "host/registro_file.h"
#endif

namespace fs = std::filesystem;

namespace {

// Read-only files and folders must not stop the clean-up; links are not followed.
void Elimina(const fs::path& percorso) {
  std::error_code ec;
  for (auto it = fs::recursive_directory_iterator(percorso, ec); !ec && it != fs::end(it); it.increment(ec))
    if (!it->is_symlink()) fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
  fs::permissions(percorso, fs::perms::owner_all, fs::perm_options::add, ec);
  fs::remove_all(percorso, ec);
}

}  // namespace

#ifdef _WIN32

namespace {

// The tests write to C:\ and to HKEY_LOCAL_MACHINE: only a Wine prefix made for them may take that.
bool SottoWine() {
  const HMODULE ntdll = ::GetModuleHandleA("ntdll.dll");
  return ntdll && ::GetProcAddress(ntdll, "wine_get_version");
}

// Everything on C: that a test may add to: the system's own folders are left alone.
std::set<fs::path> Radice() {
  std::set<fs::path> nomi;
  std::error_code ec;
  for (auto it = fs::recursive_directory_iterator("C:\\", ec); !ec && it != fs::end(it); it.increment(ec)) {
    nomi.insert(it->path());
    const auto n = it->path().filename();
    if (it.depth() == 0 && (n == "windows" || n == "users")) it.disable_recursion_pending();
  }
  return nomi;
}

// The user's VirtualStore, where a test plants copies.
std::string ArchivioVirtuale() {
  long esito = 0;
  return host::CartellaSpeciale(host::kCsidlLocalAppData, &esito) + "\\VirtualStore";
}

}  // namespace

struct MacchinaProva::Ripristino {
  bool archivio = fs::exists(ArchivioVirtuale());
  std::set<fs::path> radice = Radice();
  std::vector<std::string> chiaviNuove;  // outermost first
  // Values as they were: key, name, whether it was there, type, data.
  std::vector<std::tuple<std::string, std::string, bool, DWORD, std::string>> valori;
};

MacchinaProva::MacchinaProva() {
  if (!SottoWine())
    throw std::runtime_error("these tests change C:\\ and the registry: run them in a throwaway Wine prefix");
  ripristino_ = std::make_unique<Ripristino>();
}

MacchinaProva::~MacchinaProva() {
  for (const auto& n : Radice())
    if (!ripristino_->radice.count(n)) Elimina(n);
  if (!ripristino_->archivio) Elimina(ArchivioVirtuale());
  const HKEY m = HKEY_LOCAL_MACHINE;
  for (const auto& [chiave, nome, c_era, tipo, dati] : ripristino_->valori | std::views::reverse)
    if (c_era)
      ::RegSetKeyValueA(m, chiave.c_str(), nome.c_str(), tipo, dati.data(), static_cast<DWORD>(dati.size()));
    else
      ::RegDeleteKeyValueA(m, chiave.c_str(), nome.c_str());
  for (const auto& k : ripristino_->chiaviNuove | std::views::reverse) ::RegDeleteTreeA(m, k.c_str());
}

std::string MacchinaProva::C(const std::string& relativo) const {
  std::string r = host::DaUtf8(relativo);
  std::ranges::replace(r, '/', '\\');
  return "C:\\" + r;
}

void MacchinaProva::Registro(const std::string& testo) const {
  const HKEY m = HKEY_LOCAL_MACHINE;
  for (const auto& k : host::AnalizzaTestoRegistro(testo)) {
    // Links come with the prefix and stay as they are.
    if (k.collegamento || k.nome.empty()) continue;
    bool nuova = false;
    for (std::size_t fine = 0; fine != std::string::npos;) {
      fine = k.nome.find('\\', fine + 1);
      const std::string parte = k.nome.substr(0, fine);
      HKEY h = nullptr;
      DWORD come = 0;
      if (::RegCreateKeyExA(m, parte.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &h, &come) !=
          ERROR_SUCCESS)
        throw std::runtime_error("cannot write registry key " + parte);
      ::RegCloseKey(h);
      if (come == REG_CREATED_NEW_KEY && !std::exchange(nuova, true))
        ripristino_->chiaviNuove.push_back(parte);
    }
    for (const auto& v : k.valori) {
      std::string prima(1 << 16, '\0');
      DWORD tipo = 0, n = static_cast<DWORD>(prima.size());
      const bool c_era = ::RegGetValueA(m, k.nome.c_str(), v.nome.c_str(), RRF_RT_ANY | RRF_NOEXPAND, &tipo,
                                        prima.data(), &n) == ERROR_SUCCESS;
      prima.resize(c_era ? n : 0);
      ripristino_->valori.emplace_back(k.nome, v.nome, c_era, tipo, prima);
      const std::string dati = v.dati + (host::TipoTesto(v.tipo) ? std::string(1, '\0') : "");
      ::RegSetKeyValueA(m, k.nome.c_str(), v.nome.c_str(), static_cast<DWORD>(v.tipo), dati.data(),
                        static_cast<DWORD>(dati.size()));
    }
  }
  host::UsaPrefisso({});
}

void MacchinaProva::AppDataLocale() const {
  host::UsaPrefisso({});
}

bool MacchinaProva::Windows64() const {
  BOOL wow64 = FALSE;
  return sizeof(void*) == 8 || (::IsWow64Process(::GetCurrentProcess(), &wow64) && wow64);
}

#else

struct MacchinaProva::Ripristino {};

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
  Elimina(prefisso_);
}

std::string MacchinaProva::C(const std::string& relativo) const {
  std::string r = relativo;
  std::ranges::replace(r, '\\', '/');
  return prefisso_ + "/drive_c/" + r;
}

void MacchinaProva::Registro(const std::string& testo) const {
  ScriviHost(prefisso_ + "/system.reg", testo);
  host::UsaPrefisso(prefisso_);
}

void MacchinaProva::AppDataLocale() const {
  ScriviHost(
      prefisso_ + "/user.reg",
      "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Explorer\\\\Shell "
      "Folders]\n\"Local AppData\"=\"C:\\\\users\\\\utente\\\\AppData\\\\Local\"\n");
  fs::create_directories(C("users/utente/AppData/Local"));
  host::UsaPrefisso(prefisso_);
}

bool MacchinaProva::Windows64() const {
  return LeggiHost(prefisso_ + "/system.reg").find("\n#arch=win32") == std::string::npos;
}

#endif

// Host names on Windows are Windows-1252, which std::filesystem would take for UTF-8: the ANSI calls take
// them.
void MacchinaProva::ScriviHost(const std::string& host, const std::string& byte) {
#ifdef _WIN32
  for (std::size_t k = host.find('\\', 3); k != std::string::npos; k = host.find('\\', k + 1))
    ::CreateDirectoryA(host.substr(0, k).c_str(), nullptr);
#else
  fs::create_directories(fs::path(host).parent_path());
#endif
  std::ofstream f(host, std::ios::binary | std::ios::trunc);
  f.write(byte.data(), static_cast<std::streamsize>(byte.size()));
}

bool MacchinaProva::EsisteHost(const std::string& host) {
#ifdef _WIN32
  return ::GetFileAttributesA(host.c_str()) != INVALID_FILE_ATTRIBUTES;
#else
  return fs::exists(fs::symlink_status(host));
#endif
}

std::string MacchinaProva::LeggiHost(const std::string& host) {
  std::ifstream f(host, std::ios::binary);
  std::ostringstream s;
  s << f.rdbuf();
  return s.str();
}

std::string Le32(std::int32_t v) {
  std::string s;
  host::AccodaLE(s, static_cast<std::uint32_t>(v));
  return s;
}
