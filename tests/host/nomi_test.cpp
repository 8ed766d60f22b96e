#include "host/nomi.h"

#include <gtest/gtest.h>

namespace {

TEST(Nomi, ModelliComeIlSistema) {
  const std::tuple<const char*, const char*, bool> casi[] = {
      {"*.*", "README", true}, {"*.txt", "A.TXT", true}, {"*.txt", "a.txt.bak", false}, {"a?c", "abc", true},
      {"a?c", "ac", false},    {"a*c*e", "abcde", true}, {"a*c*e", "abcd", false},      {"*.", "noext", true},
      {"*.", "a.b", false},    {"\xe0*", "\xc0X", true},  // a grave, folded in Windows-1252
  };
  for (const auto& [modello, nome, atteso] : casi)
    EXPECT_EQ(host::CorrispondeModello(modello, nome), atteso) << modello << " ~ " << nome;
}

TEST(Nomi, DispositiviEMaiuscole) {
  for (const char* n : {"con", "Nul.txt", "aux.tar.gz", "COM1", "lpt9.log", "PRN ", "com\xb9"})
    EXPECT_TRUE(host::NomeDispositivo(n)) << n;
  for (const char* n : {"CONSOLE", "COM0", "COM10", "xcon", "LPT", "a.con"})
    EXPECT_FALSE(host::NomeDispositivo(n)) << n;
  EXPECT_TRUE(host::UgualiSenzaCaso("c:\\giochi\\\x9a\xff", "C:\\GIOCHI\\\x8a\x9f"));
  EXPECT_FALSE(host::UgualiSenzaCaso("\xf7", "\xd7"));  // division sign and multiplication sign differ
}

}  // namespace
