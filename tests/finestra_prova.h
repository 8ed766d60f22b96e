// Scripted stand-ins for the window: they record what the operations show and answer dialogs from a queue.
// A dialog shown with no answer queued, or an answer left over at the end, fails the test.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "analysis/dialog_analisi.h"
#include "collection/principale.h"
#include "support/interfacce.h"

class DidascaliaProva : public support::Didascalia {
 public:
  void ImpostaTesto(const std::string& t) override {
    testo = t;
    storia.push_back(t);
  }
  std::string Testo() const override { return testo; }
  void Ridisegna() override { ++ridisegni; }
  std::string testo;
  std::vector<std::string> storia;
  int ridisegni = 0;
};

class BarraProva : public support::BarraProgresso {
 public:
  double Value() const override { return valore; }
  void SetValue(double v) override {
    valore = v;
    storia.push_back(v);
  }
  void Refresh() override { ++ridisegni; }
  double valore = 0;
  std::vector<double> storia;
  int ridisegni = 0;
};

class MessaggiProva : public support::Messaggi {
 public:
  void Semplice(const std::string& t) override { tutti.push_back("plain: " + t); }
  void Critico(const std::string& t) override { tutti.push_back("critical: " + t); }
  std::vector<std::string> tutti;
};

class CicloProva : public support::CicloEventi {
 public:
  void UnTurno() override { ++turni; }
  int turni = 0;
};

class DialogoCartellaProva : public support::DialogoCartella {
 public:
  struct Risposta {
    bool ok;
    std::string pathDir;
  };
  ~DialogoCartellaProva() override {
    EXPECT_TRUE(risposte.empty()) << risposte.size() << " dialog answers left over";
  }
  void Rispondi(bool ok, const std::string& pathDir) { risposte.push_back({ok, pathDir}); }

  void ImpostaTitolo(const std::string& t) override { titoli.push_back(t); }
  void ImpostaValori(const std::string& p) override {
    inizi.push_back(p);
    exit_ = false;
    pathDir_ = p;
  }
  void MostraModale() override {
    ++mostrato;
    if (risposte.empty()) {
      ADD_FAILURE() << "the folder dialog was shown with no answer queued";
      return;
    }
    exit_ = risposte.front().ok;
    pathDir_ = risposte.front().ok ? risposte.front().pathDir : "";
    risposte.pop_front();
  }
  bool ExitValue() const override { return exit_; }
  std::string PathDir() const override { return pathDir_; }

  std::deque<Risposta> risposte;
  std::vector<std::string> titoli, inizi;
  int mostrato = 0;

 private:
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

// The common file dialog: each showing takes the next queued answer, a file name or a cancel.
class DialogoFileProva : public support::DialogoFile {
 public:
  ~DialogoFileProva() override {
    EXPECT_TRUE(risposte.empty()) << risposte.size() << " file dialog answers left over";
  }
  void Scegli(const std::string& nome) { risposte.push_back(nome); }
  void Annulla() { risposte.push_back(std::nullopt); }

  void ImpostaTitolo(const std::string& t) override { titolo = t; }
  void ImpostaCartellaIniziale(const std::string& c) override { cartella = c; }
  void ImpostaFiltro(const std::string& f) override { filtro = f; }
  void ImpostaNomeFile(const std::string& n) override { nome_ = n; }
  bool MostraApri() override { return Mostra("open"); }
  bool MostraSalva() override { return Mostra("save"); }
  std::string NomeFile() const override { return nome_; }

  std::deque<std::optional<std::string>> risposte;
  std::string titolo, cartella, filtro;
  // "open" or "save" for each showing.
  std::vector<std::string> mostrati;

 private:
  bool Mostra(const char* come) {
    mostrati.push_back(come);
    if (risposte.empty()) {
      ADD_FAILURE() << "the file dialog was shown with no answer queued";
      return false;
    }
    const auto r = risposte.front();
    risposte.pop_front();
    if (r) nome_ = *r;
    return r.has_value();
  }
  std::string nome_;
};

class AppuntiProva : public support::Appunti {
 public:
  void Svuota() override { testo.reset(); }
  void ImpostaTesto(const std::string& t) override { testo = t; }
  std::optional<std::string> testo = "prima";
};

// A whole analysis window of stand-ins; its program folder is C:\Prog.
struct AnalisiProva {
  support::AreaTestoInMemoria area{analysis::kTestoIniziale};
  DidascaliaProva cerca;
  BarraProva barra;
  analysis::SegniInMemoria segni;
  MessaggiProva messaggi;
  DialogoFileProva dialogo;
  AppuntiProva appunti;
  formats::InfoHeader header;
  analysis::Dialog_Analisi d{area, cerca, barra, segni, messaggi, dialogo, appunti, header, "C:\\Prog"};

  // The items whose mark is set.
  std::vector<analysis::Voce> Segnate() const {
    std::vector<analysis::Voce> v;
    for (int i = 0; i < analysis::kNumeroVoci; ++i)
      if (segni.Checked(static_cast<analysis::Voce>(i))) v.push_back(static_cast<analysis::Voce>(i));
    return v;
  }
};
