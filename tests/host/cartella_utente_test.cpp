// Where the program folder goes when the executable's folder cannot be written: the user's data folder as
// each platform names it, made level by level when first needed, or refused with the system's reason.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "host/macchina.h"
#include "macchina_prova.h"

namespace {

namespace fs = std::filesystem;

// An environment variable set, or unset, for one scope.
class Variabile {
 public:
  Variabile(const char* nome, const std::optional<std::string>& valore) : nome_(nome) {
    if (const char* v = std::getenv(nome)) prima_ = v;
    Imposta(valore);
  }
  ~Variabile() { Imposta(prima_); }

 private:
  void Imposta(const std::optional<std::string>& v) {
#ifdef _WIN32
    _putenv_s(nome_, v ? v->c_str() : "");
#else
    if (v)
      ::setenv(nome_, v->c_str(), 1);
    else
      ::unsetenv(nome_);
#endif
  }
  const char* nome_;
  std::optional<std::string> prima_;
};

TEST(CartellaUtente, ComeLaPiattaformaLaNomina) {
  MacchinaProva m;
#ifdef _WIN32
  const Variabile locale("LOCALAPPDATA", "C:\\Utenti\\u\\AppData\\Local\\");
  EXPECT_EQ(host::CartellaUtente(), "C:\\Utenti\\u\\AppData\\Local\\CheckORDL");
#else
  const std::string c = m.C("");
  const std::string w = "C:\\";
  struct Caso {
    std::optional<std::string> xdg;
    std::string atteso;
  };
  const Caso casi[] = {
      {c + "dati/", w + "dati\\checkordl"},
      // Only an absolute XDG_DATA_HOME counts, as the XDG rules say.
      {"relativo", w + "casa\\.local\\share\\checkordl"},
      {std::nullopt, w + "casa\\.local\\share\\checkordl"},
  };
  const Variabile casa("HOME", c + "casa");
  for (const auto& caso : casi) {
    const Variabile xdg("XDG_DATA_HOME", caso.xdg);
    EXPECT_EQ(host::CartellaUtente(), caso.atteso) << caso.xdg.value_or("(unset)");
  }
#endif
}

TEST(CartellaUtente, FattaQuandoServe) {
  MacchinaProva m;
  std::string motivo;
  ASSERT_TRUE(host::PreparaCartella("C:\\Utenti\\u\\Dati App\\CheckORDL", &motivo)) << motivo;
  EXPECT_TRUE(fs::is_directory(m.C("Utenti/u/Dati App/CheckORDL")));
  EXPECT_TRUE(host::PreparaCartella("C:\\Utenti\\u\\Dati App\\CheckORDL", &motivo)) << "made already";
  // A file where a folder should be: nothing is made and the system says why.
  MacchinaProva::ScriviHost(m.C("Utenti/file"), "x");
  EXPECT_FALSE(host::PreparaCartella("C:\\Utenti\\file\\CheckORDL", &motivo));
  EXPECT_FALSE(motivo.empty());
  EXPECT_FALSE(fs::exists(m.C("Utenti/file/CheckORDL")));
}

}  // namespace
