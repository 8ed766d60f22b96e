#include "gui_win32/prospetto.h"

#include <windowsx.h>

#include <algorithm>
#include <climits>

#include "gui_win32/controlli.h"
#include "gui_win32/finestra.h"
#include "support/forma.h"
#include "support/righe.h"

namespace win32 {
namespace {

// The room between the frame and the text, as the EDIT control leaves it.
constexpr int kMargine = 2;

struct Vista {
  HWND h = nullptr;
  std::string testo;
  support::RigheTesto righe;
  // The selection runs from the anchor to the caret, in either direction.
  std::size_t ancora = 0, cursore = 0;
  std::size_t prima = 0;
  int x = 0;
  int larghezzaTesto = 0;
  HFONT font = nullptr;
  int cw = 8, ch = 16, tab = 48;
  int rotella = 0;
  bool fuoco = false, trascina = false;
};

Vista* DiVista(HWND h) {
  return h ? reinterpret_cast<Vista*>(GetWindowLongPtrA(h, 0)) : nullptr;
}

SIZE Cliente(const Vista& v) {
  RECT r{};
  GetClientRect(v.h, &r);
  return {r.right - r.left, r.bottom - r.top};
}

std::size_t Visibili(const Vista& v) {
  return static_cast<std::size_t>(std::max(1L, Cliente(v).cy / v.ch));
}

std::size_t PrimaMassima(const Vista& v) {
  const std::size_t n = v.righe.Quante(), vis = Visibili(v);
  return n > vis ? n - vis : 0;
}

int XMassimo(const Vista& v) {
  return std::max(0, v.larghezzaTesto + 2 * kMargine - static_cast<int>(Cliente(v).cx));
}

int XDi(const Vista& v, std::size_t riga, std::size_t pos) {
  return support::XDi(v.testo, v.righe.Inizio(riga), std::min(pos, v.righe.Fine(riga)), v.cw, v.tab);
}

void Metriche(Vista& v) {
  HDC dc = GetDC(v.h);
  HGDIOBJ prima = SelectObject(dc, v.font ? static_cast<HGDIOBJ>(v.font) : GetStockObject(SYSTEM_FIXED_FONT));
  TEXTMETRICA tm{};
  GetTextMetricsA(dc, &tm);
  SelectObject(dc, prima);
  ReleaseDC(v.h, dc);
  v.cw = std::max(1, static_cast<int>(tm.tmAveCharWidth));
  v.ch = std::max(1, static_cast<int>(tm.tmHeight));
  v.tab = std::max(1, Px(support::kTabulazioneTwips));
  v.larghezzaTesto = support::LarghezzaMassima(v.testo, v.righe, v.cw, v.tab);
}

void AggiornaBarre(Vista& v) {
  v.prima = std::min(v.prima, PrimaMassima(v));
  v.x = std::clamp(v.x, 0, XMassimo(v));
  const SIZE c = Cliente(v);
  SCROLLINFO s{};
  s.cbSize = sizeof(s);
  s.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
  s.nMax = static_cast<int>(std::min<std::size_t>(v.righe.Quante() - 1, INT_MAX));
  s.nPage = static_cast<UINT>(Visibili(v));
  s.nPos = static_cast<int>(v.prima);
  SetScrollInfo(v.h, SB_VERT, &s, TRUE);
  s.nMax = v.larghezzaTesto + 2 * kMargine - 1;
  s.nPage = static_cast<UINT>(std::max(0L, c.cx));
  s.nPos = v.x;
  SetScrollInfo(v.h, SB_HORZ, &s, TRUE);
}

POINT PuntoDi(const Vista& v, std::size_t pos) {
  const std::size_t riga = v.righe.RigaDi(pos);
  const long y = (static_cast<long>(riga) - static_cast<long>(v.prima)) * v.ch;
  return {kMargine + XDi(v, riga, pos) - v.x, y};
}

void PosaCursore(const Vista& v) {
  if (!v.fuoco) return;
  const POINT p = PuntoDi(v, v.cursore);
  SetCaretPos(p.x, p.y);
}

void Ridisegna(Vista& v) {
  InvalidateRect(v.h, nullptr, FALSE);
  PosaCursore(v);
}

void ScorriA(Vista& v, std::size_t prima, int x) {
  v.prima = prima;
  v.x = x;
  AggiornaBarre(v);
  Ridisegna(v);
}

// The caret's line and column brought into view, moving as little as it takes.
void MostraCursore(Vista& v) {
  const std::size_t riga = v.righe.RigaDi(v.cursore), vis = Visibili(v);
  std::size_t prima = v.prima;
  if (riga < prima)
    prima = riga;
  else if (riga >= prima + vis)
    prima = riga - vis + 1;
  const int cx = XDi(v, riga, v.cursore), larghezza = static_cast<int>(Cliente(v).cx) - 2 * kMargine;
  int x = v.x;
  if (cx < x)
    x = std::max(0, cx - larghezza / 4);
  else if (cx + v.cw > x + larghezza)
    x = cx + v.cw - larghezza + larghezza / 4;
  ScorriA(v, prima, x);
}

void Seleziona(Vista& v, std::size_t ancora, std::size_t cursore) {
  v.ancora = std::min(ancora, v.testo.size());
  v.cursore = std::min(cursore, v.testo.size());
  Ridisegna(v);
}

Selezione Sel(const Vista& v) {
  return {std::min(v.ancora, v.cursore), std::max(v.ancora, v.cursore)};
}

void Imposta(Vista& v, const std::string& testo) {
  v.testo = testo;
  v.righe.Imposta(v.testo);
  v.ancora = v.cursore = 0;
  v.larghezzaTesto = support::LarghezzaMassima(v.testo, v.righe, v.cw, v.tab);
  ScorriA(v, 0, 0);
}

std::size_t PosizioneDa(const Vista& v, int x, int y) {
  const long r = static_cast<long>(v.prima) + (y < 0 ? -1 : y / v.ch);
  const std::size_t riga = std::min(static_cast<std::size_t>(std::max(0L, r)), v.righe.Quante() - 1);
  return support::PosizioneDaX(v.testo, v.righe.Inizio(riga), v.righe.Fine(riga), x - kMargine + v.x, v.cw,
                               v.tab);
}

// One line, piece by piece: a tab or a control character is a blank of its width.
void DisegnaRiga(const Vista& v, HDC dc, std::size_t riga, int y, int larghezza, Selezione s) {
  std::string corsa;
  support::CorseDi(v.testo, v.righe.Inizio(riga), v.righe.Fine(riga), v.cw, v.tab, v.x, larghezza, s.inizio,
                   s.fine, [&](const support::Corsa& k) {
                     corsa.assign(v.testo, k.inizio, k.fine - k.inizio);
                     for (char& c : corsa)
                       if (static_cast<unsigned char>(c) < 0x20) c = ' ';
                     RECT r{kMargine + k.x0 - v.x, y, kMargine + k.x1 - v.x, y + v.ch};
                     SetBkColor(dc, GetSysColor(k.selezionata ? COLOR_HIGHLIGHT : COLOR_WINDOW));
                     SetTextColor(dc, GetSysColor(k.selezionata ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
                     ExtTextOutA(dc, r.left, y, ETO_OPAQUE | ETO_CLIPPED, &r, corsa.data(),
                                 static_cast<UINT>(corsa.size()), nullptr);
                   });
}

void Disegna(Vista& v) {
  PAINTSTRUCT ps;
  HDC schermo = BeginPaint(v.h, &ps);
  const SIZE c = Cliente(v);
  // Drawn off screen and put on in one piece: scrolling does not flicker.
  HDC dc = CreateCompatibleDC(schermo);
  HBITMAP bitmap = CreateCompatibleBitmap(schermo, std::max(1L, c.cx), std::max(1L, c.cy));
  HGDIOBJ primaBitmap = SelectObject(dc, bitmap);
  RECT tutto{0, 0, c.cx, c.cy};
  FillRect(dc, &tutto, GetSysColorBrush(COLOR_WINDOW));
  HGDIOBJ primoFont =
      SelectObject(dc, v.font ? static_cast<HGDIOBJ>(v.font) : GetStockObject(SYSTEM_FIXED_FONT));
  const Selezione s = Sel(v);
  const std::size_t ultima = std::min(v.righe.Quante(), v.prima + Visibili(v) + 1);
  for (std::size_t r = v.prima; r < ultima; ++r)
    DisegnaRiga(v, dc, r, static_cast<int>(r - v.prima) * v.ch, static_cast<int>(c.cx), s);
  BitBlt(schermo, ps.rcPaint.left, ps.rcPaint.top, ps.rcPaint.right - ps.rcPaint.left,
         ps.rcPaint.bottom - ps.rcPaint.top, dc, ps.rcPaint.left, ps.rcPaint.top, SRCCOPY);
  SelectObject(dc, primoFont);
  SelectObject(dc, primaBitmap);
  DeleteObject(bitmap);
  DeleteDC(dc);
  EndPaint(v.h, &ps);
}

void Scorri(Vista& v, int barra, int codice) {
  SCROLLINFO s{};
  s.cbSize = sizeof(s);
  s.fMask = SIF_ALL;
  GetScrollInfo(v.h, barra, &s);
  long pos = s.nPos;
  const long riga = barra == SB_VERT ? 1 : v.cw, pagina = std::max(1L, static_cast<long>(s.nPage) - riga);
  switch (codice) {
    case SB_LINEUP:
      pos -= riga;
      break;
    case SB_LINEDOWN:
      pos += riga;
      break;
    case SB_PAGEUP:
      pos -= pagina;
      break;
    case SB_PAGEDOWN:
      pos += pagina;
      break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      pos = s.nTrackPos;
      break;
    case SB_TOP:
      pos = 0;
      break;
    case SB_BOTTOM:
      pos = s.nMax;
      break;
    default:
      return;
  }
  pos = std::max(0L, pos);
  if (barra == SB_VERT)
    ScorriA(v, std::min(static_cast<std::size_t>(pos), PrimaMassima(v)), v.x);
  else
    ScorriA(v, v.prima, static_cast<int>(std::min<long>(pos, XMassimo(v))));
}

void Copia(const Vista& v) {
  const Selezione s = Sel(v);
  if (s.fine > s.inizio) AppuntiW().ImpostaTesto(v.testo.substr(s.inizio, s.fine - s.inizio));
}

// The keys that move the caret, in the order of `support::Movimento`.
constexpr int kTastiMovimento[] = {VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END};

bool Tasto(Vista& v, WPARAM tasto) {
  const bool ctrl = GetKeyState(VK_CONTROL) < 0, maiusc = GetKeyState(VK_SHIFT) < 0;
  if (ctrl && tasto == 'A') {
    Seleziona(v, 0, v.testo.size());
    return true;
  }
  if (ctrl && (tasto == 'C' || tasto == VK_INSERT)) {
    Copia(v);
    return true;
  }
  const auto m = support::MovimentoDelTasto(kTastiMovimento, static_cast<int>(tasto), ctrl);
  if (!m) return false;
  const std::size_t p = support::Muovi(v.testo, v.righe, v.cursore, *m, Visibili(v) - 1, v.cw, v.tab);
  Seleziona(v, maiusc ? v.ancora : p, p);
  MostraCursore(v);
  return true;
}

LRESULT CALLBACK Procedura(HWND h, UINT m, WPARAM w, LPARAM l) {
  Vista* v = DiVista(h);
  if (m == WM_NCCREATE) {
    v = new Vista;
    v->h = h;
    SetWindowLongPtrA(h, 0, reinterpret_cast<LONG_PTR>(v));
  }
  if (!v) return DefWindowProcA(h, m, w, l);
  switch (m) {
    case WM_CREATE: {
      const char* nome = reinterpret_cast<const CREATESTRUCTA*>(l)->lpszName;
      Metriche(*v);
      Imposta(*v, nome ? nome : "");
      return 0;
    }
    case WM_NCDESTROY:
      SetWindowLongPtrA(h, 0, 0);
      delete v;
      return DefWindowProcA(h, m, w, l);
    case WM_SETTEXT:
      Imposta(*v, l ? reinterpret_cast<const char*>(l) : "");
      return TRUE;
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(v->testo.size());
    case WM_GETTEXT: {
      if (w == 0 || !l) return 0;
      const std::size_t n = std::min(v->testo.size(), static_cast<std::size_t>(w) - 1);
      char* d = reinterpret_cast<char*>(l);
      std::copy_n(v->testo.data(), n, d);
      d[n] = '\0';
      return static_cast<LRESULT>(n);
    }
    case WM_SETFONT:
      v->font = reinterpret_cast<HFONT>(w);
      Metriche(*v);
      AggiornaBarre(*v);
      if (l) Ridisegna(*v);
      return 0;
    case WM_GETFONT:
      return reinterpret_cast<LRESULT>(v->font);
    case WM_SIZE:
      AggiornaBarre(*v);
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      Disegna(*v);
      return 0;
    case WM_VSCROLL:
    case WM_HSCROLL:
      Scorri(*v, m == WM_VSCROLL ? SB_VERT : SB_HORZ, LOWORD(w));
      return 0;
    case WM_MOUSEWHEEL: {
      UINT righe = 3;
      SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &righe, 0);
      v->rotella += GET_WHEEL_DELTA_WPARAM(w);
      const long passi = v->rotella / WHEEL_DELTA;
      v->rotella %= WHEEL_DELTA;
      const long prima = static_cast<long>(v->prima) -
                         passi * static_cast<long>(righe == WHEEL_PAGESCROLL ? Visibili(*v) : righe);
      ScorriA(*v, std::min(static_cast<std::size_t>(std::max(0L, prima)), PrimaMassima(*v)), v->x);
      return 0;
    }
    case WM_GETDLGCODE:
      // Arrows and letters for the area; Tab, Enter and Escape stay with the window, and tabbing in keeps
      // the selection the search made.
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_SETFOCUS:
      v->fuoco = true;
      CreateCaret(h, nullptr, 1, v->ch);
      PosaCursore(*v);
      ShowCaret(h);
      return 0;
    case WM_KILLFOCUS:
      v->fuoco = false;
      DestroyCaret();
      return 0;
    case WM_LBUTTONDOWN: {
      SetFocus(h);
      SetCapture(h);
      v->trascina = true;
      const std::size_t p = PosizioneDa(*v, GET_X_LPARAM(l), GET_Y_LPARAM(l));
      Seleziona(*v, (w & MK_SHIFT) ? v->ancora : p, p);
      return 0;
    }
    case WM_MOUSEMOVE:
      if (v->trascina) {
        Seleziona(*v, v->ancora, PosizioneDa(*v, GET_X_LPARAM(l), GET_Y_LPARAM(l)));
        MostraCursore(*v);
      }
      return 0;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
      if (v->trascina) {
        v->trascina = false;
        if (m == WM_LBUTTONUP) ReleaseCapture();
      }
      return 0;
    case WM_LBUTTONDBLCLK: {
      const auto [a, b] =
          support::ParolaIntorno(v->testo, v->righe, PosizioneDa(*v, GET_X_LPARAM(l), GET_Y_LPARAM(l)));
      Seleziona(*v, a, b);
      return 0;
    }
    case WM_KEYDOWN:
      if (Tasto(*v, w)) return 0;
      break;
    case WM_CHAR:
      return 0;
    case WM_COPY:
      Copia(*v);
      return 0;
    case EM_GETSEL: {
      const Selezione s = Sel(*v);
      if (w) *reinterpret_cast<DWORD*>(w) = static_cast<DWORD>(s.inizio);
      if (l) *reinterpret_cast<DWORD*>(l) = static_cast<DWORD>(s.fine);
      if (s.fine > 0xFFFF) return -1;
      return MAKELRESULT(s.inizio, s.fine);
    }
    case EM_POSFROMCHAR: {
      if (w > v->testo.size()) return -1;
      const POINT p = PuntoDi(*v, static_cast<std::size_t>(w));
      return MAKELRESULT(static_cast<WORD>(p.x), static_cast<WORD>(p.y));
    }
    default:
      break;
  }
  return DefWindowProcA(h, m, w, l);
}

}  // namespace

void RegistraProspetto() {
  static const bool fatto = [] {
    WNDCLASSEXA c{};
    c.cbSize = sizeof(c);
    c.style = CS_DBLCLKS;
    c.lpfnWndProc = &Procedura;
    c.cbWndExtra = sizeof(Vista*);
    c.hInstance = GetModuleHandleA(nullptr);
    c.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32513));  // IDC_IBEAM
    c.lpszClassName = kClasseProspetto;
    return RegisterClassExA(&c) != 0;
  }();
  (void)fatto;
}

void ImpostaProspetto(HWND area, const std::string& testo) {
  if (Vista* v = DiVista(area)) Imposta(*v, testo);
}

const std::string& TestoProspetto(HWND area) {
  static const std::string vuoto;
  const Vista* v = DiVista(area);
  return v ? v->testo : vuoto;
}

Selezione SelezioneProspetto(HWND area) {
  const Vista* v = DiVista(area);
  return v ? Sel(*v) : Selezione{};
}

void SelezionaProspetto(HWND area, std::size_t inizio, std::size_t fine) {
  Vista* v = DiVista(area);
  if (!v) return;
  Seleziona(*v, inizio, fine);
  MostraCursore(*v);
  const std::size_t riga = v->righe.RigaDi(v->ancora);
  ScorriA(*v, support::PrimaRigaAlCentro(riga, Visibili(*v), v->righe.Quante()), v->x);
}

}  // namespace win32
