#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "host/dischi.h"
#include "host/machine.h"
#include "host/versione.h"
#include "macchina_prova.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> Elenca(const std::string& modello, int mask) {
  std::vector<std::string> nomi;
  int err = 0;
  for (std::string n = host::DirPrimo(modello, mask, &err); !n.empty(); n = host::DirProssimo(&err))
    nomi.push_back(n);
  std::sort(nomi.begin(), nomi.end());
  return nomi;
}

TEST(PrefissoWine, PercorsiSenzaRiguardoAlleMaiuscole) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Giochi/Trle/Tomb4.exe"), "x");
  int err = -1;
  EXPECT_EQ(host::PercorsoHost("c:\\GIOCHI\\trle\\TOMB4.EXE", &err), m.C("Giochi/Trle/Tomb4.exe"));
  EXPECT_EQ(err, 0);
  // Forward slashes, dots and a missing tail keep working; new names take the form given.
  EXPECT_EQ(host::PercorsoHost("C:/giochi/./x/../TRLE/Nuovo.txt", &err), m.C("Giochi/Trle/Nuovo.txt"));
  EXPECT_EQ(host::PercorsoHost("C:\\..\\..\\giochi", &err), m.C("Giochi"));
  EXPECT_EQ(host::PercorsoHost("Z:\\tmp", &err), "/tmp");

  // A link whose target is missing, or no link at all: not ready.
  for (const char* p : {"D:\\x", "Q:\\x"}) {
    EXPECT_EQ(host::PercorsoHost(p, &err), "");
    EXPECT_EQ(err, host::kErrDeviceUnavailable);
  }

  // Relative to the current folder, its drive's root, or the current folder of a drive.
  const fs::path prima = fs::current_path();
  fs::current_path(m.C("Giochi/Trle"));
  EXPECT_EQ(host::CartellaCorrente(), "C:\\Giochi\\Trle");
  EXPECT_EQ(host::PercorsoHost("TOMB4.EXE", &err), m.C("Giochi/Trle/Tomb4.exe"));
  EXPECT_EQ(host::PercorsoHost("\\Giochi", &err), m.C("Giochi"));
  EXPECT_EQ(host::PercorsoHost("c:tomb4.exe", &err), m.C("Giochi/Trle/Tomb4.exe"));
  fs::current_path(prima);
}

TEST(PrefissoWine, PercorsoWindowsDalPercorsoHost) {
  MacchinaProva m;
  fs::create_directories(m.C("Supporto/sotto"));
  EXPECT_EQ(host::PercorsoWindows(m.C("Supporto/sotto/../nuovo.bin")), "C:\\Supporto\\nuovo.bin");
  EXPECT_EQ(host::PercorsoWindows(m.C("")), "C:\\");
  EXPECT_EQ(host::PercorsoWindows("/usr/bin"), "Z:\\usr\\bin");
  // A drive for a folder inside C: wins by the longer match.
  fs::create_directory_symlink("../drive_c/Supporto", m.Prefisso() + "/dosdevices/s:");
  host::UsaPrefisso(m.Prefisso());
  EXPECT_EQ(host::PercorsoWindows(m.C("Supporto/sotto")), "S:\\sotto");
}

TEST(PrefissoWine, NomiHostInWindows1252) {
  EXPECT_EQ(host::DaUtf8("caf\xc3\xa9 \xe2\x82\xac \xe4\xb8\xad"), "caf\xe9 \x80 ?");
  EXPECT_EQ(host::DaUtf8("a\xff"
                         "b"),
            "a?b");
  EXPECT_EQ(host::VersoUtf8("caf\xe9 \x80\x9f"), "caf\xc3\xa9 \xe2\x82\xac\xc5\xb8");
  std::string tutti;
  for (int b = 1; b < 256; ++b) tutti += static_cast<char>(b);
  EXPECT_EQ(host::DaUtf8(host::VersoUtf8(tutti)), tutti);
}

TEST(PrefissoWine, AttributiComeLiDaWine) {
  MacchinaProva m;
  for (const char* f : {"a/file.txt", "a/sola.txt", "a/.nascosto", "a/sistema.sys", "a/.zero", "a/punto."})
    MacchinaProva::ScriviHost(m.C(f), "x");
  ::chmod(m.C("a/sola.txt").c_str(), 0444);
  const bool xattr = ::setxattr(m.C("a/sistema.sys").c_str(), "user.DOSATTRIB", "0x6", 3, 0) == 0 &&
                     ::setxattr(m.C("a/.zero").c_str(), "user.DOSATTRIB", "0x0", 3, 0) == 0;
  using Caso = std::tuple<const char*, int, int>;  // path, attributes, error
  const Caso casi[] = {{"C:\\A\\", 16, 0},
                       {"C:\\a\\FILE.txt", 32, 0},
                       {"C:\\a\\sola.txt", 33, 0},
                       {"C:\\a\\.nascosto", 34, 0},
                       {"C:\\a\\sistema.sys", xattr ? 38 : 32, 0},
                       // Stored attributes do not make a dot file visible.
                       {"C:\\a\\.zero", 34, 0},
                       // A host name with a closing dot is listed but cannot be reached by any path.
                       {"C:\\a\\punto.", -1, host::kErrFileNotFound},
                       {"C:\\a\\*.txt", -1, host::kErrBadFileName}};
  for (const auto& [percorso, atteso, errore] : casi) {
    int err = -1;
    EXPECT_EQ(host::LeggiAttributi(percorso, &err), atteso) << percorso;
    EXPECT_EQ(err, errore) << percorso;
  }
  int err = 0;
  // user.reg can make dot files visible.
  MacchinaProva::ScriviHost(m.Prefisso() + "/user.reg",
                            "WINE REGISTRY Version 2\n[Software\\\\Wine]\n\"ShowDotFiles\"=\"Y\"\n");
  host::UsaPrefisso(m.Prefisso());
  EXPECT_EQ(host::LeggiAttributi("C:\\a\\.nascosto", &err), 32);

  // Setting attributes round-trips through mode bits and the extended attribute.
  ASSERT_TRUE(host::ImpostaAttributi("C:\\a\\file.txt", 1, &err));
  EXPECT_EQ(host::LeggiAttributi("C:\\a\\file.txt", &err), 33);
  ASSERT_TRUE(host::ImpostaAttributi("C:\\a\\file.txt", 32, &err));
  EXPECT_EQ(host::LeggiAttributi("C:\\a\\file.txt", &err), 32);
  if (xattr) {
    ASSERT_TRUE(host::ImpostaAttributi("C:\\a\\file.txt", 2, &err));
    EXPECT_EQ(host::LeggiAttributi("C:\\a\\file.txt", &err), 34);
  }
}

TEST(PrefissoWine, EnumerazioneConMaschere) {
  MacchinaProva m;
  for (const char* f : {"d/uno.txt", "d/Due.TXT", "d/tre.dat", "d/.nascosto"})
    MacchinaProva::ScriviHost(m.C(f), "x");
  fs::create_directories(m.C("d/sotto"));
  using V = std::vector<std::string>;
  EXPECT_EQ(Elenca("C:\\d\\", 7), (V{".nascosto", "Due.TXT", "tre.dat", "uno.txt"}));
  EXPECT_EQ(Elenca("C:\\d\\", 0), (V{"Due.TXT", "tre.dat", "uno.txt"}));
  EXPECT_EQ(Elenca("C:\\D\\", 16), (V{".", "..", "Due.TXT", "sotto", "tre.dat", "uno.txt"}));
  EXPECT_EQ(Elenca("C:\\d\\*.txt", 7), (V{"Due.TXT", "uno.txt"}));
  // A link whose target is gone is no entry; a link to a file is the file.
  fs::create_symlink("manca.txt", m.C("d/rotto.txt"));
  fs::create_symlink("uno.txt", m.C("d/collegato.txt"));
  EXPECT_EQ(Elenca("C:\\d\\*.txt", 7), (V{"Due.TXT", "collegato.txt", "uno.txt"}));
  // No "." and ".." at a drive root.
  EXPECT_EQ(Elenca("C:\\", 16), (V{"d"}));

  // One cursor for the process: a new enumeration ends the old one.
  int err = 0;
  EXPECT_FALSE(host::DirPrimo("C:\\d\\*.txt", 7, &err).empty());
  EXPECT_EQ(host::DirPrimo("C:\\d\\*.dat", 7, &err), "tre.dat");
  EXPECT_EQ(host::DirProssimo(&err), "");
  host::DirPrimo("D:\\*", 7, &err);
  EXPECT_EQ(err, host::kErrDeviceUnavailable);
}

TEST(PrefissoWine, SpazioLiberoComeLoDaWine) {
  MacchinaProva m;
  host::MisureVolume v;
  ASSERT_TRUE(host::MisuraPiattaforma("C:\\", &v));
  // The blocks kept for root are not free to anyone.
  EXPECT_EQ(v.liberi, v.disponibili);
  EXPECT_GE(v.totali, v.disponibili);
}

TEST(PrefissoWine, FileComeSulSistema) {
  MacchinaProva m;
  int err = 0;
  {
    host::File f = host::File::ApriScrittura("C:\\nuovo.bin", &err);
    ASSERT_TRUE(f.Aperto());
    EXPECT_TRUE(f.Scrivi("abc\0d", 5));
  }
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("nuovo.bin")), std::string("abc\0d", 5));
  EXPECT_EQ(host::LunghezzaFile("c:\\NUOVO.BIN", &err), 5);

  // Replacing a read-only or hidden file is refused, and so is deleting a read-only one.
  ASSERT_TRUE(host::ImpostaAttributi("C:\\nuovo.bin", 33, &err));
  EXPECT_FALSE(host::File::ApriScrittura("C:\\nuovo.bin", &err).Aperto());
  EXPECT_EQ(err, host::kErrPathFileAccess);
  EXPECT_FALSE(host::EliminaFile("C:\\nuovo.bin", &err));
  MacchinaProva::ScriviHost(m.C(".dot"), "x");
  EXPECT_FALSE(host::File::ApriScrittura("C:\\.dot", &err).Aperto());

  EXPECT_FALSE(host::File::ApriScrittura("C:\\manca\\x.bin", &err).Aperto());
  EXPECT_EQ(err, host::kErrPathNotFound);
  EXPECT_FALSE(host::CreaUnaCartella("C:\\x\\y", &err));
  EXPECT_EQ(err, host::kErrPathNotFound);
}

}  // namespace

namespace {

TEST(PrefissoWine, VersioneDelSistemaComeLaDecideWine) {
  struct Caso {
    const char* versione;  // the prefix's setting in user.reg
    const char* registro;  // values of the running system in system.reg
    std::uint32_t major, minor, build;
    const char* csd;
  };
  const Caso casi[] = {
      {"", "", 6, 1, 7601, "Service Pack 1"},  // nothing said: Wine's own default
      {"",
       "\"CurrentVersion\"=\"5.2\"\n\"CurrentBuild\"=\"9\"\n\"CurrentBuildNumber\"=\"3790\"\n"
       "\"CSDVersion\"=\"Service Pack 2\"\n",
       5, 2, 3790, "Service Pack 2"},
      {"WinXP", "\"CurrentVersion\"=\"5.2\"\n", 5, 1, 2600, "Service Pack 3"},
      // Newer than Windows 8, to a program without a manifest that says it knows them.
      {"win10", "", 6, 2, 9200, ""},
      {"", "\"CurrentVersion\"=\"10.0\"\n\"CurrentBuildNumber\"=\"19045\"\n", 6, 2, 9200, ""},
      {"nessuno", "\"CurrentVersion\"=\"x\"\n", 6, 1, 7601, "Service Pack 1"},  // neither usable
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(std::string(c.versione) + " | " + c.registro);
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.Prefisso() + "/user.reg",
                              std::string("WINE REGISTRY Version 2\n[Software\\\\Wine]\n") +
                                  "\"Version\"=\"" + c.versione + "\"\n");
    m.Registro(
        std::string("WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows NT\\\\CurrentVersion]\n") +
        c.registro);
    host::VersioneOs v;
    ASSERT_TRUE(host::LeggiVersioneOs(&v));
    EXPECT_EQ(v.dwMajorVersion, c.major);
    EXPECT_EQ(v.dwMinorVersion, c.minor);
    EXPECT_EQ(v.dwBuildNumber, c.build);
    EXPECT_EQ(v.dwPlatformId, 2u);
    EXPECT_EQ(v.szCSDVersion, c.csd);
  }
}

}  // namespace
