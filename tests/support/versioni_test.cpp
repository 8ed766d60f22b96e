#include "support/versioni.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "host/machine.h"
#include "macchina_prova.h"

namespace {

using namespace std::string_literals;

std::string W(const std::string& testo) {
  return support::InserisciNulDopoCaratteri(testo);
}

TEST(Versioni, CercaVersioneNelBlocco) {
  EXPECT_EQ(W("Fa\xe9"), "F\0a\0\xe9\0"s);
  struct Caso {
    const char* nome;
    std::string blocco, atteso;
  };
  const Caso casi[] = {
      {"8-bit",
       "\x34\x01VS_VERSION_INFO\0FileVersion\0\0\0\0"
       "1.2.3\0ProductName\0x\0"s,
       "1.2.3"},
      {"8-bit key in lower case",
       "fileversion\0"
       "2.0\0"s,
       "2.0"},
      {"8-bit key in capitals, text kept byte for byte", "xFILEVERSION\0\xe8 4,5\0"s, "\xe8 4,5"},
      {"8-bit without a NUL behind the text",
       "FileVersion\0"
       "1.0"s,
       ""},
      {"8-bit key at the very end", "abcFileVersion\0"s, ""},
      {"8-bit key followed by NULs only", "FileVersion\0\0\0\0"s, ""},
      {"16-bit", W("VS_VERSION_INFO\0FileVersion\0"s) + "\0\0"s + W("1, 0, 0, 5\0"s) + W("x\0"s),
       "1, 0, 0, 5"},
      {"16-bit key in lower case", W("fileversion\0"s) + W("6.1\0"s), "6.1"},
      {"16-bit with an odd NUL gap", W("FileVersion\0"s) + std::string(37, '\0') + W("7\0"s), "7"},
      {"16-bit key at the very end",
       W("ProductVersion\0"
         "1\0"
         "FileVersion\0"s),
       ""},
      {"16-bit text without an end", W("FileVersion\0"s) + W("1.0"), ""},
      // The NUL pair is searched byte by byte, so one across two characters ends the text too.
      {"16-bit end at an odd position",
       W("FileVersion\0"s) + "5\0\0\x01"
                             "6\0\0\0"s,
       "5"},
      {"the key needs its NUL",
       "FileVersionX\0"
       "1\0"s +
           W("FileVersionY\0"s),
       ""},
      {"ProductVersion is not a match",
       "ProductVersion\0"
       "1\0"s +
           W("ProductVersion\0"
             "2\0"s),
       ""},
      {"an 8-bit key wins over an earlier 16-bit one",
       W("FileVersion\0"
         "16\0"s) +
           "FileVersion\0"
           "8\0"s,
       "8"},
      {"the first match decides",
       "FileVersion\0"
       "a\0"
       "FileVersion\0"
       "b\0"s,
       "a"},
      {"empty block", "", ""},
  };
  for (const auto& c : casi) EXPECT_EQ(support::CercaVersioneNelBlocco(c.blocco), c.atteso) << c.nome;
}

TEST(Versioni, CodiceVersioneWindows) {
  // platform, major, minor, code
  const std::uint32_t casi[][4] = {{0, 3, 10, 0}, {1, 4, 0, 1},  {1, 4, 9, 1}, {1, 4, 10, 4},
                                   {1, 4, 90, 4}, {2, 4, 0, 6},  {2, 5, 0, 5}, {2, 5, 2, 5},
                                   {2, 6, 1, 6},  {2, 10, 0, 6}, {3, 10, 0, 0}};
  for (const auto& c : casi) {
    host::VersioneOs v;
    v.dwPlatformId = c[0];
    v.dwMajorVersion = c[1];
    v.dwMinorVersion = c[2];
    EXPECT_EQ(support::CodiceVersioneWindows(v), static_cast<std::int32_t>(c[3]))
        << c[0] << " " << c[1] << "." << c[2];
  }
  // Wine reports an NT system.
  EXPECT_EQ(support::GetWindowsVersion(), 6);
  EXPECT_TRUE(support::IsWindowsNT());
}

TEST(Versioni, GetFileVersion) {
  MacchinaProva m;
  const std::string dati = std::string(CHECKORDL_DATI_PROVA) + "/versione/";
  const std::string wine = "/usr/lib/x86_64-linux-gnu/wine/";
  // The Debian files' texts were read independently, by walking each file's StringFileInfo table.
  const std::pair<std::string, std::string> casi[] = {
      // Our own: the lower-case key behind ProductVersion, text with blanks and commas; a valueless key at
      // the end of the block.
      {dati + "prova.exe", "1, 0, 0, 5"},
      {dati + "prova32.exe", "1, 0, 0, 5"},
      {dati + "in_fondo.exe", ""},
      {m.C("manca.exe"), ""},
      {wine + "x86_64-windows/winver.exe", "5.1.2600.0"},
      {wine + "x86_64-windows/robocopy.exe", "5.1.10.1027"},
      {wine + "x86_64-windows/setx.exe", "10.0.19041.1"},
      {wine + "x86_64-windows/vulkan-1.dll", "8.0"},
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
