#include "host/nomi.h"

#include <gtest/gtest.h>

namespace {

TEST(Nomi, ModelliComeIlSistema) {
  struct Caso {
    const char* modello;
    const char* nome;
    bool atteso;
  };
  const Caso casi[] = {
      {"*", "a.txt", true},     {"*.*", "README", true},       {"*.*", "a.b.c", true},
      {"*.txt", "A.TXT", true}, {"*.txt", "a.txt.bak", false}, {"a?c", "abc", true},
      {"a?c", "ac", false},     {"a*c*e", "abcde", true},      {"a*c*e", "abcd", false},
      {"*.", "noext", true},    {"*.", "a.b", false},          {"tomb4.exe", "TOMB4.EXE", true},
      {"\xe0*", "\xc0X", true},  // a grave, folded in Windows-1252
      {"**a", "bba", true},
  };
  for (const auto& c : casi)
    EXPECT_EQ(host::CorrispondeModello(c.modello, c.nome), c.atteso) << c.modello << " ~ " << c.nome;
}

TEST(Nomi, Dispositivi) {
  for (const char* n : {"CON", "con", "Nul.txt", "aux.tar.gz", "COM1", "lpt9.log", "PRN ", "com\xb9"})
    EXPECT_TRUE(host::NomeDispositivo(n)) << n;
  for (const char* n : {"CONSOLE", "COM0", "COM10", "xcon", "LPT", "nul_", "a.con"})
    EXPECT_FALSE(host::NomeDispositivo(n)) << n;
}

TEST(Nomi, MaiuscoleCp1252) {
  EXPECT_TRUE(host::UgualiSenzaCaso("c:\\giochi\\\x9a\xff", "C:\\GIOCHI\\\x8a\x9f"));
  EXPECT_FALSE(host::UgualiSenzaCaso("\xf7", "\xd7"));  // division sign and multiplication sign differ
}

}  // namespace
