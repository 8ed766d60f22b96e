#include "collection/campione.h"
#include "support/files.h"
#include "verbi.h"

namespace cli {
namespace {

// The folder dialog answered beforehand: OK with the folder named on the command line.
class DialogoRisposto : public support::DialogoCartella {
 public:
  explicit DialogoRisposto(std::string cartella) : cartella_(std::move(cartella)) {}
  void ImpostaTitolo(const std::string&) override {}
  void ImpostaValori(const std::string&) override {}
  void MostraModale() override {}
  bool ExitValue() const override { return true; }
  std::string PathDir() const override { return cartella_; }

 private:
  std::string cartella_;
};

}  // namespace

int VerboSample(const Argomenti& args, MessaggiConsole& msg) {
  if (args.size() != 1) return Uso("sample needs one folder");
  std::string cartella = ArgomentoPercorso(args[0]);
  // The dialog gives a folder without a closing "\", a root as "C:".
  if (cartella.size() > 2 && cartella.back() == '\\') cartella.pop_back();
  if (!support::DirExists(cartella)) return Uso("no such folder: " + args[0]);
  support::DidascaliaMuta ordl, trle, info;
  support::BarraMuta barra;
  support::CicloMuto eventi;
  DialogoRisposto dialogo(cartella);
  collection::Principale principale{ordl, trle, info, barra, msg, dialogo, eventi, [] {}, {}};
  collection::CreaElencoCampione(principale);
  return msg.CriticoMostrato() ? 1 : 0;
}

}  // namespace cli
