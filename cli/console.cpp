#include "console.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "host/macchina.h"
#include "host/processo.h"
#include "support/files.h"
#include "support/testo_uscita.h"

namespace cli {

void ScriviByte(const std::string& byte) {
  std::fwrite(byte.data(), 1, byte.size(), stdout);
}

std::string PerTerminale(const std::string& testo) {
  return support::TestoLocale(testo);
}

void ScriviTesto(const std::string& testo) {
  ScriviByte(PerTerminale(testo));
}

namespace {

// What went to standard output before the message stays before it where both go to one file.
void Messaggio(const std::string& riga) {
  std::fflush(stdout);
  std::fwrite(riga.data(), 1, riga.size(), stderr);
}

}  // namespace

void MessaggiConsole::Semplice(const std::string& testo) {
  Messaggio("plain: " + testo + "\n");
}

void MessaggiConsole::Critico(const std::string& testo) {
  critico_ = true;
  Messaggio("critical: " + testo + "\n");
}

void DialogoCartellaConsole::MostraModale() {
  if (risposte_.empty()) {
    exit_ = false;
    pathDir_.clear();
    return;
  }
  exit_ = true;
  pathDir_ = risposte_.front();
  risposte_.erase(risposte_.begin());
}

std::string ArgomentoPercorso(const std::string& argomento) {
#ifdef _WIN32
  return argomento;
#else
  if (!argomento.empty() && argomento[0] == '/') return host::PercorsoWindows(argomento);
  return host::DaUtf8(argomento);
#endif
}

namespace {

// The Windows build run under Wine numbers its processes as Windows does, the native tool as Linux does, and
// both may share a program folder: each marks its folders with its kind, so that it never takes the other's
// live run for a dead one.
#ifdef _WIN32
constexpr const char* kSegnoBuild = "-win";
#else
constexpr const char* kSegnoBuild = "";
#endif

// The run that `nome` ("<prefisso>-<pid>-<n>") belongs to; 0 for a name of another kind.
std::uint32_t ProcessoDi(const std::string& nome, const std::string& prefisso) {
  if (!nome.starts_with(prefisso + "-")) return 0;
  const std::size_t inizio = prefisso.size() + 1, trattino = nome.find('-', inizio);
  const auto cifre = [&](std::size_t da, std::size_t a) {
    return a > da && a - da <= 10 && nome.find_first_not_of("0123456789", da) >= a;
  };
  if (trattino == std::string::npos || !cifre(inizio, trattino) || !cifre(trattino + 1, nome.size()))
    return 0;
  const unsigned long long id = std::stoull(nome.substr(inizio, trattino - inizio));
  return id <= UINT32_MAX ? static_cast<std::uint32_t>(id) : 0;
}

// Removes a working folder of the program's and the files it holds, never through a link: one that is a
// link, or holds a folder, stays.
void Rimuovi(const std::string& programma, const std::string& cartella) {
  int err = 0;
  if (host::VoceSotto(programma, cartella, &err) != host::Voce::cartella) return;
  if (!support::SvuotaCartella(cartella, "*")) return;
  const std::string host = host::PercorsoHost(cartella, &err);
  std::error_code ec;
  if (!err) std::filesystem::remove(host, ec);
}

// The folders of this kind that runs killed before their end left behind: their process is gone, and with it
// anyone who could remove them. A live run's folder is its own business.
void RimuoviOrfane(const std::string& programma, const std::string& prefisso) {
  std::vector<std::string> orfane;
  host::Enumerazione nomi(programma + "\\" + prefisso + "-*", host::kAttrDirectory | host::kAttrHidden);
  int err = 0;
  for (std::string nome = nomi.Prossima(&err); !nome.empty() && !err; nome = nomi.Prossima(&err))
    if (const std::uint32_t id = ProcessoDi(nome, prefisso); id != 0 && !host::ProcessoVivo(id))
      orfane.push_back(programma + "\\" + nome);
  for (const auto& cartella : orfane) Rimuovi(programma, cartella);
}

}  // namespace

CartellaPropria::CartellaPropria(const std::string& tipo) : programma_(host::CartellaProgramma()) {
  const std::string prefisso = tipo + kSegnoBuild;
  RimuoviOrfane(programma_, prefisso);
  int err = 0;
  const std::filesystem::path base = host::PercorsoHost(programma_, &err);
  if (err) return;
  for (int i = 0; i < 1000; ++i) {
    const std::string nome = prefisso + "-" + std::to_string(host::IdProcesso()) + "-" + std::to_string(i);
    std::error_code ec;
    if (std::filesystem::create_directory(base / nome, ec)) {
      percorso_ = programma_ + "\\" + nome;
      return;
    }
    if (ec) return;
  }
}

CartellaPropria::~CartellaPropria() {
  if (!percorso_.empty()) Rimuovi(programma_, percorso_);
}

}  // namespace cli
