#include "support/files.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "host/dischi.h"
#include "macchina_prova.h"
#include "support/dischi.h"

namespace {

using namespace support;
namespace fs = std::filesystem;

TEST(File, LetturaEScritturaByteperByte) {
  MacchinaProva m;
  std::string binario;
  for (int i = 0; i < 256; ++i) binario += static_cast<char>(i);
  ASSERT_TRUE(ScriviFileTesto("C:\\bin.dat", binario));
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("bin.dat")), binario);  // no line end of its own
  EXPECT_EQ(LeggiFile("C:\\BIN.DAT"), binario);
  ASSERT_TRUE(ScriviFileTesto("C:\\bin.dat", "x"));
  EXPECT_EQ(LeggiFile("C:\\bin.dat"), "x");
  MacchinaProva::ScriviHost(m.C("vuoto.dat"), "");
  EXPECT_EQ(LeggiFile("C:\\vuoto.dat"), "");
  EXPECT_EQ(LeggiFile("C:\\manca.dat"), "");
  EXPECT_FALSE(ScriviFileTesto("C:\\manca\\x.dat", "x"));
}

TEST(File, CartelleElenchiECancellazioni) {
  MacchinaProva m;
  EXPECT_TRUE(CreaCartella("C:\\Nuova"));
  MacchinaProva::ScriviHost(m.C("Nuova/segno"), "x");
  EXPECT_TRUE(CreaCartella("C:\\nuova"));  // already there: untouched
  EXPECT_TRUE(MacchinaProva::EsisteHost(m.C("Nuova/segno")));
  EXPECT_FALSE(CreaCartella("C:\\Manca\\Sotto"));
  EXPECT_FALSE(CreaCartella("C:\\Nuova\\segno"));  // a file in the way

  EXPECT_TRUE(CancellaFile("C:\\nessuno.txt"));
  MacchinaProva::ScriviHost(m.C("sola.txt"), "x");
  ::chmod(m.C("sola.txt").c_str(), 0444);
  EXPECT_TRUE(CancellaFile("C:\\SOLA.txt"));
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("sola.txt")));

  for (const char* n : {"a.el", "b.el", "c.txt"}) MacchinaProva::ScriviHost(m.C(std::string("W/") + n), "x");
  fs::create_directories(m.C("W/sotto.el"));
  std::int32_t n = -1;
  auto elenco = ElencaFile("C:\\W", "*.el", n);
  std::sort(elenco.begin(), elenco.end());
  EXPECT_EQ(n, 2);
  EXPECT_EQ(elenco, (std::vector<std::string>{"C:\\W\\a.el", "C:\\W\\b.el"}));
  EXPECT_EQ(ElencaFile("C:\\W\\", "c.txt", n), std::vector<std::string>{"C:\\W\\\\c.txt"});

  EXPECT_FALSE(SvuotaCartella("C:\\Manca", "*.*"));
  EXPECT_TRUE(SvuotaCartella("C:\\W", "*.el"));
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("W/a.el")));
  EXPECT_TRUE(MacchinaProva::EsisteHost(m.C("W/c.txt")));
  EXPECT_TRUE(MacchinaProva::EsisteHost(m.C("W/sotto.el")));
  EXPECT_TRUE(SvuotaCartella("C:\\W", "*.none"));  // nothing matches: true
}

// The file system itself measured: on Linux the blocks kept for root are not free to anyone.
TEST(File, SpazioDelDiscoVero) {
  MacchinaProva m;
  DriveInfo c;
  ASSERT_TRUE(GetDriveInfo("C:", c));
  EXPECT_GT(c.TotalSize, 0);
  EXPECT_GE(c.TotalSize, c.FreeSpace);
  EXPECT_GT(SpazioLibero("C:"), 0);
#ifndef _WIN32
  host::MisureVolume v;
  ASSERT_TRUE(host::MisuraPiattaforma("C:\\", &v));
  EXPECT_EQ(v.liberi, v.disponibili);
#endif
}

}  // namespace
