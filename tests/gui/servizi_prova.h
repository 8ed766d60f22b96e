// Scripted answers for what would wait for a user: message boxes are recorded, file dialogs answer from a
// queue, and a dialog shown with no answer queued fails the test.
#pragma once

#include <QtTest>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "gui/finestra_principale.h"

struct MessaggiRegistro : support::Messaggi {
  void Semplice(const std::string& t) override { tutti.push_back("plain: " + t); }
  void Critico(const std::string& t) override { tutti.push_back("critical: " + t); }
  std::vector<std::string> tutti;
};

struct DialogoFileProva : support::DialogoFile {
  void ImpostaTitolo(const std::string& t) override { titolo = t; }
  void ImpostaCartellaIniziale(const std::string& c) override { cartella = c; }
  void ImpostaFiltro(const std::string& f) override { filtro = f; }
  void ImpostaNomeFile(const std::string& n) override { nome = n; }
  bool MostraApri() override { return Rispondi(); }
  bool MostraSalva() override { return Rispondi(); }
  std::string NomeFile() const override { return nome; }
  bool Rispondi() {
    if (risposte.empty()) {
      ++senzaRisposta;
      return false;
    }
    const auto r = risposte.front();
    risposte.pop_front();
    if (r) nome = *r;
    return r.has_value();
  }
  // nullopt: the user cancels.
  std::deque<std::optional<std::string>> risposte;
  std::string titolo, cartella, filtro, nome;
  int senzaRisposta = 0;
};

struct AppuntiProva : support::Appunti {
  void Svuota() override { testo.clear(); }
  void ImpostaTesto(const std::string& t) override { testo = t; }
  std::string testo = "prima";
};

struct Banco {
  MessaggiRegistro messaggi;
  DialogoFileProva file;
  AppuntiProva appunti;
  std::function<void(gui::FinestraGetDir&)> getDir = [](gui::FinestraGetDir&) {
    QFAIL("the folder picker was shown unexpectedly");
  };
  std::function<void(gui::FinestraAnalisi&)> analisi = [](gui::FinestraAnalisi&) {
    QFAIL("the analysis window was shown unexpectedly");
  };
  gui::Servizi Servizi() {
    return {messaggi, file, appunti, [this](gui::FinestraGetDir& f) { getDir(f); },
            [this](gui::FinestraAnalisi& f) { analisi(f); }};
  }
};
