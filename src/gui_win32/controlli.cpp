#include "gui_win32/controlli.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <vector>

#include "gui_win32/finestra.h"
#include "support/filtro.h"
#include "support/forma.h"

namespace win32 {
namespace {

// Modal over the program's innermost window; before there is one, over the whole program.
void Scatola(const std::string& testo, UINT icona) {
  HWND sopra = Proprietario();
  MessageBoxA(sopra, testo.c_str(), support::kTitoloProgramma, MB_OK | icona | (sopra ? 0u : MB_TASKMODAL));
}

// How many whole lines of the control's font its formatting rectangle holds.
long RigheVisibili(HWND area) {
  RECT r{};
  SendMessageA(area, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&r));
  TEXTMETRICA tm{};
  if (HDC dc = GetDC(area)) {
    const HGDIOBJ prima = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(area, WM_GETFONT, 0, 0)));
    GetTextMetricsA(dc, &tm);
    SelectObject(dc, prima);
    ReleaseDC(area, dc);
  }
  return tm.tmHeight > 0 ? std::max(1L, (r.bottom - r.top) / tm.tmHeight) : 1;
}

// Scrolls the line that holds `posizione` to the middle of the area (as near as the text's ends allow).
void RigaAlCentro(HWND area, long posizione) {
  const auto riga = static_cast<long>(SendMessageA(area, EM_LINEFROMCHAR, static_cast<WPARAM>(posizione), 0));
  const auto prima = static_cast<long>(SendMessageA(area, EM_GETFIRSTVISIBLELINE, 0, 0));
  const long voluta = std::max(0L, riga - RigheVisibili(area) / 2);
  if (voluta != prima) SendMessageA(area, EM_LINESCROLL, 0, static_cast<LPARAM>(voluta - prima));
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
  Scatola(testo, 0);
}

void MessaggiW::Critico(const std::string& testo) {
  Scatola(testo, MB_ICONERROR);
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

void AreaTestoW::ImpostaTesto(const std::string& testo) {
  testo_ = testo;
  if (testo.find('\0') == std::string::npos) {
    SetWindowTextA(area_, testo.c_str());
  } else {
    std::string mostrato = testo;
    std::replace(mostrato.begin(), mostrato.end(), '\0', ' ');
    SetWindowTextA(area_, mostrato.c_str());
  }
  Seleziona(0, 0);
}

long AreaTestoW::SelStart() const {
  DWORD a = 0, b = 0;
  SendMessageA(area_, EM_GETSEL, reinterpret_cast<WPARAM>(&a), reinterpret_cast<LPARAM>(&b));
  return static_cast<long>(a);
}

long AreaTestoW::SelLength() const {
  DWORD a = 0, b = 0;
  SendMessageA(area_, EM_GETSEL, reinterpret_cast<WPARAM>(&a), reinterpret_cast<LPARAM>(&b));
  return static_cast<long>(b - a);
}

void AreaTestoW::Seleziona(long inizio, long lunghezza) {
  const long l = static_cast<long>(testo_.size());
  inizio = std::clamp(inizio, 0L, l);
  lunghezza = std::clamp(lunghezza, 0L, l - inizio);
  SendMessageA(area_, EM_SETSEL, static_cast<WPARAM>(inizio), static_cast<LPARAM>(inizio + lunghezza));
  // The caret brings the columns into view; the found word's line then goes to the middle, not the last line.
  SendMessageA(area_, EM_SCROLLCARET, 0, 0);
  RigaAlCentro(area_, inizio);
}

std::string AreaTestoW::SelText() const {
  const long inizio = std::min(SelStart(), static_cast<long>(testo_.size()));
  return testo_.substr(static_cast<std::size_t>(inizio), static_cast<std::size_t>(SelLength()));
}

}  // namespace win32
