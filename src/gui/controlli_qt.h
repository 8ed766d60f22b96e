// The window interfaces of the operations, each over one Qt control or service.
#pragma once

#include <QString>
#include <string>
#include <vector>

#include "gui/vista_prospetto.h"
#include "support/interfacce.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QWidget;

namespace gui {

class DidascaliaEtichetta : public support::Didascalia {
 public:
  explicit DidascaliaEtichetta(QLabel* etichetta) : etichetta_(etichetta) {}
  void ImpostaTesto(const std::string& testo) override;
  std::string Testo() const override { return testo_; }
  void Ridisegna() override;

 private:
  QLabel* etichetta_;
  // The folder labels hold the folders themselves: the bytes, not what the widget shows of them.
  std::string testo_;
};

// Shows `testo` in a label or a read-only box `larghezza` pixels wide, its middle left out when it does not
// fit; the whole text is then the control's tooltip.
void MostraAccorciato(QWidget* controllo, const QString& testo, int larghezza);

class DidascaliaRiga : public support::Didascalia {
 public:
  explicit DidascaliaRiga(QLineEdit* riga) : riga_(riga) {}
  void ImpostaTesto(const std::string& testo) override;
  std::string Testo() const override;
  void Ridisegna() override;

 private:
  QLineEdit* riga_;
};

class BarraQt : public support::BarraProgresso {
 public:
  explicit BarraQt(QProgressBar* barra) : barra_(barra) {}
  double Value() const override { return valore_; }
  void SetValue(double v) override;
  void Refresh() override;

 private:
  QProgressBar* barra_;
  double valore_ = 0;
};

class CicloQt : public support::CicloEventi {
 public:
  void UnTurno() override;
};

// Boxes with the program's title and one OK button (a question: Yes and No), over whatever window is active.
class MessaggiQt : public support::Messaggi {
 public:
  void Semplice(const std::string& testo) override;
  void Critico(const std::string& testo) override;
  bool Domanda(const std::string& testo) override;
};

class AppuntiQt : public support::Appunti {
 public:
  void Svuota() override;
  void ImpostaTesto(const std::string& testo) override;
};

// One file dialog for the whole program: its settings last from one showing to the next.
class DialogoFileQt : public support::DialogoFileConImpostazioni {
 private:
  bool Mostra(bool salva) override;
};

// "Description|mask|Description|mask" as Qt's name filters. Masks match without regard to case, as they
// do on the platform the program was made for, also on a case-sensitive file system.
QStringList FiltriQt(const std::string& filtro);

// The report area over the report view, which holds the string: the model's positions are the string's.
class AreaTestoQt : public support::AreaTesto {
 public:
  explicit AreaTestoQt(VistaProspetto* vista) : vista_(vista) {}
  std::string Testo() const override { return vista_->Testo(); }
  void ImpostaTesto(const std::string& testo) override;
  long SelStart() const override;
  long SelLength() const override;
  void Seleziona(long inizio, long lunghezza) override;
  std::string SelText() const override;

 private:
  VistaProspetto* vista_;
};

}  // namespace gui
