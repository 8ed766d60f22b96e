// The platform's rules for names, which both back ends must give alike: on Windows these are Wine's own
// answers, elsewhere the Wine prefix back end's.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/collegamenti.h"
#include "host/machine.h"
#include "macchina_prova.h"

namespace {

class RegolePercorsi : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* n :
         {"b.txt", "_x.txt", "A.txt", "a2.txt", "Zeta.txt", "\xc3\x89t\xc3\xa9.txt", ".nascosto"})
      MacchinaProva::ScriviHost(m_.C(std::string("T/") + n), "12345");
  }
  MacchinaProva m_;
};

TEST_F(RegolePercorsi, OrdineDellaCartella) {
  // Without regard to case, letters compared in upper case: "_" comes after "Z", "." before digits.
  const std::vector<std::string> atteso = {".nascosto", "A.txt",  "a2.txt",       "b.txt",
                                           "Zeta.txt",  "_x.txt", "\xc9t\xe9.txt"};
  std::vector<std::string> visti;
  int err = 0;
  for (std::string n = host::DirPrimo("C:\\T\\*", host::kAttrHidden, &err); !n.empty();
       n = host::DirProssimo(&err))
    visti.push_back(n);
  EXPECT_EQ(visti, atteso);
  std::vector<host::VoceCartella> voci;
  ASSERT_TRUE(host::LeggiCartella(host::ApriCartella("C:\\T"), host::kAttrHidden, voci));
  visti.clear();
  for (const auto& v : voci) visti.push_back(v.nome);
  EXPECT_EQ(visti, atteso);
  EXPECT_EQ(voci[0].attributi, host::kAttrArchive | host::kAttrHidden);
}

TEST_F(RegolePercorsi, AttributiELunghezze) {
  struct Caso {
    const char* percorso;
    int attributi, errAttributi;
    std::int64_t lunghezza;
    int errLunghezza;
  };
  const Caso casi[] = {
      // A last name loses its closing dots and blanks, a folder's name one closing dot; a blank stays.
      {"C:\\T\\b.txt.", 32, 0, 5, 0},
      {"C:\\T\\B.TXT . .", 32, 0, 5, 0},
      {"C:\\T.\\b.txt", 32, 0, 5, 0},
      {"C:\\T \\b.txt", -1, host::kErrPathNotFound, -1, host::kErrPathNotFound},
      {"C:\\T\\b.txt\\..\\a2.txt", 32, 0, 5, 0},
      // A file is no folder.
      {"C:\\T\\b.txt\\x", -1, host::kErrPathNotFound, -1, host::kErrPathNotFound},
      // Device names, with or without an extension, in any folder that exists.
      {"C:\\T\\nul.txt", 32, 0, -1, host::kErrPathFileAccess},
      {"C:\\T\\Con", 32, 0, -1, host::kErrPathFileAccess},
      {"C:\\T\\lpt1 .log", 32, 0, -1, host::kErrPathFileAccess},
      {"C:\\Manca\\nul", -1, host::kErrPathNotFound, -1, host::kErrPathNotFound},
      {"C:\\T\\com0", -1, host::kErrFileNotFound, -1, host::kErrFileNotFound},
      {"C:\\T\\nulla", -1, host::kErrFileNotFound, -1, host::kErrFileNotFound},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.percorso);
    int err = -1;
    EXPECT_EQ(host::LeggiAttributi(c.percorso, &err), c.attributi);
    EXPECT_EQ(err, c.errAttributi);
    EXPECT_EQ(host::LunghezzaFile(c.percorso, &err), c.lunghezza);
    EXPECT_EQ(err, c.errLunghezza);
  }
}

TEST_F(RegolePercorsi, ApertureEdElenchiDiUnNome) {
  struct Caso {
    const char* percorso;
    int err;
    std::int64_t lunghezza;  // of the file opened
  };
  const Caso casi[] = {
      {"C:\\T\\zeta.txt. ", 0, 5},
      {"C:\\T\\nul", 0, 0},  // NUL opens, and is empty
      {"C:\\T\\con.txt", host::kErrPathFileAccess, -1},
      {"C:\\T\\b.txt\\", host::kErrBadFileName, -1},
      {"C:\\T\\", host::kErrPathFileAccess, -1},
      {"C:\\Manca\\b.txt", host::kErrPathNotFound, -1},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.percorso);
    int err = -1;
    host::File f = host::File::ApriLettura(c.percorso, &err);
    EXPECT_EQ(err, c.err);
    EXPECT_EQ(f.Aperto() ? f.Lunghezza() : -1, c.lunghezza);
  }
  const std::pair<const char*, const char*> nomi[] = {
      {"C:\\T\\B.TXT.", "b.txt"}, {"C:\\T\\b.txt ", "b.txt"}, {"C:\\T\\nul.txt", "nul"},
      {"C:\\T\\CON", "CON"},      {"C:\\Manca\\nul", ""},
  };
  for (const auto& [modello, nome] : nomi) {
    int err = -1;
    EXPECT_EQ(host::DirPrimo(modello, 0, &err), nome) << modello;
    EXPECT_EQ(host::DirProssimo(&err), "") << modello;
  }
}

}  // namespace
