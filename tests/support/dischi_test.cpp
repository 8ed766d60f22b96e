#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "host/dischi.h"
#include "host/machine.h"
#include "macchina_prova.h"
#include "support/dischi.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kGiB = std::uint64_t{1} << 30;

// Figures by drive letter, handed out in place of the file system's.
std::map<char, host::MisureVolume>& Figure() {
  static std::map<char, host::MisureVolume> f;
  return f;
}

bool MisuraFinta(const std::string& radice, host::MisureVolume* m) {
  const auto it = Figure().find(radice.empty() ? '\0' : radice[0]);
  if (it == Figure().end()) return false;
  *m = it->second;
  return true;
}

// C: and D: come with the test machine (D:'s target is missing); E: floppy, F: CD, G: network, H: a second
// fixed disk, A: a fixed disk that must never be listed. No z: link, so Z: is the host's root.
class DischiTest : public testing::Test {
 protected:
  void SetUp() override {
    for (char l : std::string("aefgh")) {
      fs::create_directories(m_.Prefisso() + "/disco_" + l);
      fs::create_directory_symlink("../disco_" + std::string(1, l), m_.Prefisso() + "/dosdevices/" + l + ":");
    }
    MacchinaProva::ScriviHost(m_.Prefisso() + "/system.reg",
                              "WINE REGISTRY Version 2\n[Software\\\\Wine\\\\Drives] 1\n"
                              "\"e:\"=\"floppy\"\n\"F:\"=\"CDROM\"\n\"g:\"=\"network\"\n");
    host::UsaPrefisso(m_.Prefisso());
    Figure().clear();
    host::SostituisciMisuraVolume(MisuraFinta);
  }
  void TearDown() override { host::SostituisciMisuraVolume(nullptr); }
  static void Figura(char lettera, std::uint64_t liberi, std::uint64_t disponibili = 0,
                     std::uint64_t totali = 0) {
    Figure()[lettera] = {disponibili, totali, liberi};
  }
  MacchinaProva m_;
};

TEST_F(DischiTest, DescrizioneDiUnDrive) {
  Figura('C', 7 * kGiB, 5 * kGiB + 3, 40 * kGiB);
  for (char l : std::string("EFG")) Figura(l, 0);
  MacchinaProva::ScriviHost(m_.C(".windows-label"), "Sistema\n");
  MacchinaProva::ScriviHost(m_.C(".windows-serial"), "1234abcd\n");
  struct Caso {
    std::string drive;
    bool esito;
    std::string lettera;
    bool pronto;
    std::int32_t tipo;
    double libero;
  };
  const Caso casi[] = {
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
    SCOPED_TRACE(c.drive);
    support::DriveInfo info;
    // What a previous drive left behind must not survive.
    info.VolumeName = std::string(64, 'x');
    info.SerialNumber = 9;
    info.FreeSpace = 9;
    info.TotalSize = 9;
    EXPECT_EQ(support::GetDriveInfo(c.drive, info), c.esito);
    EXPECT_EQ(info.DriveLetter, c.lettera);
    EXPECT_EQ(info.IsReady, c.pronto);
    EXPECT_EQ(info.DriveType, c.tipo);
    EXPECT_EQ(info.FreeSpace, c.libero);
    EXPECT_EQ(info.VolumeName.size(), 64u);
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

TEST_F(DischiTest, SoloIDischiFissiDaCaZ) {
  // Removable, CD and network drives are asked and left out; D: stays although it is not ready.
  EXPECT_EQ(support::ElencoDischiFissi(), (std::vector<std::string>{"C:", "D:", "H:", "Z:"}));
}

TEST_F(DischiTest, SpazioLiberoDelVolumeIntero) {
  // The whole volume's free bytes, not the caller's share, and above 4 GiB to the byte.
  Figura('C', 6 * kGiB + 1, 2 * kGiB);
  Figura('D', 3 * kGiB);
  for (const char* d : {"c:", "C", "C:\\", "c:\\Dati"})
    EXPECT_EQ(support::SpazioLibero(d), 6.0 * kGiB + 1) << d;
  // A drive that is not ready is still measured by the volume call.
  EXPECT_EQ(support::SpazioLibero("D:"), 3.0 * kGiB);
  // Both sources fail.
  EXPECT_EQ(support::SpazioLibero("H:"), 0);
  EXPECT_EQ(support::SpazioLibero("Q:"), 0);
  EXPECT_EQ(support::SpazioLiberoDaDriveInfo("Q:"), 0);
}

TEST_F(DischiTest, DiscoConPiuSpazio) {
  struct Caso {
    const char* nome;
    std::map<char, std::uint64_t> liberi;
    std::string disco;
    double spazio;
  };
  const Caso casi[] = {
      {"pari merito: la lettera prima", {{'C', 5 * kGiB}, {'D', 5 * kGiB}, {'Z', 1}}, "C:", 5.0 * kGiB},
      {"un drive non pronto ma misurato", {{'C', 1}, {'D', 9 * kGiB}}, "D:", 9.0 * kGiB},
      {"il più grande dopo", {{'C', 2}, {'D', 1}, {'H', 3}, {'Z', 3}}, "H:", 3},
      {"un drive rimovibile non conta", {{'C', 2}, {'E', 50 * kGiB}, {'G', 50 * kGiB}}, "C:", 2},
      {"tutti pieni", {{'C', 0}}, "C:", 0},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.nome);
    Figure().clear();
    for (const auto& [l, b] : c.liberi) Figura(l, b);
    double spazio = -1;
    EXPECT_EQ(support::DiscoConPiuSpazio(spazio), c.disco);
    EXPECT_EQ(spazio, c.spazio);
  }
}

TEST_F(DischiTest, NessunDiscoFisso) {
  // Every drive a CD: the list is empty and the out value keeps what it had.
  MacchinaProva::ScriviHost(m_.Prefisso() + "/system.reg",
                            "WINE REGISTRY Version 2\n[Software\\\\Wine\\\\Drives] 1\n"
                            "\"c:\"=\"cdrom\"\n\"d:\"=\"cdrom\"\n\"e:\"=\"floppy\"\n\"f:\"=\"cdrom\"\n"
                            "\"g:\"=\"network\"\n\"h:\"=\"cdrom\"\n\"z:\"=\"cdrom\"\n");
  host::UsaPrefisso(m_.Prefisso());
  EXPECT_TRUE(support::ElencoDischiFissi().empty());
  double spazio = 42;
  EXPECT_EQ(support::DiscoConPiuSpazio(spazio), "");
  EXPECT_EQ(spazio, 42);
}

TEST(DischiVeri, IlFileSystemDelPrefisso) {
  MacchinaProva m;
  support::DriveInfo c;
  ASSERT_TRUE(support::GetDriveInfo("C:", c));
  EXPECT_TRUE(c.IsReady);
  EXPECT_GT(c.TotalSize, 0);
  EXPECT_GE(c.TotalSize, c.FreeSpace);
  EXPECT_GT(support::SpazioLibero("C:"), 0);
  EXPECT_EQ(c.SerialNumber, 0x43000000);
}

}  // namespace
