// A link at the name of a file the program deletes: the link goes, and the read-only, hidden and system file
// it names keeps its bytes, its mode and its DOS attributes. The shell tests see the file; this sees the
// answers.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#ifndef _WIN32
#include <sys/xattr.h>
#endif

#include "host/macchina.h"
#include "macchina_prova.h"
#include "support/files.h"

namespace {

namespace fs = std::filesystem;

std::string AttributiDos(const std::string& host) {
#ifndef _WIN32
  char buf[16] = {};
  const ssize_t n = ::getxattr(host.c_str(), "user.DOSATTRIB", buf, sizeof buf - 1);
  return n > 0 ? std::string(buf, static_cast<std::size_t>(n)) : "-";
#else
  (void)host;
  return "-";
#endif
}

TEST(FileCollegato, LaCancellazioneNonPassaIlCollegamento) {
  MacchinaProva m;
  fs::create_directories(m.C("Fuori"));
  const std::string bersaglio = m.C("Fuori/ro.txt");
  MacchinaProva::ScriviHost(bersaglio, "r");
#ifndef _WIN32
  ::setxattr(bersaglio.c_str(), "user.DOSATTRIB", "0x6", 3, 0);
#endif
  const fs::perms sola = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
  fs::permissions(bersaglio, sola);
  const std::string dos = AttributiDos(bersaglio);
  std::error_code ec;
  fs::create_symlink(bersaglio, m.C("link.bin"), ec);
  // Wine's own links cannot be made from inside it.
  if (ec || !fs::is_symlink(m.C("link.bin"))) GTEST_SKIP() << "no links on this system";

  int err = 0;
  EXPECT_TRUE(host::ImpostaAttributi("C:\\link.bin", host::kAttrArchive, &err));
  EXPECT_TRUE(support::CancellaFile("C:\\link.bin"));
  EXPECT_FALSE(fs::is_symlink(m.C("link.bin")));
  EXPECT_EQ(MacchinaProva::LeggiHost(bersaglio), "r");
  EXPECT_EQ(fs::status(bersaglio).permissions() & fs::perms::all, sola);
  EXPECT_EQ(AttributiDos(bersaglio), dos);
}

}  // namespace
