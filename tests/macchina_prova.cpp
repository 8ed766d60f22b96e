#include "macchina_prova.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "host/machine.h"

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include "host/registro_file.h"
#else
#include <unistd.h>
#endif

namespace fs = std::filesystem;

#ifdef _WIN32

namespace {

// The tests write to C:\ and to HKEY_LOCAL_MACHINE: only a Wine prefix made for them may take that.
bool SottoWine() {
  const HMODULE ntdll = ::GetModuleHandleA("ntdll.dll");
  return ntdll && ::GetProcAddress(ntdll, "wine_get_version");
}

// Everything on C: that a test may add to, outermost first: the system's own folders are left alone.
void Albero(const std::string& cartella, std::set<std::string>* nomi) {
  WIN32_FIND_DATAA d{};
  const HANDLE h = ::FindFirstFileA((cartella + "\\*").c_str(), &d);
  if (h == INVALID_HANDLE_VALUE) return;
  do {
    const std::string n = d.cFileName;
    if (n == "." || n == "..") continue;
    const std::string pieno = cartella + "\\" + n;
    nomi->insert(pieno);
    const bool sistema = cartella == "C:" && (n == "windows" || n == "users");
    if ((d.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && !sistema) Albero(pieno, nomi);
  } while (::FindNextFileA(h, &d));
  ::FindClose(h);
}

std::set<std::string> Radice() {
  std::set<std::string> nomi;
  Albero("C:", &nomi);
  return nomi;
}

// Read-only files and folders must not stop the clean-up.
void Elimina(const std::string& percorso) {
  const DWORD a = ::GetFileAttributesA(percorso.c_str());
  if (a == INVALID_FILE_ATTRIBUTES) return;
  ::SetFileAttributesA(percorso.c_str(), FILE_ATTRIBUTE_NORMAL | (a & FILE_ATTRIBUTE_DIRECTORY));
  if (!(a & FILE_ATTRIBUTE_DIRECTORY) || (a & FILE_ATTRIBUTE_REPARSE_POINT)) {
    if (!::DeleteFileA(percorso.c_str())) ::RemoveDirectoryA(percorso.c_str());
    return;
  }
  WIN32_FIND_DATAA d{};
  const HANDLE h = ::FindFirstFileA((percorso + "\\*").c_str(), &d);
  if (h != INVALID_HANDLE_VALUE) {
    do {
      const std::string n = d.cFileName;
      if (n != "." && n != "..") Elimina(percorso + "\\" + n);
    } while (::FindNextFileA(h, &d));
    ::FindClose(h);
  }
  ::RemoveDirectoryA(percorso.c_str());
}

constexpr REGSAM kTutto = KEY_ALL_ACCESS | KEY_WOW64_64KEY;

bool ChiaveEsiste(const std::string& nome) {
  HKEY h = nullptr;
  if (::RegOpenKeyExA(HKEY_LOCAL_MACHINE, nome.c_str(), 0, KEY_READ | KEY_WOW64_64KEY, &h) != ERROR_SUCCESS)
    return false;
  ::RegCloseKey(h);
  return true;
}

}  // namespace

struct MacchinaProva::Ripristino {
  std::set<std::string> radice = Radice();
  // Keys that were not there, outermost first, and values as they were.
  std::vector<std::string> chiaviNuove;
  struct Valore {
    std::string chiave, nome;
    bool c_era = false;
    DWORD tipo = 0;
    std::string dati;
  };
  std::vector<Valore> valori;
};

MacchinaProva::MacchinaProva() {
  if (!SottoWine())
    throw std::runtime_error("these tests change C:\\ and the registry: run them in a throwaway Wine prefix");
  ripristino_ = std::make_unique<Ripristino>();
}

MacchinaProva::~MacchinaProva() {
  for (const auto& n : Radice())
    if (!ripristino_->radice.count(n)) Elimina(n);
  for (auto it = ripristino_->valori.rbegin(); it != ripristino_->valori.rend(); ++it) {
    HKEY h = nullptr;
    if (::RegOpenKeyExA(HKEY_LOCAL_MACHINE, it->chiave.c_str(), 0, kTutto, &h) != ERROR_SUCCESS) continue;
    if (it->c_era)
      ::RegSetValueExA(h, it->nome.c_str(), 0, it->tipo, reinterpret_cast<const BYTE*>(it->dati.data()),
                       static_cast<DWORD>(it->dati.size()));
    else
      ::RegDeleteValueA(h, it->nome.c_str());
    ::RegCloseKey(h);
  }
  for (auto it = ripristino_->chiaviNuove.rbegin(); it != ripristino_->chiaviNuove.rend(); ++it)
    ::RegDeleteTreeA(HKEY_LOCAL_MACHINE, it->c_str());
}

std::string MacchinaProva::C(const std::string& relativo) const {
  std::string r = host::DaUtf8(relativo);
  for (char& c : r)
    if (c == '/') c = '\\';
  return "C:\\" + r;
}

void MacchinaProva::Registro(const std::string& testo) const {
  for (const auto& k : host::AnalizzaTestoRegistro(testo)) {
    // Links come with the prefix and stay as they are.
    if (k.collegamento || k.nome.empty()) continue;
    for (std::size_t fine = k.nome.find('\\');; fine = k.nome.find('\\', fine + 1)) {
      const std::string parte = k.nome.substr(0, fine);
      if (!ChiaveEsiste(parte)) {
        ripristino_->chiaviNuove.push_back(parte);
        break;
      }
      if (fine == std::string::npos) break;
    }
    HKEY h = nullptr;
    if (::RegCreateKeyExA(HKEY_LOCAL_MACHINE, k.nome.c_str(), 0, nullptr, 0, kTutto, nullptr, &h, nullptr) !=
        ERROR_SUCCESS)
      throw std::runtime_error("cannot write registry key " + k.nome);
    for (const auto& v : k.valori) {
      Ripristino::Valore prima;
      prima.chiave = k.nome;
      prima.nome = v.nome;
      DWORD n = 0;
      if (::RegQueryValueExA(h, v.nome.c_str(), nullptr, &prima.tipo, nullptr, &n) == ERROR_SUCCESS) {
        prima.c_era = true;
        prima.dati.resize(n);
        ::RegQueryValueExA(h, v.nome.c_str(), nullptr, &prima.tipo,
                           reinterpret_cast<BYTE*>(prima.dati.data()), &n);
      }
      ripristino_->valori.push_back(std::move(prima));
      std::string dati = v.dati;
      if (host::TipoTesto(v.tipo)) dati += '\0';
      ::RegSetValueExA(h, v.nome.c_str(), 0, static_cast<DWORD>(v.tipo),
                       reinterpret_cast<const BYTE*>(dati.data()), static_cast<DWORD>(dati.size()));
    }
    ::RegCloseKey(h);
  }
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

void MacchinaProva::Registro(const std::string& testo) const {
  ScriviHost(prefisso_ + "/system.reg", testo);
  host::UsaPrefisso(prefisso_);
}

#endif

#ifdef _WIN32
// Host names here are Windows-1252, which std::filesystem would take for UTF-8: the ANSI calls take them.
void MacchinaProva::ScriviHost(const std::string& host, const std::string& byte) {
  for (std::size_t k = host.find('\\', 3); k != std::string::npos; k = host.find('\\', k + 1))
    ::CreateDirectoryA(host.substr(0, k).c_str(), nullptr);
  std::ofstream f(host, std::ios::binary | std::ios::trunc);
  f.write(byte.data(), static_cast<std::streamsize>(byte.size()));
}

bool MacchinaProva::EsisteHost(const std::string& host) {
  return ::GetFileAttributesA(host.c_str()) != INVALID_FILE_ATTRIBUTES;
}
#else
void MacchinaProva::ScriviHost(const std::string& host, const std::string& byte) {
  fs::create_directories(fs::path(host).parent_path());
  std::ofstream f(host, std::ios::binary | std::ios::trunc);
  f.write(byte.data(), static_cast<std::streamsize>(byte.size()));
}

bool MacchinaProva::EsisteHost(const std::string& host) {
  return fs::exists(fs::symlink_status(host));
}
#endif

std::string MacchinaProva::LeggiHost(const std::string& host) {
  std::ifstream f(host, std::ios::binary);
  std::ostringstream s;
  s << f.rdbuf();
  return s.str();
}

std::string Le32(std::int32_t v) {
  std::string s(4, '\0');
  for (int i = 0; i < 4; ++i) s[i] = static_cast<char>((static_cast<std::uint32_t>(v) >> (8 * i)) & 0xFF);
  return s;
}
