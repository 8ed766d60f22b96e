#include "analysis/testo_completo.h"

#include <algorithm>
#include <utility>

#include "analysis/forma_analisi.h"
#include "analysis/riepilogo.h"
#include "analysis/voci.h"
#include "support/files.h"

namespace analysis {
namespace {

// What the items would have shown in boxes, in the order they came, as the headless tool writes them.
class MessaggiRaccolti : public support::Messaggi {
 public:
  void Semplice(const std::string& testo) override { righe_ += "plain: " + testo + "\r\n"; }
  void Critico(const std::string& testo) override { righe_ += "critical: " + testo + "\r\n"; }
  std::string Prendi() { return std::exchange(righe_, {}); }

 private:
  std::string righe_;
};

const char* DidascaliaComando(Comando c) {
  for (const VoceBarra& v : kVociBarra)
    if (v.comando == c) return v.testo;
  return "";
}

void Sezione(std::string& testo, const std::string& didascalia, const std::string& corpo) {
  testo += "\r\n";
  testo += kInizioSezione + didascalia + "\r\n";
  testo += corpo;
  if (!corpo.empty() && corpo.back() != '\n') testo += "\r\n";
}

}  // namespace

std::string TestoCompleto(const Dialog_Analisi& d) {
  support::AreaTestoInMemoria area;
  SegniInMemoria segni;
  MessaggiRaccolti messaggi;
  support::DialogoFileMuto dialogo;
  support::AppuntiMuti appunti;
  Dialog_Analisi m{area, d.Text_Cerca, d.ProgressBar1, segni, messaggi, dialogo, appunti};
  // What ImpostaValori left in the window, which the items read; the lock stays the window's.
  m.CartellaProgramma = d.CartellaProgramma;
  m.InfoHeader = d.InfoHeader;
  m.SnapshotAperto = d.SnapshotAperto;
  m.ErroreSnapshot = d.ErroreSnapshot;
  m.NomeSnapshot = d.NomeSnapshot;
  m.Contenuto = d.Contenuto;
  m.CartellaDati = d.CartellaDati;
  m.FlagBit = d.FlagBit;
  m.FlagTesti = d.FlagTesti;
  m.NumeroFlag = d.NumeroFlag;

  std::string testo = "Snapshot: " + d.NomeSnapshot + "\r\n";
  std::string membri;
  const std::size_t n = std::min(d.Contenuto.Nomi.size(), d.Contenuto.Dimensioni.size());
  for (std::size_t i = 0; i < n; ++i)
    membri += d.Contenuto.Nomi[i] + '\t' + std::to_string(d.Contenuto.Dimensioni[i]) + "\r\n";
  Sezione(testo, kSezioneMembri, membri);
  for (const VoceMenu& v : kVoci) {
    area.ImpostaTesto("");
    v.esegui(m);
    Sezione(testo, v.didascalia, messaggi.Prendi() + area.Testo());
  }
  Sezione(testo, DidascaliaComando(Comando::RiepilogoProblemi), TestoRiepilogo(RiepilogoAperto(m), 0));
  return testo;
}

std::string NomeTestoCompleto(const std::string& snapshot) {
  const std::string nome = support::EstraiNomeFile(snapshot);
  const std::size_t punto = nome.rfind('.');
  return (punto == std::string::npos || punto == 0 ? nome : nome.substr(0, punto)) + ".txt";
}

}  // namespace analysis
