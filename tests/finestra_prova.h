// Scripted stand-ins for the window, shared by the core tests (GoogleTest) and the window tests (Qt Test):
// they record what the operations show and answer dialogs from a queue. A dialog shown with no answer
// queued, or an answer left over at the end, fails the test.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "analysis/dialog_analisi.h"
#include "collection/principale.h"
#include "support/interfacce.h"

// Qt's test library defines QT_TESTLIB_LIB for whoever links it.
#ifdef QT_TESTLIB_LIB
#include <QTest>
inline void FallisciProva(const std::string& perche) {
  QTest::qFail(perche.c_str(), __FILE__, __LINE__);
}
#else
#include <gtest/gtest.h>
inline void FallisciProva(const std::string& perche) {
  ADD_FAILURE() << perche;
}
#endif

// A dialog's queued answers: a folder or file name for OK, nullopt for Cancel.
class Copione {
 public:
  explicit Copione(const char* dialogo) : dialogo_(dialogo) {}
  ~Copione() {
    if (!risposte.empty())
      FallisciProva(std::to_string(risposte.size()) + " answers left for the " + dialogo_);
  }
  std::optional<std::string> Prendi() {
    if (risposte.empty()) FallisciProva(std::string("the ") + dialogo_ + " was shown with no answer queued");
    if (risposte.empty()) return std::nullopt;
    auto r = risposte.front();
    risposte.pop_front();
    return r;
  }
  std::deque<std::optional<std::string>> risposte;

 private:
  const char* dialogo_;
};

class DidascaliaProva : public support::Didascalia {
 public:
  void ImpostaTesto(const std::string& t) override { storia.push_back(testo = t); }
  std::string Testo() const override { return testo; }
  void Ridisegna() override { ++ridisegni; }
  std::string testo;
  std::vector<std::string> storia;
  int ridisegni = 0;
};

class BarraProva : public support::BarraProgresso {
 public:
  double Value() const override { return valore; }
  void SetValue(double v) override { storia.push_back(valore = v); }
  void Refresh() override { ++ridisegni; }
  double valore = 0;
  std::vector<double> storia;
  int ridisegni = 0;
};

class MessaggiProva : public support::Messaggi {
 public:
  void Semplice(const std::string& t) override { tutti.push_back("plain: " + t); }
  void Critico(const std::string& t) override { tutti.push_back("critical: " + t); }
  // The answers queued in `si` in order, then No; the questions apart, so that `tutti` stays what was told.
  bool Domanda(const std::string& t) override {
    domande.push_back(t);
    if (si.empty()) return false;
    const bool r = si.front();
    si.pop_front();
    return r;
  }
  std::vector<std::string> tutti, domande;
  std::deque<bool> si;
};

class CicloProva : public support::CicloEventi {
 public:
  void UnTurno() override { ++turni; }
  int turni = 0;
};

class DialogoCartellaProva : public support::DialogoCartella {
 public:
  void Rispondi(bool ok, const std::string& pathDir) {
    copione_.risposte.push_back(ok ? std::optional(pathDir) : std::nullopt);
  }
  void ImpostaTitolo(const std::string& t) override { titoli.push_back(t); }
  void ImpostaValori(const std::string& p) override {
    inizi.push_back(p);
    exit_ = false;
    pathDir_ = p;
  }
  void MostraModale() override {
    ++mostrato;
    const auto r = copione_.Prendi();
    exit_ = r.has_value();
    pathDir_ = r.value_or("");
  }
  bool ExitValue() const override { return exit_; }
  std::string PathDir() const override { return pathDir_; }

  std::vector<std::string> titoli, inizi;
  int mostrato = 0;

 private:
  Copione copione_{"folder dialog"};
  bool exit_ = false;
  std::string pathDir_;
};

// A whole main window of stand-ins.
struct FinestraProva {
  DidascaliaProva dirOrdl, nomeTrle, info;
  BarraProva barra;
  MessaggiProva messaggi;
  DialogoCartellaProva dialogo;
  CicloProva eventi;
  int chiusure = 0;
  collection::Principale principale{
      dirOrdl, nomeTrle, info, barra, messaggi, dialogo, eventi, [this] { ++chiusure; }, {}};
};

// The common file dialog.
class DialogoFileProva : public support::DialogoFile {
 public:
  void Scegli(const std::string& nome) { copione_.risposte.push_back(nome); }
  void Annulla() { copione_.risposte.push_back(std::nullopt); }

  void ImpostaTitolo(const std::string& t) override { titolo = t; }
  void ImpostaCartellaIniziale(const std::string& c) override { cartella = c; }
  void ImpostaFiltro(const std::string& f) override { filtro = f; }
  void ImpostaNomeFile(const std::string& n) override { nome_ = n; }
  bool MostraApri() override { return Mostra("open"); }
  bool MostraSalva() override { return Mostra("save"); }
  std::string NomeFile() const override { return nome_; }

  std::string titolo, cartella, filtro;
  // "open" or "save" for each showing.
  std::vector<std::string> mostrati;

 private:
  bool Mostra(const char* come) {
    mostrati.push_back(come);
    const auto r = copione_.Prendi();
    if (r) nome_ = *r;
    return r.has_value();
  }
  Copione copione_{"file dialog"};
  std::string nome_;
};

class AppuntiProva : public support::Appunti {
 public:
  void Svuota() override { testo.reset(); }
  void ImpostaTesto(const std::string& t) override { testo = t; }
  std::optional<std::string> testo = "prima";
};

// A whole analysis window of stand-ins; its program folder is C:\Prog unless given.
struct AnalisiProva {
  explicit AnalisiProva(const std::string& programma = "C:\\Prog")
      : d{area, cerca, barra, segni, messaggi, dialogo, appunti, programma} {}
  support::AreaTestoInMemoria area{analysis::kTestoIniziale};
  DidascaliaProva cerca;
  BarraProva barra;
  analysis::SegniInMemoria segni;
  MessaggiProva messaggi;
  DialogoFileProva dialogo;
  AppuntiProva appunti;
  analysis::Dialog_Analisi d;

  // The items whose mark is set.
  std::vector<analysis::Voce> Segnate() const {
    std::vector<analysis::Voce> v;
    for (int i = 0; i < analysis::kNumeroVoci; ++i)
      if (segni.Checked(static_cast<analysis::Voce>(i))) v.push_back(static_cast<analysis::Voce>(i));
    return v;
  }
};
