// A pipe where the program expects a file: every reader of an outside file must give its "cannot be read"
// answer at once, where a plain open or read would wait for the other end for ever.
#ifndef _WIN32

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <tuple>

#include "analysis/analisi_backup.h"
#include "collection/scansione.h"
#include "collection/snapshot.h"
#include "finestra_prova.h"
#include "formats/elenco.h"
#include "formats/info_header.h"
#include "formats/script.h"
#include "host/accesso_registro.h"
#include "host/macchina.h"
#include "host/versione.h"
#include "macchina_prova.h"
#include "support/files.h"
#include "support/spazio_dischi.h"
#include "support/versioni.h"

namespace {

using formats::ElencoFile;

// What is checked, the pipe (a path below C:, or from the prefix when it starts with '/'), and the check.
using Caso = std::tuple<const char*, std::string, std::function<bool()>>;

TEST(NonFile, UnaPipeNonSiLeggeENonBlocca) {
  MessaggiProva messaggi;
  BarraProva barra;
  DidascaliaProva didascalia;
  // What the readers fill in.
  int err = 0;
  std::int32_t n = -1;
  formats::InfoHeader h;
  ElencoFile e;
  host::VersioneOs v;
  support::DriveInfo d;
  const Caso casi[] = {
      // A member that cannot be read is left out, as one that does not exist.
      {"member to pack", "T/ordeio.txt",
       [&] {
         collection::ContenutoSnapshot c;
         return collection::SalvaSnapshot("C:\\s.bin", {"C:\\T\\ordeio.txt"}, 1, didascalia, barra) &&
                collection::EstraiSnapshot("C:\\s.bin", "C:\\U", c) && c.Numero == 0;
       }},
      {"written over", "T/a",
       [&] {
         return !host::File::ApriScrittura("C:\\T\\a", &err).Aperto() && err == host::kErrPathFileAccess;
       }},
      {"record", "T/info.bin", [&] { return !formats::LeggiInfoHeader("C:\\T\\info.bin", &h); }},
      {"list", "T/a.el", [&] { return !formats::CaricaElencoStretto("C:\\T\\a.el", e); }},
      {"script", "T/script.dat",
       [&] {
         std::vector<std::string> livelli;
         formats::LeggiLivelliScript("C:\\T\\script.dat", n, livelli);
         return livelli.empty() && n == 0;
       }},
      {"version", "T/x.exe", [] { return support::GetFileVersion("C:\\T\\x.exe").empty(); }},
      {"system.reg", "/system.reg",
       [] { return host::LeggiValoreRegistroNome("Software", "", nullptr) == host::kRegNonTrovato; }},
      {"user.reg", "/user.reg", [&] { return host::LeggiVersioneOs(&v) && v.dwBuildNumber == 7601; }},
      {"drive label", "/drive_c/.windows-label",
       [&] { return support::GetDriveInfo("C:", d) && d.VolumeName == std::string(64, ' '); }},
      {"good copy", "Campione/a.tr4",
       [&] {
         // Ordelio installed, and the lists of the good copies, of the user's backup and of the CD.
         support::CreaCartella("C:\\Program Files (x86)");
         support::ScriviFileTesto("C:\\Program Files (x86)\\ordl2009.exe", "MZ");
         support::CreaCartella("C:\\P");
         collection::ScriviElencoFile("C:\\P\\backup_trle.le", {1, "C:\\Campione", {"\\a.tr4"}, {5}});
         collection::ScriviElencoFile("C:\\T\\ordl.el", {1, "C:\\Ordl", {"\\backup_trle\\a.tr4"}, {5}});
         collection::ScriviElencoFile("C:\\P\\trle_cd.le", {0, "C:", {}, {}});
         std::vector<std::string> trovati;
         const auto t = analysis::AnalisiBackup("C:\\P", "C:\\T", trovati, barra, messaggi);
         return t && t->find(analysis::kCampioneMancante) != std::string::npos;
       }},
  };
  for (const auto& [nome, pipe, prova] : casi) {
    SCOPED_TRACE(nome);
    MacchinaProva m;
    std::filesystem::create_directories(m.C("T"));
    std::filesystem::create_directories(m.C("U"));
    const std::string fifo = pipe[0] == '/' ? m.Prefisso() + pipe : m.C(pipe);
    std::filesystem::create_directories(std::filesystem::path(fifo).parent_path());
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0644), 0);
    auto esito = std::async(std::launch::async, prova);
    if (esito.wait_for(std::chrono::seconds(5)) == std::future_status::timeout) {
      ADD_FAILURE() << "still waiting on the pipe";
      // Both ends at once, so whatever waits on either is let go.
      ::close(::open(fifo.c_str(), O_RDWR));
    }
    EXPECT_TRUE(esito.get());
  }
}

}  // namespace

#endif
