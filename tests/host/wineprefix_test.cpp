#include <gtest/gtest.h>

#include <string>

#include "host/dischi.h"
#include "host/machine.h"
#include "host/versione.h"
#include "macchina_prova.h"

namespace {

TEST(PrefissoWine, NomiHostInWindows1252) {
  const std::pair<std::string, std::string> casi[] = {
      {"caf\xc3\xa9 \xe2\x82\xac \xe4\xb8\xad", "caf\xe9 \x80 ?"},
      // A stray or cut byte is one unknown character each; an overlong form is no character at all (so
      // never a separator); a character past the code page's 16-bit range is one.
      {"a\xff"
       "b",
       "a?b"},
      {"\xe2\x82", "??"},
      {"\xc0\xaf\xe0\x80\xaf", "?????"},
      {"\xf0\x9f\x98\x80", "?"},
  };
  for (const auto& [utf8, cp1252] : casi) EXPECT_EQ(host::DaUtf8(utf8), cp1252);
  EXPECT_EQ(host::VersoUtf8("caf\xe9 \x80\x9f"), "caf\xc3\xa9 \xe2\x82\xac\xc5\xb8");
  std::string tutti;
  for (int b = 1; b < 256; ++b) tutti += static_cast<char>(b);
  EXPECT_EQ(host::DaUtf8(host::VersoUtf8(tutti)), tutti);
}

TEST(PrefissoWine, SpazioLiberoComeLoDaWine) {
  MacchinaProva m;
  host::MisureVolume v;
  ASSERT_TRUE(host::MisuraPiattaforma("C:\\", &v));
  // The blocks kept for root are not free to anyone.
  EXPECT_EQ(v.liberi, v.disponibili);
  EXPECT_GE(v.totali, v.disponibili);
}

TEST(PrefissoWine, VersioneDelSistemaComeLaDecideWine) {
  struct Caso {
    const char* versione;  // the prefix's setting in user.reg
    const char* registro;  // values of the running system in system.reg
    host::VersioneOs atteso;
  };
  const Caso casi[] = {
      {"", "", {6, 1, 7601, 2, "Service Pack 1"}},  // nothing said: Wine's own default
      {"",
       "\"CurrentVersion\"=\"5.2\"\n\"CurrentBuild\"=\"9\"\n\"CurrentBuildNumber\"=\"3790\"\n"
       "\"CSDVersion\"=\"Service Pack 2\"\n",
       {5, 2, 3790, 2, "Service Pack 2"}},
      {"WinXP", "\"CurrentVersion\"=\"5.2\"\n", {5, 1, 2600, 2, "Service Pack 3"}},
      // Newer than Windows 8, to a program without a manifest that says it knows them.
      {"win10", "", {6, 2, 9200, 2, ""}},
      {"", "\"CurrentVersion\"=\"10.0\"\n\"CurrentBuildNumber\"=\"19045\"\n", {6, 2, 9200, 2, ""}},
      {"nessuno", "\"CurrentVersion\"=\"x\"\n", {6, 1, 7601, 2, "Service Pack 1"}},  // neither usable
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
    const auto campi = [](const host::VersioneOs& x) {
      return std::tuple(x.dwMajorVersion, x.dwMinorVersion, x.dwBuildNumber, x.dwPlatformId, x.szCSDVersion);
    };
    EXPECT_EQ(campi(v), campi(c.atteso));
  }
}

}  // namespace
