#include "support/versioni.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "host/machine.h"
#include "macchina_prova.h"

namespace {

// Text with '|' standing for NUL, and the same in 16-bit characters.
std::string N(std::string t) {
  std::replace(t.begin(), t.end(), '|', '\0');
  return t;
}
std::string W(const std::string& t) {
  return support::InserisciNulDopoCaratteri(N(t));
}

TEST(Versioni, CercaVersioneNelBlocco) {
  EXPECT_EQ(W("Fa\xe9"), N("F|a|\xe9|"));
  const std::pair<std::string, std::string> casi[] = {
      {N("\x34\x01VS_VERSION_INFO|FileVersion||||1.2.3|ProductName|x|"), "1.2.3"},
      // The key in any case; the text kept byte for byte.
      {N("xfileVERSION|\xe8 4,5|"), "\xe8 4,5"},
      {N("FileVersion|1.0"), ""},
      {W("VS_VERSION_INFO|FileVersion|") + N("||") + W("1, 0, 0, 5|x|"), "1, 0, 0, 5"},
      {W("FileVersion|") + std::string(37, '\0') + W("7|"), "7"},
      {W("FileVersion|1.0"), ""},
      // The NUL pair is searched byte by byte, so one across two characters ends the text too.
      {W("FileVersion|") + N("5||\x01"
                             "6|||"),
       "5"},
      {N("FileVersionX|1|") + W("FileVersionY|"), ""},
      // An 8-bit key wins over an earlier 16-bit one; of two, the first decides.
      {W("FileVersion|16|") + N("FileVersion|8|FileVersion|9|"), "8"},
      {"", ""},
  };
  for (const auto& [blocco, atteso] : casi)
    EXPECT_EQ(support::CercaVersioneNelBlocco(blocco), atteso) << blocco;
}

TEST(Versioni, CodiceVersioneWindows) {
  // platform, major, minor, code
  const std::uint32_t casi[][4] = {{0, 3, 10, 0}, {1, 4, 9, 1}, {1, 4, 10, 4}, {2, 4, 0, 6},
                                   {2, 5, 2, 5},  {2, 6, 1, 6}, {3, 10, 0, 0}};
  for (const auto& [piattaforma, major, minor, codice] : casi) {
    host::VersioneOs v;
    v.dwPlatformId = piattaforma;
    v.dwMajorVersion = major;
    v.dwMinorVersion = minor;
    EXPECT_EQ(support::CodiceVersioneWindows(v), static_cast<std::int32_t>(codice))
        << piattaforma << " " << major;
  }
  EXPECT_TRUE(support::IsWindowsNT());  // as Wine reports the system
}

TEST(Versioni, GetFileVersion) {
  MacchinaProva m;
  const std::string dati = std::string(CHECKORDL_DATI_PROVA) + "/versione/";
  const std::string wine = "/usr/lib/x86_64-linux-gnu/wine/";
  // The Debian files' texts were read independently, by walking each file's StringFileInfo table.
  const std::pair<std::string, std::string> casi[] = {
      // Our own: the lower-case key behind ProductVersion and before a second language, text with blanks
      // and commas, in a PE32+ and a PE32 file. (The headless tool's test reads the others.)
      {dati + "prova.exe", "1, 0, 0, 5"},
      {dati + "prova32.exe", "1, 0, 0, 5"},
      {wine + "x86_64-windows/winver.exe", "5.1.2600.0"},
      {wine + "x86_64-windows/msctf.dll", " 5.1.2600.3319"},
      {wine + "x86_64-windows/secedit.exe", ""},  // no version resource
      {wine + "i386-windows/zlib1.dll", "1.2.13"},
      {"/usr/share/win32/win32-loader.exe", "0.10.6 +kernels "},
  };
  int saltati = 0;
  for (const auto& [percorso, versione] : casi) {
    if (percorso.starts_with("/usr/") && !std::filesystem::exists(percorso)) {
      ++saltati;
      continue;
    }
    EXPECT_EQ(support::GetFileVersion(host::PercorsoWindows(percorso)), versione) << percorso;
  }
  if (saltati) GTEST_SKIP() << saltati << " files of wine64, libwine or win32-loader are not installed";
}

}  // namespace
