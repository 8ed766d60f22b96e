// The three Win32 windows on the demo machine, under Wine: each click is a message to a real control, goes
// to the operations, and what they leave shows in the controls. Each window's controls are compared with a
// file in tests/data/finestre; CHECKORDL_RIGENERA=1 rewrites those files instead.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "analysis/copia_anonima.h"
#include "analysis/forma_analisi.h"
#include "analysis/risposta.h"
#include "analysis/testo_completo.h"
#include "cli/macchina_demo.h"
#include "collection/controllo.h"
#include "collection/forma_principale.h"
#include "collection/scoperta.h"
#include "collection/snapshot.h"
#include "finestra_prova.h"
#include "gui_win32/finestra_analisi.h"
#include "gui_win32/finestra_getdir.h"
#include "gui_win32/finestra_principale.h"
#include "host/macchina.h"
#include "picker/forma_getdir.h"
#include "scenari_finestre.h"
#include "support/files.h"
#include "support/valori.h"

using analysis::Voce;

namespace {

struct Banco {
  MessaggiProva messaggi;
  DialogoFileProva file;
  AppuntiProva appunti;
  std::function<void(win32::FinestraGetDir&)> getDir = [](auto&) { FAIL() << "the folder picker was shown"; };
  std::function<void(win32::FinestraAnalisi&)> analisi = [](auto&) {
    FAIL() << "the analysis window was shown";
  };
  win32::Servizi Servizi() {
    return {messaggi, file, appunti, [this](auto& f) { getDir(f); }, [this](auto& f) { analisi(f); }};
  }
};

std::string Testo(HWND w) {
  std::string t(static_cast<std::size_t>(GetWindowTextLengthA(w)) + 1, '\0');
  t.resize(static_cast<std::size_t>(GetWindowTextA(w, t.data(), static_cast<int>(t.size()))));
  return t;
}

void Clic(HWND pulsante) {
  SendMessageA(pulsante, BM_CLICK, 0, 0);
}

void Menu(win32::FinestraAnalisi& f, const char* voce) {
  SendMessageA(f.Hwnd(), WM_COMMAND, static_cast<WPARAM>(win32::IdVoceBarra(voce)), 0);
}

// Client pixels as at 96 dpi: the windows scale with the display's resolution, one table holds for all.
int A96(long pixel) {
  HDC dc = GetDC(nullptr);
  const int dpi = GetDeviceCaps(dc, LOGPIXELSY);
  ReleaseDC(nullptr, dc);
  return MulDiv(static_cast<int>(pixel), 96, dpi);
}

// A window's controls, one line each: class, name, caption and place in client pixels at 96 dpi; the menu
// bar with its marks; then the order of the tab key.
std::string Controlli(const win32::Finestra& f, const support::Forma& forma) {
  std::ostringstream out;
  RECT c{};
  GetClientRect(f.Hwnd(), &c);
  out << '"' << Testo(f.Hwnd()) << "\" " << A96(c.right) << 'x' << A96(c.bottom) << '\n';
  for (const support::Controllo& k : forma.controlli) {
    HWND w = f.Controllo(k.nome);
    char classe[64] = {};
    GetClassNameA(w, classe, sizeof(classe));
    RECT r{};
    GetWindowRect(w, &r);
    MapWindowPoints(nullptr, f.Hwnd(), reinterpret_cast<POINT*>(&r), 2);
    out << classe << ' ' << k.nome << " \"" << Testo(w) << "\" " << A96(r.left) << ',' << A96(r.top) << ' '
        << A96(r.right - r.left) << 'x';
    // A drop-down list's height is the system's, from the fonts the machine has.
    if (std::string(classe) == WC_COMBOBOXA)
      out << '-';
    else
      out << A96(r.bottom - r.top);
    out << '\n';
  }
  if (HMENU barra = GetMenu(f.Hwnd())) {
    for (int i = 0; i < GetMenuItemCount(barra); ++i) {
      char t[128] = {};
      GetMenuStringA(barra, static_cast<UINT>(i), t, sizeof(t), MF_BYPOSITION);
      out << "menu \"" << t << "\":";
      HMENU sotto = GetSubMenu(barra, i);
      for (int j = 0; j < GetMenuItemCount(sotto); ++j) {
        GetMenuStringA(sotto, static_cast<UINT>(j), t, sizeof(t), MF_BYPOSITION);
        out << " \"" << t << '"'
            << ((GetMenuState(sotto, static_cast<UINT>(j), MF_BYPOSITION) & MF_CHECKED) ? "*" : "");
      }
      out << '\n';
    }
  }
  out << "tab:";
  HWND primo = GetNextDlgTabItem(f.Hwnd(), nullptr, FALSE);
  for (HWND t = primo; t;) {
    for (const support::Controllo& k : forma.controlli)
      if (f.Controllo(k.nome) == t) out << ' ' << k.nome;
    t = GetNextDlgTabItem(f.Hwnd(), t, FALSE);
    if (t == primo) break;
  }
  out << '\n';
  return out.str();
}

void ComeNelFile(const std::string& testo, const std::string& nome) {
  const std::string file = std::string(CHECKORDL_DATI_PROVA) + "/finestre/" + nome;
  if (std::getenv("CHECKORDL_RIGENERA")) {
    std::ofstream(file, std::ios::binary) << testo;
    return;
  }
  std::ifstream in(file, std::ios::binary);
  ASSERT_TRUE(in) << file;
  EXPECT_EQ(testo, std::string(std::istreambuf_iterator<char>(in), {})) << nome;
}

// The demo machine after a check run of the core: the snapshot is there to be read.
void Controllata() {
  FinestraProva run;
  formats::PrefRecord pref;
  collection::CercaInstallazioni(run.principale, pref);
  collection::Pul_Start_Click(run.principale);
  ASSERT_EQ(run.chiusure, 1);
}

}  // namespace

TEST(FinestreWin32, Controlli) {
  Banco banco;
  win32::FinestraPrincipale w(banco.Servizi());
  ComeNelFile(Controlli(w, collection::kFormaPrincipale), "win32_principale.txt");
  win32::FinestraAnalisi a(w.Hwnd(), banco.messaggi, banco.file, banco.appunti);
  a.Modello().Menu.SetChecked(Voce::mnu_ShowPref, true);
  ComeNelFile(Controlli(a, analysis::kFormaAnalisi), "win32_analisi.txt");
  MessaggiProva msg;
  picker::Dialog_GetDir m{msg};
  picker::Carica(m);
  picker::ImpostaValori(m, "C:\\Giochi");
  win32::FinestraGetDir g(nullptr, m);
  ComeNelFile(Controlli(g, picker::kFormaGetDir), "win32_getdir.txt");
}

// The cases of tests/data/finestre/avvio_e_cambia.txt, in order on one window.
TEST(FinestreWin32, AvvioECambia) {
  FinestraProva core;
  formats::PrefRecord pref;
  collection::CercaInstallazioni(core.principale, pref);
  ASSERT_FALSE(core.nomeTrle.testo.empty() || core.dirOrdl.testo.empty());
  Banco banco;
  win32::FinestraPrincipale w(banco.Servizi());
  const auto casi =
      CasiCambia({{"Label_NomeTrle", core.nomeTrle.testo}, {"Label_DirORDL", core.dirOrdl.testo}});
  ASSERT_FALSE(casi.empty());
  for (const auto& c : casi) {
    SCOPED_TRACE(c.nome);
    ASSERT_TRUE(PreparaCaso(c));
    int mostrato = 0;
    banco.getDir = [&](win32::FinestraGetDir& f) {
      ++mostrato;
      picker::ImpostaValori(f.Modello(), c.cartella);
      f.Aggiorna();
      EXPECT_EQ(Testo(f.Controllo("Text_Path")), c.cartella);
      Clic(f.Controllo(c.ok ? "OKButton" : "CancelButton"));
      EXPECT_TRUE(f.Chiusa());
    };
    banco.messaggi.tutti.clear();
    if (!c.pulsante.empty()) Clic(w.Controllo(c.pulsante.c_str()));
    EXPECT_EQ(mostrato, c.pulsante.empty() ? 0 : 1);
    EXPECT_EQ(banco.messaggi.tutti, c.messaggi);
    EXPECT_EQ(Testo(w.Controllo(c.etichetta.c_str())), c.dopo);
  }
}

// Steps run one to a tick of a timer, inside a modal loop; the last one closes the window.
struct Passi {
  static std::vector<std::function<void()>>& Elenco() {
    static std::vector<std::function<void()>> e;
    return e;
  }
  explicit Passi(std::vector<std::function<void()>> passi) {
    Elenco() = std::move(passi);
    timer_ = SetTimer(nullptr, 0, 20, Passo);
  }
  // A named function: a 32-bit build calls timers as __stdcall, which a lambda is not.
  static void CALLBACK Passo(HWND, UINT, UINT_PTR, DWORD) {
    if (Elenco().empty()) return;
    auto passo = std::move(Elenco().front());
    Elenco().erase(Elenco().begin());
    passo();
  }
  ~Passi() { KillTimer(nullptr, timer_); }
  UINT_PTR timer_;
};

void Tasto(HWND controllo, WPARAM tasto) {
  SetFocus(controllo);
  PostMessageA(controllo, WM_KEYDOWN, tasto, 1);
}

// The system clipboard's plain text.
std::string TestoAppunti() {
  if (!OpenClipboard(nullptr)) return "(clipboard not open)";
  const char* t = static_cast<const char*>(GetClipboardData(CF_TEXT));
  std::string testo = t ? t : "";
  CloseClipboard();
  return testo;
}

std::string Suggerimento(const win32::Finestra& f, HWND controllo) {
  NMTTDISPINFOA d{};
  d.hdr = {controllo, reinterpret_cast<UINT_PTR>(controllo), static_cast<UINT>(TTN_GETDISPINFOA)};
  d.uFlags = TTF_IDISHWND;
  SendMessageA(f.Hwnd(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&d));
  return d.lpszText ? d.lpszText : "";
}

// Nothing cut off: the caption fits the title bar beside its buttons; a long folder loses its middle on
// screen, never in what the operations read, and shows whole as a tooltip; a short one has none.
TEST(FinestreWin32, NienteTagliato) {
  Banco banco;
  win32::FinestraPrincipale w(banco.Servizi());
  NONCLIENTMETRICSA m{};
  m.cbSize = sizeof(m);
  ASSERT_TRUE(SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(m), &m, 0));
  HFONT font = CreateFontIndirectA(&m.lfCaptionFont);
  HDC dc = GetDC(w.Hwnd());
  SelectObject(dc, font);
  SIZE caption{};
  const std::string titolo = Testo(w.Hwnd());
  GetTextExtentPoint32A(dc, titolo.c_str(), static_cast<int>(titolo.size()), &caption);
  ReleaseDC(w.Hwnd(), dc);
  DeleteObject(font);
  RECT r{};
  GetWindowRect(w.Hwnd(), &r);
  EXPECT_LE(caption.cx + GetSystemMetrics(SM_CXSMICON) + 3 * GetSystemMetrics(SM_CXSIZE) +
                2 * GetSystemMetrics(SM_CXFRAME) + 16,
            r.right - r.left);

  const std::string lunga = "C:\\Giochi\\" + std::string(80, 'x') + "\\Tomb Raider Level Editor\\Trle";
  w.Modello().Label_NomeTrle.ImpostaTesto(lunga);
  EXPECT_EQ(w.Modello().Label_NomeTrle.Testo(), lunga);
  const std::string etichetta = win32::Accorciato(w.Controllo("Label_NomeTrle"), lunga);
  EXPECT_TRUE(etichetta.starts_with("C:\\") && etichetta.ends_with("\\Trle") &&
              etichetta.find("...") != std::string::npos)
      << etichetta;
  EXPECT_EQ(Suggerimento(w, w.Controllo("Label_NomeTrle")), lunga);
  // A folder shown whole has no tooltip to repeat it.
  w.Modello().Label_NomeTrle.ImpostaTesto("C:\\Trle");
  EXPECT_EQ(Suggerimento(w, w.Controllo("Label_NomeTrle")), "");
  // The window's tooltip holds the two folder labels, each asking for its text when it shows.
  HWND tooltip = FindWindowExA(nullptr, nullptr, TOOLTIPS_CLASSA, nullptr);
  while (tooltip && GetWindow(tooltip, GW_OWNER) != w.Hwnd())
    tooltip = FindWindowExA(nullptr, tooltip, TOOLTIPS_CLASSA, nullptr);
  ASSERT_TRUE(tooltip);
  EXPECT_EQ(SendMessageA(tooltip, TTM_GETTOOLCOUNT, 0, 0), 2);

  MessaggiProva msg;
  picker::Dialog_GetDir g{msg};
  picker::Carica(g);
  win32::FinestraGetDir f(nullptr, g);
  g.Text_Path = lunga;
  f.Aggiorna();
  const std::string mostrato = Testo(f.Controllo("Text_Path"));
  EXPECT_LT(mostrato.size(), lunga.size());
  EXPECT_NE(mostrato.find("..."), std::string::npos) << mostrato;
  EXPECT_TRUE(mostrato.starts_with("C:\\") && mostrato.ends_with("\\Trle")) << mostrato;
  EXPECT_EQ(Suggerimento(f, f.Controllo("Text_Path")), lunga);
}

// The analysis window and the picker are modal: the main window takes no input while one is open. Timer
// procedures are named functions: a 32-bit build calls them as __stdcall, which a lambda is not.
HWND gPrincipale, gAnalisi;
bool gDisabilitata = false;

void CALLBACK GuardaEChiudi(HWND, UINT, UINT_PTR id, DWORD) {
  KillTimer(nullptr, id);
  gDisabilitata = !IsWindowEnabled(gPrincipale) && IsWindowVisible(gAnalisi);
  PostMessageA(gAnalisi, WM_CLOSE, 0, 0);
}

TEST(FinestreWin32, Modale) {
  Banco banco;
  win32::FinestraPrincipale w(banco.Servizi());
  win32::FinestraAnalisi a(w.Hwnd(), banco.messaggi, banco.file, banco.appunti);
  gPrincipale = w.Hwnd();
  gAnalisi = a.Hwnd();
  const UINT_PTR t = SetTimer(nullptr, 0, 20, GuardaEChiudi);
  win32::MostraModale(a);
  KillTimer(nullptr, t);
  EXPECT_TRUE(gDisabilitata);
  EXPECT_TRUE(a.Chiusa());
  EXPECT_TRUE(IsWindowEnabled(w.Hwnd()));
}

// The keyboard in the modal windows: Enter opens a folder of the list or presses the focused button; Escape
// closes the picker as its frame does, with nothing chosen, and nothing else; Tab leaves the report area.
TEST(FinestreWin32, Tastiera) {
  MessaggiProva msg;
  std::string dopoInvio;
  bool apertaDopoTasto = false;
  for (const WPARAM ultimo : {VK_RETURN, VK_ESCAPE}) {
    picker::Dialog_GetDir m{msg};
    picker::Carica(m);
    picker::ImpostaValori(m, "C:\\Giochi");
    win32::FinestraGetDir g(nullptr, m);
    HWND albero = g.Controllo("Dir1");
    {
      Passi p({[&] {
                 auto* v = reinterpret_cast<HTREEITEM>(SendMessageA(albero, TVM_GETNEXTITEM, TVGN_CARET, 0));
                 v = reinterpret_cast<HTREEITEM>(
                     SendMessageA(albero, TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(v)));
                 SendMessageA(albero, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(v));
                 Tasto(albero, VK_RETURN);
               },
               [&] {
                 dopoInvio = Testo(g.Controllo("Text_Path"));
                 Tasto(g.Controllo(ultimo == VK_RETURN ? "OKButton" : "Dir1"), ultimo);
               },
               [&] {
                 apertaDopoTasto = true;
                 g.Chiudi();
               }});
      win32::MostraModale(g);
    }
    EXPECT_EQ(dopoInvio, "C:\\Giochi\\Trle");
    EXPECT_FALSE(apertaDopoTasto);
    EXPECT_EQ(m.ExitValue, ultimo == VK_RETURN);
    EXPECT_EQ(m.PathDir, ultimo == VK_RETURN ? "C:\\Giochi\\Trle" : "C:\\Giochi");
  }

  Banco banco;
  win32::FinestraAnalisi a(nullptr, banco.messaggi, banco.file, banco.appunti);
  HWND area = a.Controllo("Text_Out");
  bool apertaDopoTasti = false;
  HWND fuoco = nullptr;
  {
    Passi p({[&] {
               Tasto(area, VK_ESCAPE);
               PostMessageA(area, WM_KEYDOWN, VK_TAB, 1);
             },
             [&] {
               apertaDopoTasti = !a.Chiusa();
               fuoco = GetFocus();
               a.Chiudi();
             }});
    win32::MostraModale(a);
  }
  EXPECT_TRUE(apertaDopoTasti);
  EXPECT_EQ(fuoco, a.Controllo("Pul_Trova"));
  EXPECT_EQ(a.Area().SelLength(), 0);
}

// The machine's E: is a link to a missing folder: a drive without medium.
TEST(FinestreWin32, Picker) {
  MessaggiProva msg;
  picker::Dialog_GetDir m{msg};
  picker::Carica(m);
  picker::ImpostaValori(m, "C:\\Giochi");
  win32::FinestraGetDir f(nullptr, m);
  const auto& righe = f.Righe();
  ASSERT_GE(righe.size(), 3u);
  EXPECT_EQ(righe[1].nome, "Giochi");
  EXPECT_EQ(righe[2].nome, "Trle");
  // A double click on "Trle" in the tree view.
  HWND albero = f.Controllo("Dir1");
  auto* voce = reinterpret_cast<HTREEITEM>(SendMessageA(albero, TVM_GETNEXTITEM, TVGN_CARET, 0));
  voce = reinterpret_cast<HTREEITEM>(
      SendMessageA(albero, TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(voce)));
  SendMessageA(albero, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(voce));
  NMHDR n{albero, static_cast<UINT_PTR>(GetDlgCtrlID(albero)), static_cast<UINT>(NM_DBLCLK)};
  SendMessageA(f.Hwnd(), WM_NOTIFY, n.idFrom, reinterpret_cast<LPARAM>(&n));
  win32::SmaltisciCoda();
  EXPECT_EQ(Testo(f.Controllo("Text_Path")), "C:\\Giochi\\Trle");

  // A drive without medium: listed, refused when chosen.
  HWND drive = f.Controllo("Drive1");
  const auto e =
      SendMessageA(drive, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("E:"));
  ASSERT_GE(e, 0);
  SendMessageA(drive, CB_SETCURSEL, static_cast<WPARAM>(e), 0);
  SendMessageA(f.Hwnd(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(drive), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(drive));
  win32::SmaltisciCoda();
  EXPECT_EQ(msg.tutti, std::vector<std::string>{"critical: Drive not ready"});
  EXPECT_EQ(Testo(drive), "C:");
  EXPECT_EQ(Testo(f.Controllo("Text_Path")), "C:\\Giochi\\Trle");

  RemoveDirectoryA("C:\\Nuova \xe8");
  f.AttivaRiga(0);
  SetWindowTextA(f.Controllo("Text_PathDir"), "Nuova \xe8");
  Clic(f.Controllo("Pul_NuovaCartella"));
  EXPECT_EQ(Testo(f.Controllo("Text_Path")), "C:\\Nuova \xe8");
  EXPECT_TRUE(support::DirExists("C:\\Nuova \xe8"));
  Clic(f.Controllo("OKButton"));
  EXPECT_EQ(m.PathDir, "C:\\Nuova \xe8");
  EXPECT_TRUE(m.ExitValue && f.Chiusa());
}

// The picker's OK and Cancel stand in one row, top and bottom, whatever the DPI.
TEST(FinestreWin32, PulsantiInRiga) {
  MessaggiProva msg;
  picker::Dialog_GetDir m{msg};
  picker::Carica(m);
  win32::FinestraGetDir g(nullptr, m);
  RECT ok{}, annulla{};
  GetWindowRect(g.Controllo("OKButton"), &ok);
  GetWindowRect(g.Controllo("CancelButton"), &annulla);
  EXPECT_EQ(ok.top, annulla.top);
  EXPECT_EQ(ok.bottom, annulla.bottom);
}

// A second program started while one runs opens a title bar's height down and right of the first, which
// stays in the middle; once the first has gone, the middle is free again.
TEST(FinestreWin32, SecondaNonSopraLaPrima) {
  Banco banco;
  const auto angolo = [](const win32::Finestra& f) {
    RECT r{};
    GetWindowRect(f.Hwnd(), &r);
    return POINT{r.left, r.top};
  };
  auto prima = std::make_unique<win32::FinestraPrincipale>(banco.Servizi());
  prima->AlCentro();
  const POINT centro = angolo(*prima);
  prima->AlPostoLibero();
  EXPECT_EQ(angolo(*prima).x, centro.x);
  EXPECT_EQ(angolo(*prima).y, centro.y);
  ShowWindow(prima->Hwnd(), SW_SHOWNOACTIVATE);
  win32::FinestraPrincipale seconda(banco.Servizi());
  seconda.AlPostoLibero();
  const int passo = angolo(seconda).x - centro.x;
  EXPECT_GT(passo, 0);
  EXPECT_EQ(angolo(seconda).y - centro.y, passo);
  prima.reset();
  win32::FinestraPrincipale terza(banco.Servizi());
  terza.AlPostoLibero();
  EXPECT_EQ(angolo(terza).x, centro.x);
  EXPECT_EQ(angolo(terza).y, centro.y);
}

TEST(FinestreWin32, ControlloCompleto) {
  Banco banco;
  win32::FinestraPrincipale w(banco.Servizi());
  ShowWindow(w.Hwnd(), SW_SHOW);
  // Clicks and a close that wait in the queue reach the window while the run scans, and find it busy.
  for (const char* p : {"Pul_Annulla", "Pul_CambiaTrle", "Pul_EstraiDati", "Pul_Start"})
    PostMessageA(w.Controllo(p), BM_CLICK, 0, 0);
  PostMessageA(w.Hwnd(), WM_CLOSE, 0, 0);
  Clic(w.Controllo("Pul_Start"));
  EXPECT_TRUE(w.Chiusa());
  ASSERT_EQ(banco.messaggi.tutti.size(), 1u);
  EXPECT_TRUE(banco.messaggi.tutti[0].starts_with("plain: Scanning is complete\r\n"))
      << banco.messaggi.tutti[0];
  EXPECT_GT(host::LunghezzaFile(collection::kNomeSnapshot, nullptr), 0);
}

// Every report item and the backup analysis in the window against what the core gives on the same snapshot.
TEST(FinestreWin32, LeggiDatiOgniProspetto) {
  Controllata();
  ASSERT_TRUE(cli::CreaElenchiDemo(host::CartellaProgramma()));
  Banco banco;
  win32::FinestraPrincipale w(banco.Servizi());
  banco.file.Annulla();
  Clic(w.Controllo("Pul_EstraiDati"));
  AnalisiProva atteso(host::CartellaProgramma());
  analysis::ImpostaValori(atteso.d, collection::kNomeSnapshot);
  int mostrata = 0;
  banco.analisi = [&](win32::FinestraAnalisi& f) {
    ++mostrata;
    EXPECT_EQ(Testo(f.Hwnd()), analysis::TitoloFinestra(atteso.d));
    EXPECT_EQ(f.Area().Testo(), atteso.area.Testo());
    for (int i = 0; i < analysis::kNumeroVoci; ++i) {
      const auto v = static_cast<Voce>(i);
      analysis::EseguiVoce(atteso.d, v);
      SendMessageA(f.Hwnd(), WM_COMMAND, static_cast<WPARAM>(win32::IdVoce(v)), 0);
      EXPECT_EQ(f.Area().Testo(), atteso.area.Testo()) << analysis::VoceDi(v).parola;
      // The control holds the report's own bytes: a CR LF is two characters there too.
      EXPECT_EQ(Testo(f.Controllo("Text_Out")), atteso.area.Testo()) << analysis::VoceDi(v).parola;
      for (int j = 0; j < analysis::kNumeroVoci; ++j)
        EXPECT_EQ(
            (GetMenuState(f.Menu(), static_cast<UINT>(win32::IdVoce(static_cast<Voce>(j))), MF_BYCOMMAND) &
             MF_CHECKED) != 0,
            atteso.segni.Checked(static_cast<Voce>(j)));
    }
    EXPECT_EQ(banco.messaggi.tutti, atteso.messaggi.tutti);
    // The anonymized copy, as the model makes it: the dialog's name, the message, the text left alone.
    const std::string copia = host::CartellaProgramma() + "\\copia.bin";
    banco.file.Scegli(copia);
    Menu(f, "mnu_SalvaCopiaAnonima");
    atteso.dialogo.Scegli(copia + ".x");
    analysis::mnu_SalvaCopiaAnonima_Click(atteso.d);
    EXPECT_EQ(support::LeggiFile(copia), support::LeggiFile(copia + ".x"));
    ASSERT_FALSE(banco.messaggi.tutti.empty());
    EXPECT_TRUE(
        banco.messaggi.tutti.back().starts_with("plain: The anonymized copy is saved as " + copia + "."));
    EXPECT_EQ(f.Area().Testo(), atteso.area.Testo());
    Menu(f, "mnu_Esci");
    EXPECT_TRUE(f.Chiusa());
  };
  banco.file.Scegli(collection::kNomeSnapshot);
  Clic(w.Controllo("Pul_EstraiDati"));
  EXPECT_EQ(mostrata, 1);
  EXPECT_FALSE(w.Chiusa());
}

TEST(FinestreWin32, RicercaCopiaSalvaCarica) {
  Banco banco;
  win32::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
  const std::string testo("tomb\r\nTOMB4.exe \n\0caf\xe9", 22);
  f.Area().ImpostaTesto(testo);
  SetWindowTextA(f.Controllo("Text_Cerca"), "TOMB");
  Clic(f.Controllo("Pul_Trova"));
  Clic(f.Controllo("Pul_Dopo"));
  DWORD a = 0, b = 0;
  SendMessageA(f.Controllo("Text_Out"), EM_GETSEL, reinterpret_cast<WPARAM>(&a),
               reinterpret_cast<LPARAM>(&b));
  EXPECT_EQ(testo.substr(a, b - a), "TOMB4.exe");
  Clic(f.Controllo("Pul_Prima"));
  EXPECT_EQ(f.Area().SelText(), "tomb");
  Menu(f, "mnu_Copia");
  EXPECT_EQ(banco.appunti.testo, std::optional<std::string>("tomb"));

  // The system's clipboard gets plain text.
  win32::AppuntiW().ImpostaTesto("caf\xe9");
  EXPECT_EQ(TestoAppunti(), "caf\xe9");

  banco.file.Scegli("C:\\prospetto.txt");
  Menu(f, "mnu_SalvaFile");
  EXPECT_EQ(support::LeggiFile("C:\\prospetto.txt"), testo);
  f.Area().ImpostaTesto("altro");
  banco.file.Scegli("C:\\prospetto.txt");
  Menu(f, "mnu_CaricaFile");
  EXPECT_EQ(f.Area().Testo(), testo);
  EXPECT_TRUE(banco.messaggi.tutti.empty());
  // A save that cannot be written says so, naming the file.
  banco.file.Scegli("C:\\Manca\\prospetto.txt");
  Menu(f, "mnu_SalvaFile");
  ASSERT_EQ(banco.messaggi.tutti.size(), 1u);
  EXPECT_TRUE(banco.messaggi.tutti[0].starts_with("critical: Could not write C:\\Manca\\prospetto.txt: "));
  EXPECT_EQ(win32::FiltroWin32("File Info_Ordl.bin|info_ordl.bin|Testi|*.txt; *.log"),
            std::string("File Info_Ordl.bin\0info_ordl.bin\0Testi\0*.txt;*.log\0\0", 52));
}

// A file that is not a snapshot: its one finding says so, as the headless tool's does.
TEST(FinestreWin32, RiepilogoSnapshotIlleggibile) {
  ASSERT_TRUE(support::ScriviFileTesto("C:\\rotto.bin", std::string(40, 'x')));
  Banco banco;
  win32::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
  analysis::ImpostaValori(f.Modello(), "C:\\rotto.bin");
  EXPECT_EQ(banco.messaggi.tutti, std::vector<std::string>{"plain: Errrore estraendo file"});
  Menu(f, "mnu_RiepilogoProblemi");
  EXPECT_TRUE(f.Area().Testo().starts_with("Findings: 1 fail, 0 warn, 0 pass\r\nFAIL  snapshot.unreadable"))
      << f.Area().Testo();
}

// The report view under the mouse and the keys: a click lands on the character drawn there, a shift click
// extends to one, End with Shift held to its line's end, and a copy holds the string's bytes.
TEST(FinestreWin32, AreaMouseETasti) {
  Banco banco;
  win32::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
  const HWND area = f.Controllo("Text_Out");
  f.Area().ImpostaTesto("uno\tdue\r\ntre\r\nquattro");
  const auto clic = [&](WPARAM pos, WPARAM tasti) {
    const auto p = static_cast<DWORD>(SendMessageA(area, EM_POSFROMCHAR, pos, 0));
    const LPARAM l = MAKELPARAM(LOWORD(p) + 1, HIWORD(p) + 2);
    SendMessageA(area, WM_LBUTTONDOWN, MK_LBUTTON | tasti, l);
    SendMessageA(area, WM_LBUTTONUP, tasti, l);
  };
  clic(4, 0);
  clic(17, MK_SHIFT);
  EXPECT_EQ(f.Area().SelText(), "due\r\ntre\r\nqua");
  SendMessageA(area, WM_COPY, 0, 0);
  EXPECT_EQ(TestoAppunti(), "due\r\ntre\r\nqua");
  BYTE tasti[256] = {};
  GetKeyboardState(tasti);
  tasti[VK_SHIFT] = 0x80;
  SetKeyboardState(tasti);
  SendMessageA(area, WM_KEYDOWN, VK_END, 1);
  tasti[VK_SHIFT] = 0;
  SetKeyboardState(tasti);
  EXPECT_EQ(f.Area().SelText(), "due\r\ntre\r\nquattro");
}

// A found word's line stands in the middle of the area, not on its last line.
TEST(FinestreWin32, TrovatoAlCentro) {
  Banco banco;
  win32::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
  std::string testo;
  for (int i = 0; i < 1000; ++i) testo += "riga x" + std::to_string(i) + "\r\n";
  f.Area().ImpostaTesto(testo);
  SetWindowTextA(f.Controllo("Text_Cerca"), "x600");
  Clic(f.Controllo("Pul_Trova"));
  ASSERT_EQ(f.Area().SelText(), "x600");
  const HWND area = f.Controllo("Text_Out");
  const auto y = [&](long pos) {
    return static_cast<short>(HIWORD(SendMessageA(area, EM_POSFROMCHAR, static_cast<WPARAM>(pos), 0)));
  };
  // Each line is 11 bytes: the same column one line down.
  const int riga = y(f.Area().SelStart() + 11) - y(f.Area().SelStart());
  RECT r{};
  GetClientRect(area, &r);
  EXPECT_GT(riga, 0);
  EXPECT_LE(std::abs(y(f.Area().SelStart()) + riga / 2 - r.bottom / 2), riga);
}

// A critical box of the system: the program's title, the error icon, one OK button. It is answered from a
// timer inside its own modal loop.
std::string gTitolo, gTesto;
bool gIcona = false;
int gPulsanti = 0;

void CALLBACK LeggiERispondi(HWND, UINT, UINT_PTR id, DWORD) {
  HWND box = FindWindowA("#32770", nullptr);
  if (!box) return;
  KillTimer(nullptr, id);
  gTitolo = Testo(box);
  gTesto = Testo(GetDlgItem(box, 0xFFFF));
  for (HWND c = GetWindow(box, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
    char classe[32] = {};
    GetClassNameA(c, classe, sizeof(classe));
    if (std::string_view(classe) == "Button" && IsWindowVisible(c)) ++gPulsanti;
    if (std::string_view(classe) == "Static" && (GetWindowLongA(c, GWL_STYLE) & SS_ICON) == SS_ICON)
      gIcona = true;
  }
  PostMessageA(box, WM_COMMAND, IDOK, 0);
}

TEST(FinestreWin32, ScatolaCritica) {
  const std::string& titolo = gTitolo;
  const std::string& testo = gTesto;
  const bool& icona = gIcona;
  const int& pulsanti = gPulsanti;
  const UINT_PTR t = SetTimer(nullptr, 0, 50, LeggiERispondi);
  win32::MessaggiW().Critico("Non trovo file: C:\\Caf\xe9\r\nfine");
  KillTimer(nullptr, t);
  EXPECT_EQ(titolo, "CheckORDL");
  EXPECT_EQ(testo, "Non trovo file: C:\\Caf\xe9\r\nfine");
  EXPECT_TRUE(icona);
  EXPECT_EQ(pulsanti, 1);
}

// ---- The anonymized copy ----
void CALLBACK AccettaCopia(HWND, UINT, UINT_PTR id, DWORD) {
  HWND d = FindWindowA("#32770", analysis::kTitoloCopiaAnonima);
  if (!d) return;
  KillTimer(nullptr, id);
  PostMessageA(d, WM_COMMAND, IDOK, 0);
}

// A snapshot in a folder of its own: the real save dialog, accepted as it opens, writes the copy beside it
// under the proposed name, and the closing message names what the copy keeps.
TEST(FinestreWin32, CopiaAnonimaComeProposta) {
  char temp[MAX_PATH] = {};
  ASSERT_GT(GetTempPathA(MAX_PATH, temp), 0u);
  const std::string inbox = std::string(temp) + "inbox-anonima";
  CreateDirectoryA(inbox.c_str(), nullptr);
  const std::string snapshot = inbox + "\\08-user-jose.bin", copia = inbox + "\\08-user-jose-anonymous.bin";
  const std::string ordeio = "C:\\Users\\Jos\xE9\\x jos\xE9.tr4\r\n";
  const collection::SnapshotInMemoria s{
      {1, {"C:\\Users\\Jos\xE9\\Trle\\ordeio.txt"}, {static_cast<std::int32_t>(ordeio.size())}}, {ordeio}};
  ASSERT_TRUE(support::ScriviFileIntero(snapshot, {collection::CodificaSnapshot(s)}));
  MessaggiProva messaggi;
  win32::DialogoFileW file;
  AppuntiProva appunti;
  win32::FinestraAnalisi f(nullptr, messaggi, file, appunti);
  analysis::ImpostaValori(f.Modello(), snapshot);
  messaggi.tutti.clear();
  const UINT_PTR t = SetTimer(nullptr, 0, 50, AccettaCopia);
  Menu(f, "mnu_SalvaCopiaAnonima");
  KillTimer(nullptr, t);
  EXPECT_TRUE(support::FileExists(copia));
  ASSERT_EQ(messaggi.tutti.size(), 1u);
  EXPECT_TRUE(messaggi.tutti[0].starts_with("plain: The anonymized copy is saved as " + copia + "."))
      << messaggi.tutti[0];
  EXPECT_NE(messaggi.tutti[0].find("jos\xE9.tr4 (a word of ordeio.txt)"), std::string::npos)
      << messaggi.tutti[0];
  DeleteFileA(copia.c_str());
  DeleteFileA(snapshot.c_str());
  RemoveDirectoryA(inbox.c_str());
}
// ---- end of the anonymized copy ----

// --- The answer for the user ("Copia risposta") ---
// Nothing open: the critical message of the other items that need a snapshot. Then the tool's plain answer of
// the same snapshot on the system clipboard, and a word that it is there.
TEST(FinestreWin32, CopiaRisposta) {
  Controllata();
  ASSERT_TRUE(cli::CreaElenchiDemo(host::CartellaProgramma()));
  Banco banco;
  win32::AppuntiW appunti;
  win32::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, appunti);
  Menu(f, "mnu_CopiaRisposta");
  EXPECT_EQ(banco.messaggi.tutti,
            std::vector<std::string>{std::string("critical: ") + analysis::kNessunoSnapshot});
  analysis::ImpostaValori(f.Modello(), collection::kNomeSnapshot);
  banco.messaggi.tutti.clear();
  Menu(f, "mnu_CopiaRisposta");
  const std::string altrove = host::CartellaProgramma() + "\\Altrove";
  ASSERT_TRUE(support::CreaCartella(altrove));
  const std::string atteso = analysis::TestoRisposta(
      analysis::ApriEVerifica(collection::kNomeSnapshot, altrove, host::CartellaProgramma(),
                              support::SeparatoreDecimale()),
      collection::kNomeSnapshot, analysis::FormaRisposta::testo);
  EXPECT_TRUE(atteso.starts_with("Your snapshot ")) << atteso;
  EXPECT_EQ(TestoAppunti(), atteso);
  EXPECT_EQ(banco.messaggi.tutti,
            std::vector<std::string>{std::string("plain: ") + analysis::kRispostaCopiata});
}
// --- end of the answer for the user ---

// ---- The whole snapshot as one text ("Salva tutto in un file di testo...") ----
// The file the window saves is the model's text as the program keeps it (Windows-1252, CR LF), the report
// area left as it was; a name the folder refuses is named in a critical message.
TEST(FinestreWin32, SalvaTutto) {
  Controllata();
  Banco banco;
  win32::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
  analysis::ImpostaValori(f.Modello(), collection::kNomeSnapshot);
  const std::string area = f.Area().Testo();
  const std::string nome = host::CartellaProgramma() + "\\tutto.txt";
  banco.file.Scegli(nome);
  Menu(f, "mnu_SalvaTutto");
  EXPECT_TRUE(banco.messaggi.tutti.empty());
  const std::string testo = support::LeggiFile(nome);
  EXPECT_EQ(testo, analysis::TestoCompleto(f.Modello()));
  EXPECT_TRUE(testo.starts_with("Snapshot: " + std::string(collection::kNomeSnapshot) + "\r\n")) << testo;
  EXPECT_EQ(f.Area().Testo(), area);

  const std::string cartella = host::CartellaProgramma() + "\\cartella";
  ASSERT_TRUE(support::CreaCartella(cartella));
  for (const std::string& rifiutato : {cartella, std::string("Q:\\tutto.txt")}) {
    banco.file.Scegli(rifiutato);
    Menu(f, "mnu_SalvaTutto");
    ASSERT_FALSE(banco.messaggi.tutti.empty()) << rifiutato;
    EXPECT_TRUE(banco.messaggi.tutti.back().starts_with("critical: Could not write " + rifiutato + ": "))
        << banco.messaggi.tutti.back();
  }
}
// ---- end of the whole snapshot as one text ----
