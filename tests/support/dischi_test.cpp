#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "host/dischi.h"
#include "host/machine.h"
#include "macchina_prova.h"
#include "misure_finte.h"
#include "support/dischi.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kGiB = std::uint64_t{1} << 30;

// C: and D: come with the test machine (D:'s target is missing); E: floppy, F: CD, G: network, H: a second
// fixed disk, A: a fixed disk that must never be listed. No z: link, so Z: is the host's root.
class DischiTest : public testing::Test {
 protected:
  void SetUp() override {
#ifdef _WIN32
    GTEST_SKIP() << "the drives are links and registry values of the test's own Wine prefix";
#endif
    for (char l : std::string("aefgh")) {
      fs::create_directories(m_.Prefisso() + "/disco_" + l);
      fs::create_directory_symlink("../disco_" + std::string(1, l), m_.Prefisso() + "/dosdevices/" + l + ":");
    }
    Unita("\"e:\"=\"floppy\"\n\"F:\"=\"CDROM\"\n\"g:\"=\"network\"\n");
  }
  // The drive types of the prefix's registry.
  void Unita(const std::string& valori) {
    MacchinaProva::ScriviHost(m_.Prefisso() + "/system.reg",
                              "WINE REGISTRY Version 2\n[Software\\\\Wine\\\\Drives]\n" + valori);
    host::UsaPrefisso(m_.Prefisso());
  }
  static void Figura(char lettera, std::uint64_t liberi, std::uint64_t disponibili = 0,
                     std::uint64_t totali = 0) {
    MisureFinte::Figure()[lettera] = {disponibili, totali, liberi};
  }
  MacchinaProva m_;
  MisureFinte misure_;
};

TEST_F(DischiTest, DescrizioneDiUnDrive) {
  Figura('C', 7 * kGiB, 5 * kGiB + 3, 40 * kGiB);
  for (char l : std::string("EFG")) Figura(l, 0);
  MacchinaProva::ScriviHost(m_.C(".windows-label"), "Sistema\n");
  MacchinaProva::ScriviHost(m_.C(".windows-serial"), "1234abcd\n");
  // drive, result, letter, ready, type, free bytes
  const std::tuple<std::string, bool, std::string, bool, std::int32_t, double> casi[] = {
      // Only the first character names the drive.
      {"c:\\Dati", true, "C", true, 2, static_cast<double>(5 * kGiB + 3)},
      // Target missing: there, not ready, and its sizes are 0.
      {"d:", true, "D", false, 2, 0},
      {"E:", true, "E", true, 1, 0},
      {"F:", true, "F", true, 4, 0},
      {"G:", true, "G", true, 3, 0},
      {"Q:", false, " ", false, 0, 0},
  };
  for (const auto& c : casi) {
    support::DriveInfo info;
    info.FreeSpace = 9;  // what a previous drive left behind must not survive
    const bool esito = support::GetDriveInfo(std::get<0>(c), info);
    EXPECT_EQ(
        std::tuple(std::get<0>(c), esito, info.DriveLetter, info.IsReady, info.DriveType, info.FreeSpace), c);
  }
  support::DriveInfo c;
  ASSERT_TRUE(support::GetDriveInfo("C", c));
  EXPECT_EQ(c.VolumeName, "Sistema" + std::string(57, ' '));
  EXPECT_EQ(c.SerialNumber, 0x1234abcd);
  EXPECT_EQ(c.TotalSize, static_cast<double>(40 * kGiB));
  support::DriveInfo h;
  ASSERT_TRUE(support::GetDriveInfo("H", h));
  EXPECT_EQ(h.VolumeName, std::string(64, ' '));
  EXPECT_EQ(h.SerialNumber, 0x48000000);  // Wine's own serial for H: without a file of its own
  // A ready drive whose sizes cannot be had keeps what the record had.
  h.FreeSpace = 12;
  ASSERT_TRUE(support::GetDriveInfo("H", h));
  EXPECT_EQ(h.FreeSpace, 12);
}

TEST_F(DischiTest, SpazioLiberoDelVolumeIntero) {
  // The whole volume's free bytes, not the caller's share, and above 4 GiB to the byte.
  Figura('C', 6 * kGiB + 1, 2 * kGiB);
  Figura('D', 3 * kGiB);
  for (const char* d : {"c:", "C:\\Dati"}) EXPECT_EQ(support::SpazioLibero(d), 6.0 * kGiB + 1) << d;
  // A drive that is not ready is still measured by the volume call.
  EXPECT_EQ(support::SpazioLibero("D:"), 3.0 * kGiB);
  // Both sources fail.
  EXPECT_EQ(support::SpazioLibero("H:"), 0);
  EXPECT_EQ(support::SpazioLibero("Q:"), 0);
}

TEST_F(DischiTest, DiscoConPiuSpazio) {
  // Removable, CD and network drives are asked and left out; D: stays although it is not ready.
  EXPECT_EQ(support::ElencoDischiFissi(), (std::vector<std::string>{"C:", "D:", "H:", "Z:"}));
  // free bytes by drive, chosen drive, its free bytes
  const std::tuple<std::map<char, std::uint64_t>, std::string, double> casi[] = {
      {{{'C', 5 * kGiB}, {'D', 5 * kGiB}, {'Z', 1}}, "C:", 5.0 * kGiB},  // a tie: the first letter
      {{{'C', 2}, {'D', 1}, {'H', 3}, {'Z', 3}}, "H:", 3},
      {{{'C', 2}, {'E', 50 * kGiB}, {'G', 50 * kGiB}}, "C:", 2},  // removable drives do not count
      {{{'C', 0}}, "C:", 0},
  };
  for (const auto& [liberi, disco, atteso] : casi) {
    MisureFinte::Figure() = {};
    for (const auto& [l, b] : liberi) Figura(l, b);
    double spazio = -1;
    EXPECT_EQ(support::DiscoConPiuSpazio(spazio), disco);
    EXPECT_EQ(spazio, atteso) << disco;
  }

  // Every drive a CD: the list is empty and the out value keeps what it had.
  std::string cd;
  for (char l : std::string("cdefghz")) cd += "\"" + std::string(1, l) + ":\"=\"cdrom\"\n";
  Unita(cd);
  EXPECT_TRUE(support::ElencoDischiFissi().empty());
  double spazio = 42;
  EXPECT_EQ(support::DiscoConPiuSpazio(spazio), "");
  EXPECT_EQ(spazio, 42);
}

TEST(DischiVeri, IlFileSystemDelPrefisso) {
  MacchinaProva m;
  support::DriveInfo c;
  ASSERT_TRUE(support::GetDriveInfo("C:", c));
  EXPECT_GT(c.TotalSize, 0);
  EXPECT_GE(c.TotalSize, c.FreeSpace);
  EXPECT_GT(support::SpazioLibero("C:"), 0);
}

}  // namespace
