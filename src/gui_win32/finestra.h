// A top-level window built from a form table, in plain Win32: the controls in twips turned into pixels at
// the system's DPI, the dialog font, the folder colours, the tab order, closing and modal showing. Each of
// the three windows derives from it and forwards its controls' commands to its window model.
#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "support/forma.h"

namespace win32 {

// Twips in pixels at the system's DPI (1440 twips to the inch).
int Px(int twips);

// The first control's id; a form's controls follow in table order. Ids 1 and 2 are what the dialog
// manager sends for Enter and Escape, which no control answers.
inline constexpr int kPrimoId = 100;
// The first menu item's id.
inline constexpr int kPrimaVoce = 1000;

class Finestra {
 public:
  Finestra() = default;
  Finestra(const Finestra&) = delete;
  Finestra& operator=(const Finestra&) = delete;
  virtual ~Finestra();

  HWND Hwnd() const { return hwnd_; }
  // The control named in the form; nullptr for a name it does not have.
  HWND Controllo(const char* nome) const;
  // The window is gone: closed by the user, by its model or by its owner.
  bool Chiusa() const { return chiusa_; }
  // Closes the window as its frame's close button does, if it may close now.
  void Chiudi();
  // Places the window in the middle of the screen's work area.
  void AlCentro();
  // Places the window as AlCentro does, unless another shown top-level window of the same caption (the
  // program started once more) stands there: then a title bar's height down and right of it, as Windows
  // cascades.
  void AlPostoLibero();

 protected:
  // Makes the window with the form's client size (below `menu`, if any) and its controls, hidden.
  void Crea(const support::Forma& forma, HWND proprietario, DWORD stile, HMENU menu);
  int IdDi(const char* nome) const;

  // WM_COMMAND from a control or a menu item; true when handled.
  virtual bool Comando(int id, int codice) = 0;
  virtual LRESULT Notifica(const NMHDR*) { return 0; }
  // A private message (WM_APP and above).
  virtual void Privato(UINT, WPARAM, LPARAM) {}
  // The tooltip of a folder control: its whole text.
  virtual std::string Suggerimento(HWND controllo) const;
  // Asked before the window closes; false keeps it open.
  virtual bool PuoChiudersi() { return true; }
  virtual void Distrutta() {}

 private:
  static LRESULT CALLBACK Procedura(HWND h, UINT m, WPARAM w, LPARAM l);
  LRESULT Messaggio(UINT m, WPARAM w, LPARAM l);
  // The form's entry of one of this window's controls; nullptr for any other window.
  const support::Controllo* Descrizione(HWND controllo) const;
  bool Verde(HWND controllo) const;

  HWND hwnd_ = nullptr;
  const support::Forma* forma_ = nullptr;
  std::vector<HWND> controlli_;
  HFONT font_ = nullptr;
  HFONT fontArea_ = nullptr;
  HBRUSH verde_ = nullptr;
  HWND suggerimenti_ = nullptr;
  HWND fuoco_ = nullptr;
  std::string testoSuggerimento_;
  bool chiusa_ = false;
};

// Shows `f` modally over its owner: the owner takes no input until `f` is closed. Returns then.
void MostraModale(Finestra& f);

// The window that a message box or the file dialog is modal over: the innermost modal window open, else
// the main window; nullptr before there is one.
HWND Proprietario();
// Makes `finestra` the bottom of that order: the program's main window.
void ImpostaPrincipale(HWND finestra);
void RimuoviPrincipale(HWND finestra);

// Dispatches the messages waiting in the queue, through the dialog manager of their window.
void SmaltisciCoda();

// A control's text as bytes.
std::string TestoDi(HWND controllo);

// `testo` as the control shows it in its width, within its margins: the middle of a path left out, "..." in
// its place.
std::string Accorciato(HWND controllo, const std::string& testo);

// The message font of the system, for every control but the report area.
HFONT FontDialogo();

}  // namespace win32
