#include "gui_win32/finestra.h"

#include <commctrl.h>

#include <cstring>
#include <utility>

#include "gui_win32/prospetto.h"
#include "support/disposizione.h"

namespace win32 {
namespace {

constexpr const char* kClasse = "CheckORDLFinestra";
// The room left and right of a folder in its green band.
constexpr int kMargineCartella = 60;

COLORREF Rgb(support::Colore c) {
  return RGB(c.r, c.g, c.b);
}

void Registra(WNDPROC procedura) {
  static const bool fatto = [procedura] {
    INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_PROGRESS_CLASS | ICC_TREEVIEW_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&icc);
    WNDCLASSEXA c{};
    c.cbSize = sizeof(c);
    c.lpfnWndProc = procedura;
    c.hInstance = GetModuleHandleA(nullptr);
    // The program's icon is resource 1; a test executable has none and gets the system's.
    c.hIcon = LoadIconA(c.hInstance, MAKEINTRESOURCEA(1));
    if (!c.hIcon) c.hIcon = LoadIconA(nullptr, MAKEINTRESOURCEA(32512));  // IDI_APPLICATION
    c.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));            // IDC_ARROW
    c.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    c.lpszClassName = kClasse;
    RegistraProspetto();
    return RegisterClassExA(&c) != 0;
  }();
  (void)fatto;
}

struct Classe {
  const char* nome;
  DWORD stile;
  DWORD esteso;
};

Classe ClasseDi(support::TipoControllo t) {
  using support::TipoControllo;
  switch (t) {
    case TipoControllo::Pulsante:
      return {"BUTTON", BS_PUSHBUTTON, 0};
    case TipoControllo::Etichetta:
      // A folder or a status is shown as it is: no "&" read as an accelerator, no wrapping.
      return {"STATIC", SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE, 0};
    case TipoControllo::EtichettaCartella:
      // Drawn by the window, with margins and the middle of a long folder left out; SS_NOTIFY lets the
      // tooltip see the mouse.
      return {"STATIC", SS_OWNERDRAW | SS_NOTIFY, 0};
    case TipoControllo::Barra:
      return {PROGRESS_CLASSA, 0, 0};
    case TipoControllo::Riga:
      return {"EDIT", ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    case TipoControllo::RigaCartella:
      return {"EDIT", ES_AUTOHSCROLL | ES_READONLY, WS_EX_CLIENTEDGE};
    case TipoControllo::Area:
      return {kClasseProspetto, WS_HSCROLL | WS_VSCROLL, WS_EX_CLIENTEDGE};
    case TipoControllo::ListaDrive:
      return {"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL, 0};
    case TipoControllo::ListaCartelle:
      return {WC_TREEVIEWA, TVS_HASLINES | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP, WS_EX_CLIENTEDGE};
  }
  return {"STATIC", 0, 0};
}

// The modal windows open now, innermost last, above the main window: the owner of a message box or of the
// file dialog.
std::vector<HWND>& Pila() {
  static std::vector<HWND> pila;
  return pila;
}

HFONT FontProspetti() {
  HDC dc = GetDC(nullptr);
  const int altezza =
      -MulDiv(static_cast<int>(support::kPuntiProspetti * 100), GetDeviceCaps(dc, LOGPIXELSY), 7200);
  ReleaseDC(nullptr, dc);
  return CreateFontA(altezza, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                     CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, support::kFontProspetti);
}

}  // namespace

int Px(int twips) {
  static const int dpi = [] {
    HDC dc = GetDC(nullptr);
    const int d = GetDeviceCaps(dc, LOGPIXELSY);
    ReleaseDC(nullptr, dc);
    return d > 0 ? d : 96;
  }();
  return MulDiv(twips, dpi, support::kTwipsPerPollice);
}

HFONT FontDialogo() {
  static HFONT font = [] {
    NONCLIENTMETRICSA m{};
    m.cbSize = sizeof(m);
    if (SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(m), &m, 0))
      return CreateFontIndirectA(&m.lfMessageFont);
    return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
  }();
  return font;
}

Finestra::~Finestra() {
  if (hwnd_) {
    SetWindowLongPtrA(hwnd_, GWLP_USERDATA, 0);
    if (HWND p = GetWindow(hwnd_, GW_OWNER)) EnableWindow(p, TRUE);
    DestroyWindow(hwnd_);
  }
  if (fontArea_) DeleteObject(fontArea_);
  if (verde_) DeleteObject(verde_);
}

void Finestra::Crea(const support::Forma& forma, HWND proprietario, DWORD stile, HMENU menu) {
  Registra(&Procedura);
  forma_ = &forma;
  RECT r{0, 0, Px(forma.larghezza), Px(forma.altezza)};
  AdjustWindowRectEx(&r, stile, menu != nullptr, 0);
  CreateWindowExA(0, kClasse, forma.caption, stile, CW_USEDEFAULT, CW_USEDEFAULT, r.right - r.left,
                  r.bottom - r.top, proprietario, menu, GetModuleHandleA(nullptr), this);
  verde_ = CreateSolidBrush(Rgb(support::kVerdeScuro));

  int id = kPrimoId;
  for (const support::Controllo& c : forma.controlli) {
    const Classe k = ClasseDi(c.tipo);
    const support::Rettangolo q = support::RettangoloMostrato(forma, c);
    // A drop-down list's height is that of its open list.
    const int h = c.tipo == support::TipoControllo::ListaDrive ? Px(q.h) * 8 : Px(q.h);
    HWND w = CreateWindowExA(k.esteso, k.nome, c.testo, WS_CHILD | WS_VISIBLE | k.stile, Px(q.l), Px(q.t),
                             Px(q.w), h, hwnd_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id++)),
                             GetModuleHandleA(nullptr), nullptr);
    if (c.tipo == support::TipoControllo::Area) {
      fontArea_ = FontProspetti();
      SendMessageA(w, WM_SETFONT, reinterpret_cast<WPARAM>(fontArea_), FALSE);
    } else {
      SendMessageA(w, WM_SETFONT, reinterpret_cast<WPARAM>(FontDialogo()), FALSE);
    }
    if (c.tipo == support::TipoControllo::Barra) SendMessageA(w, PBM_SETRANGE32, 0, 100);
    controlli_.push_back(w);
  }
  // The folder controls show their whole text as a tooltip, asked for when it shows.
  suggerimenti_ = CreateWindowExA(
      WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT,
      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, hwnd_, nullptr, GetModuleHandleA(nullptr), nullptr);
  for (std::size_t i = 0; i < controlli_.size(); ++i) {
    if (!Verde(controlli_[i])) continue;
    TOOLINFOA t{};
    t.cbSize = TTTOOLINFOA_V2_SIZE;
    t.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    t.hwnd = hwnd_;
    t.uId = reinterpret_cast<UINT_PTR>(controlli_[i]);
    t.lpszText = LPSTR_TEXTCALLBACKA;
    SendMessageA(suggerimenti_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&t));
  }
  SendMessageA(suggerimenti_, TTM_SETMAXTIPWIDTH, 0, GetSystemMetrics(SM_CXSCREEN) / 2);

  // The tab key follows the z order: the form's order first, each with a tab stop.
  HWND prima = HWND_TOP;
  for (const char* nome : forma.ordineTab) {
    HWND w = Controllo(nome);
    SetWindowLongPtrA(w, GWL_STYLE, GetWindowLongPtrA(w, GWL_STYLE) | WS_TABSTOP);
    SetWindowPos(w, prima, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    prima = w;
  }
}

HWND Finestra::Controllo(const char* nome) const {
  const int id = IdDi(nome);
  return id < 0 ? nullptr : controlli_[static_cast<std::size_t>(id - kPrimoId)];
}

int Finestra::IdDi(const char* nome) const {
  for (std::size_t i = 0; i < forma_->controlli.size(); ++i)
    if (std::string_view(nome) == forma_->controlli[i].nome) return kPrimoId + static_cast<int>(i);
  return -1;
}

const support::Controllo* Finestra::Descrizione(HWND controllo) const {
  if (!controllo || GetParent(controllo) != hwnd_) return nullptr;
  const int id = GetDlgCtrlID(controllo);
  if (id < kPrimoId || id - kPrimoId >= static_cast<int>(forma_->controlli.size())) return nullptr;
  return &forma_->controlli[static_cast<std::size_t>(id - kPrimoId)];
}

bool Finestra::Verde(HWND controllo) const {
  const support::Controllo* c = Descrizione(controllo);
  return c && (c->tipo == support::TipoControllo::EtichettaCartella ||
               c->tipo == support::TipoControllo::RigaCartella);
}

void Finestra::Chiudi() {
  if (hwnd_) SendMessageA(hwnd_, WM_CLOSE, 0, 0);
}

void Finestra::AlCentro() {
  RECT area{}, r{};
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
  GetWindowRect(hwnd_, &r);
  const int w = r.right - r.left, h = r.bottom - r.top;
  SetWindowPos(hwnd_, nullptr, area.left + (area.right - area.left - w) / 2,
               area.top + (area.bottom - area.top - h) / 2, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

namespace {

struct Ricerca {
  HWND propria;
  std::string caption;
  std::vector<support::Punto> trovate;
};

BOOL CALLBACK RaccogliAltre(HWND h, LPARAM l) {
  auto* r = reinterpret_cast<Ricerca*>(l);
  char classe[32] = {};
  if (h == r->propria || !IsWindowVisible(h) || GetWindow(h, GW_OWNER) ||
      !GetClassNameA(h, classe, sizeof(classe)) || std::strcmp(classe, kClasse) != 0 ||
      TestoDi(h) != r->caption)
    return TRUE;
  RECT w{};
  GetWindowRect(h, &w);
  r->trovate.push_back({w.left, w.top});
  return TRUE;
}

}  // namespace

void Finestra::AlPostoLibero() {
  RECT area{}, r{};
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
  GetWindowRect(hwnd_, &r);
  Ricerca ricerca{hwnd_, TestoDi(hwnd_), {}};
  EnumWindows(RaccogliAltre, reinterpret_cast<LPARAM>(&ricerca));
  const support::Punto p = support::PostoLibero(
      {area.left, area.top, area.right - area.left, area.bottom - area.top}, r.right - r.left,
      r.bottom - r.top, ricerca.trovate, GetSystemMetrics(SM_CYCAPTION) + GetSystemMetrics(SM_CYFIXEDFRAME));
  SetWindowPos(hwnd_, nullptr, p.x, p.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK Finestra::Procedura(HWND h, UINT m, WPARAM w, LPARAM l) {
  auto* f = reinterpret_cast<Finestra*>(GetWindowLongPtrA(h, GWLP_USERDATA));
  if (!f && m == WM_NCCREATE) {
    f = static_cast<Finestra*>(reinterpret_cast<CREATESTRUCTA*>(l)->lpCreateParams);
    SetWindowLongPtrA(h, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(f));
    f->hwnd_ = h;
  }
  return f ? f->Messaggio(m, w, l) : DefWindowProcA(h, m, w, l);
}

LRESULT Finestra::Messaggio(UINT m, WPARAM w, LPARAM l) {
  switch (m) {
    case WM_COMMAND:
      // Enter, as the dialog manager gives it: it presses the button that has the focus, and nothing else.
      if (LOWORD(w) == IDOK && l == 0) {
        HWND f = GetFocus();
        char classe[16] = {};
        if (f && GetParent(f) == hwnd_ && GetClassNameA(f, classe, sizeof(classe)) &&
            lstrcmpiA(classe, "Button") == 0)
          SendMessageA(f, BM_CLICK, 0, 0);
        else
          Comando(IDOK, 0);
        return 0;
      }
      if (Comando(LOWORD(w), HIWORD(w))) return 0;
      break;
    case WM_NEXTDLGCTL: {
      HWND f = l ? reinterpret_cast<HWND>(w) : GetNextDlgTabItem(hwnd_, GetFocus(), w != 0);
      if (f) SetFocus(f);
      return 0;
    }
    case WM_ACTIVATE:
      // The focus comes back to the control that had it when the window was left for a box or a dialog.
      if (LOWORD(w) == WA_INACTIVE) {
        if (HWND f = GetFocus(); f && IsChild(hwnd_, f)) fuoco_ = f;
      } else {
        HWND f = fuoco_ && IsWindow(fuoco_) ? fuoco_ : GetNextDlgTabItem(hwnd_, nullptr, FALSE);
        if (f) SetFocus(f);
      }
      return 0;
    case WM_NOTIFY:
      if (reinterpret_cast<const NMHDR*>(l)->code == TTN_GETDISPINFOA) {
        auto* d = reinterpret_cast<NMTTDISPINFOA*>(l);
        const auto controllo = reinterpret_cast<HWND>(d->hdr.idFrom);
        testoSuggerimento_ = (d->uFlags & TTF_IDISHWND) ? Suggerimento(controllo) : "";
        // A folder shown whole needs no tooltip: an empty text shows none.
        if (Accorciato(controllo, testoSuggerimento_) == testoSuggerimento_) testoSuggerimento_.clear();
        d->lpszText = testoSuggerimento_.data();
        return 0;
      }
      return Notifica(reinterpret_cast<const NMHDR*>(l));
    case WM_DRAWITEM: {
      const auto* d = reinterpret_cast<const DRAWITEMSTRUCT*>(l);
      if (d->CtlType != ODT_STATIC || !Verde(d->hwndItem)) break;
      FillRect(d->hDC, &d->rcItem, verde_);
      SetBkMode(d->hDC, TRANSPARENT);
      SetTextColor(d->hDC, Rgb(support::kVerdeChiaro));
      HGDIOBJ prima =
          SelectObject(d->hDC, reinterpret_cast<HFONT>(SendMessageA(d->hwndItem, WM_GETFONT, 0, 0)));
      RECT r = d->rcItem;
      r.left += Px(kMargineCartella);
      const std::string t = Accorciato(d->hwndItem, TestoDi(d->hwndItem));
      DrawTextA(d->hDC, t.c_str(), static_cast<int>(t.size()), &r,
                DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_NOPREFIX);
      SelectObject(d->hDC, prima);
      return TRUE;
    }
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLOREDIT:
      if (Verde(reinterpret_cast<HWND>(l))) {
        HDC dc = reinterpret_cast<HDC>(w);
        SetTextColor(dc, Rgb(support::kVerdeChiaro));
        SetBkColor(dc, Rgb(support::kVerdeScuro));
        return reinterpret_cast<LRESULT>(verde_);
      }
      break;
    case WM_CLOSE:
      if (PuoChiudersi()) {
        // The owner takes input again before this window goes, so that it is the one activated.
        if (HWND p = GetWindow(hwnd_, GW_OWNER)) EnableWindow(p, TRUE);
        DestroyWindow(hwnd_);
      }
      return 0;
    case WM_DESTROY:
      chiusa_ = true;
      // The tooltip is this window's own and goes with it.
      suggerimenti_ = nullptr;
      Distrutta();
      return 0;
    case WM_NCDESTROY: {
      HWND h = std::exchange(hwnd_, nullptr);
      SetWindowLongPtrA(h, GWLP_USERDATA, 0);
      return DefWindowProcA(h, m, w, l);
    }
    default:
      if (m >= WM_APP && m <= 0xBFFF) {
        Privato(m, w, l);
        return 0;
      }
  }
  return DefWindowProcA(hwnd_, m, w, l);
}

std::string Finestra::Suggerimento(HWND controllo) const {
  return TestoDi(controllo);
}

std::string TestoDi(HWND controllo) {
  std::string t(static_cast<std::size_t>(GetWindowTextLengthA(controllo)) + 1, '\0');
  t.resize(static_cast<std::size_t>(GetWindowTextA(controllo, t.data(), static_cast<int>(t.size()))));
  return t;
}

std::string Accorciato(HWND controllo, const std::string& testo) {
  RECT r{};
  GetClientRect(controllo, &r);
  char classe[16] = {};
  GetClassNameA(controllo, classe, sizeof(classe));
  if (lstrcmpiA(classe, "Static") == 0) {
    r.right -= 2 * Px(kMargineCartella);
  } else {
    const LRESULT margini = SendMessageA(controllo, EM_GETMARGINS, 0, 0);
    r.right -= LOWORD(margini) + HIWORD(margini);
  }
  HDC schermo = GetDC(controllo);
  HDC dc = CreateCompatibleDC(schermo);
  HGDIOBJ prima = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(controllo, WM_GETFONT, 0, 0)));
  // DrawText writes the shortened text over the string, which needs room for the ellipsis.
  std::string t = testo + std::string(8, '\0');
  DrawTextA(dc, t.data(), static_cast<int>(testo.size()), &r,
            DT_PATH_ELLIPSIS | DT_MODIFYSTRING | DT_SINGLELINE | DT_NOPREFIX);
  SelectObject(dc, prima);
  DeleteDC(dc);
  ReleaseDC(controllo, schermo);
  t.resize(std::strlen(t.c_str()));
  return t;
}

void MostraModale(Finestra& f) {
  HWND proprietario = GetWindow(f.Hwnd(), GW_OWNER);
  if (proprietario) EnableWindow(proprietario, FALSE);
  f.AlCentro();
  Pila().push_back(f.Hwnd());
  ShowWindow(f.Hwnd(), SW_SHOW);
  MSG m;
  while (!f.Chiusa()) {
    const BOOL r = GetMessageA(&m, nullptr, 0, 0);
    if (r <= 0) {
      // The program is ending: the loop of the main window must see it too.
      if (r == 0) PostQuitMessage(static_cast<int>(m.wParam));
      break;
    }
    if (!IsDialogMessageA(f.Hwnd(), &m)) {
      TranslateMessage(&m);
      DispatchMessageA(&m);
    }
  }
  std::erase(Pila(), f.Hwnd());
  if (proprietario) {
    EnableWindow(proprietario, TRUE);
    SetActiveWindow(proprietario);
  }
}

HWND Proprietario() {
  for (auto i = Pila().rbegin(); i != Pila().rend(); ++i)
    if (IsWindow(*i)) return *i;
  return nullptr;
}

void ImpostaPrincipale(HWND finestra) {
  Pila().insert(Pila().begin(), finestra);
}

void RimuoviPrincipale(HWND finestra) {
  std::erase(Pila(), finestra);
}

void SmaltisciCoda() {
  MSG m;
  while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
    if (m.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(m.wParam));
      return;
    }
    HWND radice = m.hwnd ? GetAncestor(m.hwnd, GA_ROOT) : nullptr;
    if (radice && IsDialogMessageA(radice, &m)) continue;
    TranslateMessage(&m);
    DispatchMessageA(&m);
  }
}

}  // namespace win32
