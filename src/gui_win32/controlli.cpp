#include "gui_win32/controlli.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <vector>

#include "gui_win32/finestra.h"
#include "gui_win32/prospetto.h"
#include "support/filtro.h"
#include "support/forma.h"

namespace win32 {
namespace {

// Modal over the program's innermost window; before there is one, over the whole program.
int Scatola(const std::string& testo, UINT tipo) {
  HWND sopra = Proprietario();
  return MessageBoxA(sopra, testo.c_str(), support::kTitoloProgramma, tipo | (sopra ? 0u : MB_TASKMODAL));
}

}  // namespace

void DidascaliaW::ImpostaTesto(const std::string& testo) {
  SetWindowTextA(controllo_, testo.c_str());
}

std::string DidascaliaW::Testo() const {
  return TestoDi(controllo_);
}

void DidascaliaW::Ridisegna() {
  InvalidateRect(controllo_, nullptr, TRUE);
  UpdateWindow(controllo_);
}

void BarraW::SetValue(double v) {
  valore_ = v;
  // The bar of the common controls 6 glides to a higher position on a timer, which a window at work never
  // lets run; a step past the place and back puts it there at once.
  const auto p = static_cast<WPARAM>(std::clamp(v, 0.0, 100.0));
  if (p < 100) SendMessageA(barra_, PBM_SETPOS, p + 1, 0);
  SendMessageA(barra_, PBM_SETPOS, p, 0);
}

void BarraW::Refresh() {
  UpdateWindow(barra_);
}

void CicloW::UnTurno() {
  SmaltisciCoda();
}

void MessaggiW::Semplice(const std::string& testo) {
  Scatola(testo, MB_OK);
}

void MessaggiW::Critico(const std::string& testo) {
  Scatola(testo, MB_OK | MB_ICONERROR);
}

bool MessaggiW::Domanda(const std::string& testo) {
  // No is the default button: an Enter pressed in passing adds nothing to what is posted.
  return Scatola(testo, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

void AppuntiW::Svuota() {
  if (!OpenClipboard(Proprietario())) return;
  EmptyClipboard();
  CloseClipboard();
}

void AppuntiW::ImpostaTesto(const std::string& testo) {
  if (!OpenClipboard(Proprietario())) return;
  EmptyClipboard();
  if (HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, testo.size() + 1)) {
    auto* p = static_cast<char*>(GlobalLock(h));
    std::copy(testo.begin(), testo.end(), p);
    p[testo.size()] = '\0';
    GlobalUnlock(h);
    if (!SetClipboardData(CF_TEXT, h)) GlobalFree(h);
  }
  CloseClipboard();
}

std::string FiltroWin32(const std::string& filtro) {
  std::string f;
  for (const support::VoceFiltro& v : support::LeggiFiltro(filtro)) {
    f += v.descrizione;
    f += '\0';
    for (std::size_t i = 0; i < v.maschere.size(); ++i) f += (i ? ";" : "") + v.maschere[i];
    f += '\0';
  }
  f += '\0';
  return f;
}

bool DialogoFileW::Mostra(bool salva) {
  std::vector<char> nome(32768, '\0');
  std::copy_n(nome_.begin(), std::min(nome_.size(), nome.size() - 1), nome.begin());
  const std::string filtro = FiltroWin32(filtro_);
  OPENFILENAMEA o{};
  o.lStructSize = sizeof(o);
  o.hwndOwner = Proprietario();
  o.lpstrFilter = filtro.size() > 1 ? filtro.c_str() : nullptr;
  o.nFilterIndex = 1;
  o.lpstrFile = nome.data();
  o.nMaxFile = static_cast<DWORD>(nome.size());
  o.lpstrInitialDir = cartella_.empty() ? nullptr : cartella_.c_str();
  o.lpstrTitle = titolo_.empty() ? nullptr : titolo_.c_str();
  // A typed name need not exist, a file is replaced without asking, and no extension is added.
  o.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (!(salva ? GetSaveFileNameA(&o) : GetOpenFileNameA(&o))) return false;
  nome_ = nome.data();
  // The next showing opens where this one ended.
  if (o.nFileOffset > 0) cartella_ = nome_.substr(0, o.nFileOffset > 3 ? o.nFileOffset - 1u : o.nFileOffset);
  return !nome_.empty();
}

std::string AreaTestoW::Testo() const {
  return TestoProspetto(area_);
}

void AreaTestoW::ImpostaTesto(const std::string& testo) {
  ImpostaProspetto(area_, testo);
}

long AreaTestoW::SelStart() const {
  return static_cast<long>(SelezioneProspetto(area_).inizio);
}

long AreaTestoW::SelLength() const {
  const Selezione s = SelezioneProspetto(area_);
  return static_cast<long>(s.fine - s.inizio);
}

void AreaTestoW::Seleziona(long inizio, long lunghezza) {
  const long l = static_cast<long>(TestoProspetto(area_).size());
  inizio = std::clamp(inizio, 0L, l);
  lunghezza = std::clamp(lunghezza, 0L, l - inizio);
  SelezionaProspetto(area_, static_cast<std::size_t>(inizio), static_cast<std::size_t>(inizio + lunghezza));
}

std::string AreaTestoW::SelText() const {
  const Selezione s = SelezioneProspetto(area_);
  return TestoProspetto(area_).substr(s.inizio, s.fine - s.inizio);
}

}  // namespace win32
