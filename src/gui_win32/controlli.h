// The window interfaces of the operations over Win32 controls and services. Texts are bytes in the
// machine's ANSI code page, given to the "A" calls as they are.
#pragma once

#include <windows.h>

#include <string>

#include "support/interfacce.h"

namespace win32 {

// A label or a one-line box. A label keeps the bytes it was given: the folder labels are the only place the
// folders live.
class DidascaliaW : public support::Didascalia {
 public:
  explicit DidascaliaW(HWND controllo = nullptr) : controllo_(controllo) {}
  void Collega(HWND controllo) { controllo_ = controllo; }
  void ImpostaTesto(const std::string& testo) override;
  std::string Testo() const override;
  void Ridisegna() override;

 private:
  HWND controllo_;
};

class BarraW : public support::BarraProgresso {
 public:
  void Collega(HWND barra) { barra_ = barra; }
  double Value() const override { return valore_; }
  void SetValue(double v) override;
  void Refresh() override;

 private:
  HWND barra_ = nullptr;
  double valore_ = 0;
};

// One turn of the message loop: every message waiting is dispatched.
class CicloW : public support::CicloEventi {
 public:
  void UnTurno() override;
};

// Message boxes with the program's title and one OK button, over the active window.
class MessaggiW : public support::Messaggi {
 public:
  void Semplice(const std::string& testo) override;
  void Critico(const std::string& testo) override;
  bool Domanda(const std::string& testo) override;
};

// The clipboard, as plain text (CF_TEXT).
class AppuntiW : public support::Appunti {
 public:
  void Svuota() override;
  void ImpostaTesto(const std::string& testo) override;
};

// The common file dialog of the system. Its settings last from one showing to the next.
class DialogoFileW : public support::DialogoFileConImpostazioni {
 private:
  bool Mostra(bool salva) override;
};

// "Description|mask|..." as the dialog's filter: each part ends with a NUL, the list with two.
std::string FiltroWin32(const std::string& filtro);

// The report area over the report view, which holds the string: the model's positions are the string's.
class AreaTestoW : public support::AreaTesto {
 public:
  void Collega(HWND area) { area_ = area; }
  std::string Testo() const override;
  void ImpostaTesto(const std::string& testo) override;
  long SelStart() const override;
  long SelLength() const override;
  void Seleziona(long inizio, long lunghezza) override;
  std::string SelText() const override;

 private:
  HWND area_ = nullptr;
};

}  // namespace win32
