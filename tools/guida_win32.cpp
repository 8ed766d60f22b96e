// Walks the real checkordl.exe from outside its process, as a user would: it starts the program, finds its
// windows by their captions and their buttons by their texts, clicks, answers the dialogs and message boxes,
// and reads what the controls show. One line a step; the exit status is 1 when a step failed or a wait ran
// out. The program's working files end up beside it, and C:\INFO_ORDL.BIN is written anew: run it on the
// demo machine only.
//
// usage: checkordl_guida_win32.exe [--schermate FOLDER] [PROGRAM]   (default: checkordl.exe beside it)
// With --schermate, each of the three windows is also saved as FOLDER\win32_*.bmp, taken from the screen
// with its frame.
#include <windows.h>

#include <dlgs.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "analysis/forma_analisi.h"
#include "gui_win32/finestra.h"
#include "gui_win32/prospetto.h"

namespace {

constexpr const char* kPrincipale = " Check Configuration of Ordelio and Tomb Raider Level Editor";
// The picker as the Ordelio folder's "Change" opens it.
constexpr const char* kGetDir = "Select folder where is Ordelio";
constexpr const char* kAnalisi = " Analisi dati info ordl";
constexpr const char* kTitoloBox = "CheckORDL";
constexpr const char* kClasseDialogo = "#32770";
constexpr const char* kSnapshot = "C:\\INFO_ORDL.BIN";
// The text a message box shows is its static control with this id.
constexpr int kIdTestoBox = 0xFFFF;
// Every wait gives up after this many milliseconds.
constexpr DWORD kAttesa = 30000;

PROCESS_INFORMATION gProgramma{};
std::string gSchermate;

// A text in a step's line: line ends shown as escapes, so that a step stays on one line.
std::string Riga(const std::string& s) {
  std::string r;
  for (unsigned char c : s) {
    if (c == '\r')
      r += "\\r";
    else if (c == '\n')
      r += "\\n";
    else if (c < 32)
      r += '?';
    else
      r += static_cast<char>(c);
  }
  return r;
}

void Fatto(const std::string& passo, const std::string& dettaglio = "") {
  std::printf("ok   %s%s%s\n", passo.c_str(), dettaglio.empty() ? "" : ": ", Riga(dettaglio).c_str());
  std::fflush(stdout);
}

[[noreturn]] void Fallisci(const std::string& passo, const std::string& perche) {
  std::printf("FAIL %s: %s\n", passo.c_str(), Riga(perche).c_str());
  std::fflush(stdout);
  if (gProgramma.hProcess) TerminateProcess(gProgramma.hProcess, 1);
  std::exit(1);
}

// Polls `prova` until it gives something true, for at most kAttesa.
template <class F>
auto Attendi(F prova, DWORD ms = kAttesa) -> decltype(prova()) {
  const ULONGLONG fine = GetTickCount64() + ms;
  for (;;) {
    if (auto r = prova()) return r;
    if (GetTickCount64() >= fine) return {};
    Sleep(50);
  }
}

std::string Classe(HWND w) {
  char c[64] = {};
  GetClassNameA(w, c, sizeof(c));
  return c;
}

// The text of a control of another process: asked of the control itself, since an edit box keeps its text
// where GetWindowText does not look.
std::string Testo(HWND w) {
  DWORD_PTR n = 0;
  if (!SendMessageTimeoutA(w, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, kAttesa, &n)) return {};
  std::string t(n + 1, '\0');
  DWORD_PTR letti = 0;
  SendMessageTimeoutA(w, WM_GETTEXT, t.size(), reinterpret_cast<LPARAM>(t.data()), SMTO_ABORTIFHUNG, kAttesa,
                      &letti);
  t.resize(std::min<std::size_t>(letti, n));
  return t;
}

void ImpostaTesto(HWND w, const std::string& t) {
  DWORD_PTR r = 0;
  SendMessageTimeoutA(w, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(t.c_str()), SMTO_ABORTIFHUNG, kAttesa, &r);
}

// A button's caption as the user reads it: without the "&" that marks its access key.
std::string Didascalia(HWND w) {
  std::string t;
  for (char c : Testo(w))
    if (c != '&') t += c;
  return t;
}

// A top-level window's caption, which the system keeps: no message to the program.
std::string TestoFinestra(HWND w) {
  char t[256] = {};
  GetWindowTextA(w, t, sizeof(t));
  return t;
}

// Callbacks of the system are named functions: a 32-bit build calls them as __stdcall, which a lambda is not.
BOOL CALLBACK AggiungiFiglio(HWND w, LPARAM l) {
  reinterpret_cast<std::vector<HWND>*>(l)->push_back(w);
  return TRUE;
}

std::vector<HWND> Figli(HWND padre) {
  std::vector<HWND> v;
  EnumChildWindows(padre, AggiungiFiglio, reinterpret_cast<LPARAM>(&v));
  return v;
}

struct Cerca {
  const char* classe;
  const char* titolo;
  bool visibile;
  HWND trovata;
};

BOOL CALLBACK CercaFinestra(HWND w, LPARAM l) {
  auto& c = *reinterpret_cast<Cerca*>(l);
  DWORD pid = 0;
  GetWindowThreadProcessId(w, &pid);
  if (pid != gProgramma.dwProcessId || (c.visibile && !IsWindowVisible(w))) return TRUE;
  if (c.classe && Classe(w) != c.classe) return TRUE;
  // A caption matches as it stands, or followed by " - " and what the window has open (the analysis window
  // names its snapshot so).
  const std::string t = TestoFinestra(w);
  if (c.titolo && t != c.titolo && !t.starts_with(std::string(c.titolo) + " - ")) return TRUE;
  c.trovata = w;
  return FALSE;
}

// The program's top-level window of that class (any, for nullptr) and that caption (any, for nullptr),
// shown or, unless `visibile`, about to be.
HWND Finestra(const char* classe, const char* titolo, bool visibile = true) {
  Cerca c{classe, titolo, visibile, nullptr};
  EnumWindows(CercaFinestra, reinterpret_cast<LPARAM>(&c));
  return c.trovata;
}

HWND AttendiFinestra(const std::string& passo, const char* classe, const char* titolo) {
  HWND w = Attendi([&] { return Finestra(classe, titolo); });
  if (!w)
    Fallisci(passo,
             std::string("no window \"") + titolo + "\" within " + std::to_string(kAttesa / 1000) + " s");
  return w;
}

// A message box of the program, if one is open.
HWND Box() {
  return Finestra(kClasseDialogo, kTitoloBox);
}

std::string TestoBox(HWND box) {
  return Testo(GetDlgItem(box, kIdTestoBox));
}

// The button with that caption; of two alike ("Change"), the one higher up.
HWND Pulsante(HWND padre, const std::string& didascalia) {
  HWND trovato = nullptr;
  LONG alto = LONG_MAX;
  for (HWND w : Figli(padre)) {
    RECT r{};
    GetWindowRect(w, &r);
    if (_stricmp(Classe(w).c_str(), "Button") == 0 && Didascalia(w) == didascalia && r.top < alto) {
      trovato = w;
      alto = r.top;
    }
  }
  return trovato;
}

// A click on the button: posted, since what the click starts may open a modal window and not return.
void Premi(const std::string& passo, HWND padre, const std::string& didascalia) {
  HWND p = Pulsante(padre, didascalia);
  if (!p) Fallisci(passo, "no button \"" + didascalia + "\"");
  PostMessageA(p, BM_CLICK, 0, 0);
}

// Returns once the program has dealt with everything sent or posted to `w` so far: its thread has come back
// to its message loop, that of the window or that of a modal window it opened.
void Calma(const std::string& passo, HWND w) {
  DWORD_PTR r = 0;
  if (!SendMessageTimeoutA(w, WM_NULL, 0, 0, SMTO_NORMAL, kAttesa, &r) && IsWindow(w))
    Fallisci(passo, "the program did not answer within " + std::to_string(kAttesa / 1000) + " s");
}

void AttendiChiusura(const std::string& passo, HWND w) {
  if (!Attendi([&] { return !IsWindow(w) || !IsWindowVisible(w); }))
    Fallisci(passo, "the window stayed open");
}

// Closes a message box with its only button, and gives its text.
std::string ChiudiBox(const std::string& passo, HWND box) {
  const std::string t = TestoBox(box);
  Premi(passo, box, "OK");
  AttendiChiusura(passo, box);
  return t;
}

// The text of a static control that sits right below the one with caption `sopra`: a folder label under
// its name.
HWND SottoA(HWND padre, const std::string& sopra) {
  HWND nome = nullptr;
  for (HWND w : Figli(padre))
    if (_stricmp(Classe(w).c_str(), "Static") == 0 && Testo(w) == sopra) nome = w;
  if (!nome) return nullptr;
  RECT rn{};
  GetWindowRect(nome, &rn);
  HWND migliore = nullptr;
  LONG alto = LONG_MAX;
  for (HWND w : Figli(padre)) {
    RECT r{};
    GetWindowRect(w, &r);
    if (w != nome && _stricmp(Classe(w).c_str(), "Static") == 0 && r.top >= rn.bottom && r.top < alto) {
      migliore = w;
      alto = r.top;
    }
  }
  return migliore;
}

// The window with its frame as the screen shows it, into FOLDER\nome.bmp: 24 bits, bottom-up rows.
void Fotografa(HWND w, const std::string& nome) {
  if (gSchermate.empty()) return;
  const std::string passo = "picture " + nome;
  // Let the window finish painting before it is taken.
  Calma(passo, w);
  Sleep(500);
  RECT r{};
  GetWindowRect(w, &r);
  const int larghezza = r.right - r.left, altezza = r.bottom - r.top;
  HDC schermo = GetDC(nullptr);
  HDC dc = CreateCompatibleDC(schermo);
  BITMAPINFO bi{};
  bi.bmiHeader = {sizeof(BITMAPINFOHEADER), larghezza, altezza, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
  void* bit = nullptr;
  HBITMAP bmp = CreateDIBSection(schermo, &bi, DIB_RGB_COLORS, &bit, nullptr, 0);
  HGDIOBJ prima = SelectObject(dc, bmp);
  const bool copiato = BitBlt(dc, 0, 0, larghezza, altezza, schermo, r.left, r.top, SRCCOPY);
  GdiFlush();
  const DWORD riga = (static_cast<DWORD>(larghezza) * 3 + 3) & ~3u;
  const DWORD dati = riga * static_cast<DWORD>(altezza);
  BITMAPFILEHEADER fh{0x4D42, static_cast<DWORD>(sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER)) + dati,
                      0, 0, sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER)};
  const std::string file = gSchermate + "\\" + nome + ".bmp";
  FILE* f = std::fopen(file.c_str(), "wb");
  const bool scritto = f && std::fwrite(&fh, sizeof(fh), 1, f) == 1 &&
                       std::fwrite(&bi.bmiHeader, sizeof(BITMAPINFOHEADER), 1, f) == 1 &&
                       std::fwrite(bit, 1, dati, f) == dati;
  if (f) std::fclose(f);
  SelectObject(dc, prima);
  DeleteObject(bmp);
  DeleteDC(dc);
  ReleaseDC(nullptr, schermo);
  if (!copiato || !scritto) Fallisci(passo, "cannot take the screen into " + file);
  Fatto(passo, file + " " + std::to_string(larghezza) + "x" + std::to_string(altezza));
}

void Avvia(const std::string& programma) {
  STARTUPINFOA si{};
  si.cb = sizeof(si);
  std::string riga = "\"" + programma + "\"";
  if (!CreateProcessA(programma.c_str(), riga.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si,
                      &gProgramma))
    Fallisci("start", "cannot start " + programma + " (error " + std::to_string(GetLastError()) + ")");
  WaitForInputIdle(gProgramma.hProcess, kAttesa);
  Fatto("start", programma);
}

void AttendiFine(const std::string& passo) {
  if (WaitForSingleObject(gProgramma.hProcess, kAttesa) != WAIT_OBJECT_0)
    Fallisci(passo, "the program did not end within " + std::to_string(kAttesa / 1000) + " s");
  DWORD codice = 0;
  GetExitCodeProcess(gProgramma.hProcess, &codice);
  CloseHandle(gProgramma.hProcess);
  CloseHandle(gProgramma.hThread);
  gProgramma = {};
  if (codice != 0) Fallisci(passo, "exit status " + std::to_string(codice));
  Fatto(passo, "exit status 0");
}

bool CartellaEsiste(const std::string& p) {
  const DWORD a = GetFileAttributesA(p.c_str());
  return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY);
}

// The first start: the two folders found, the picker opened and cancelled, then the check run to its end.
void PrimoAvvio(const std::string& programma) {
  if (DeleteFileA(kSnapshot)) Fatto("remove the snapshot of an earlier run", kSnapshot);
  Avvia(programma);
  HWND p = AttendiFinestra("main window", nullptr, kPrincipale);
  Fatto("main window", kPrincipale);
  std::string cartelle[2];
  const char* nomi[2] = {"Path of Ordelio:", "Path of Tomb Raider Level Editor:"};
  for (int i = 0; i < 2; ++i) {
    HWND l = SottoA(p, nomi[i]);
    if (!l) Fallisci("folders found", std::string("no label under \"") + nomi[i] + "\"");
    cartelle[i] = Testo(l);
    if (!CartellaEsiste(cartelle[i]))
      Fallisci("folders found", std::string(nomi[i]) + " \"" + cartelle[i] + "\" is not a folder");
    Fatto("folders found", std::string(nomi[i]) + " " + cartelle[i]);
  }
  Fotografa(p, "win32_principale");

  Premi("folder picker", p, "Change");
  HWND g = AttendiFinestra("folder picker", nullptr, kGetDir);
  Fotografa(g, "win32_getdir");
  Premi("folder picker", g, "Cancel");
  AttendiChiusura("folder picker", g);
  if (Testo(SottoA(p, nomi[0])) != cartelle[0]) Fallisci("folder picker", "Cancel changed the folder");
  Fatto("folder picker", "opened and cancelled, the folder unchanged");

  Premi("Start check", p, "Start check");
  HWND box = Attendi([] { return Box(); }, 120000);
  if (!box) Fallisci("Start check", "no closing message within 120 s");
  const std::string messaggio = ChiudiBox("Start check", box);
  if (messaggio.find("INFO_ORDL.BIN") == std::string::npos)
    Fallisci("Start check", "the message was: " + messaggio);
  Fatto("Start check", messaggio);
  AttendiFine("the program closes");
  WIN32_FILE_ATTRIBUTE_DATA a{};
  if (!GetFileAttributesExA(kSnapshot, GetFileExInfoStandard, &a) || a.nFileSizeLow == 0)
    Fallisci("snapshot written", std::string(kSnapshot) + " is missing or empty");
  Fatto("snapshot written", std::string(kSnapshot) + " " + std::to_string(a.nFileSizeLow) + " bytes");
}

struct Voce {
  std::string menu;
  std::string testo;
  UINT id;
};

// The menu bar as the window has it: every item of every menu, in order. Wine does not let one process read
// another's menus; there the items come from the table the window builds its bar from, with the ids it
// gives them.
std::vector<Voce> LeggiMenu(HWND w) {
  std::vector<Voce> v;
  HMENU barra = GetMenu(w);
  const int n = barra ? GetMenuItemCount(barra) : -1;
  for (int i = 0; i < n; ++i) {
    char menu[128] = {};
    GetMenuStringA(barra, static_cast<UINT>(i), menu, sizeof(menu), MF_BYPOSITION);
    HMENU sotto = GetSubMenu(barra, i);
    for (int j = 0; j < GetMenuItemCount(sotto); ++j) {
      char t[128] = {};
      GetMenuStringA(sotto, static_cast<UINT>(j), t, sizeof(t), MF_BYPOSITION);
      v.push_back({menu, t, GetMenuItemID(sotto, j)});
    }
  }
  if (n > 0) {
    Fatto("menu bar", std::to_string(n) + " menus, " + std::to_string(v.size()) + " items");
    return v;
  }
  for (std::size_t i = 0; i < analysis::kVociBarra.size(); ++i) {
    const analysis::VoceBarra& b = analysis::kVociBarra[i];
    v.push_back(
        {analysis::kMenu[b.menu].testo, b.testo, static_cast<UINT>(win32::kPrimaVoce + static_cast<int>(i))});
  }
  Fatto("menu bar", "not readable from another process here: " + std::to_string(v.size()) +
                        " items from the window's own table");
  return v;
}

const Voce& CercaVoce(const std::vector<Voce>& voci, const std::string& testo) {
  for (const Voce& v : voci)
    if (v.testo == testo) return v;
  Fallisci("menu bar", "no item \"" + testo + "\"");
}

// A dialog of the program, shown or about to be: a message box or a file dialog.
HWND Dialogo() {
  return Finestra(kClasseDialogo, nullptr, false);
}

// Lets the program finish what it was given, answering every dialog it opens on the way: OK in a message
// box, Cancel in any other. Gives what was answered, "" for nothing.
std::string Sbriga(const std::string& passo, HWND w) {
  std::string risposte;
  for (int quiete = 0; quiete < 2;) {
    Calma(passo, w);
    Sleep(200);
    HWND d = Dialogo();
    if (!d) {
      ++quiete;
      continue;
    }
    quiete = 0;
    if (!Attendi([d] { return IsWindowVisible(d) || !IsWindow(d); }))
      Fallisci(passo, "a dialog was never shown");
    if (!IsWindow(d)) continue;
    const std::string titolo = TestoFinestra(d);
    if (!risposte.empty()) risposte += "; ";
    if (titolo == kTitoloBox) {
      risposte += "message \"" + ChiudiBox(passo, d) + "\" OK";
    } else {
      Premi(passo, d, "Cancel");
      AttendiChiusura(passo, d);
      risposte += "dialog \"" + titolo + "\" cancelled";
    }
  }
  return risposte;
}

void Comando(HWND w, const Voce& v) {
  PostMessageA(w, WM_COMMAND, v.id, 0);
}

std::string PrimaRiga(const std::string& t) {
  return t.substr(0, t.find('\r'));
}

// The selection of the report area, as start and length; within the first 64 K characters, which is what
// the message's own answer holds.
std::pair<long, long> Selezione(HWND area) {
  DWORD_PTR r = 0;
  SendMessageTimeoutA(area, EM_GETSEL, 0, 0, SMTO_ABORTIFHUNG, kAttesa, &r);
  return {static_cast<long>(LOWORD(r)), static_cast<long>(HIWORD(r)) - static_cast<long>(LOWORD(r))};
}

HWND Controllo(HWND padre, const char* classe) {
  for (HWND w : Figli(padre))
    if (_stricmp(Classe(w).c_str(), classe) == 0) return w;
  return nullptr;
}

std::string Appunti() {
  std::string t;
  if (!OpenClipboard(nullptr)) return t;
  if (HANDLE h = GetClipboardData(CF_TEXT)) {
    if (const char* p = static_cast<const char*>(GlobalLock(h))) {
      t = p;
      GlobalUnlock(h);
    }
  }
  CloseClipboard();
  return t;
}

std::string LeggiFile(const std::string& nome) {
  std::string t;
  if (FILE* f = std::fopen(nome.c_str(), "rb")) {
    char b[4096];
    for (std::size_t n; (n = std::fread(b, 1, sizeof(b), f)) > 0;) t.append(b, n);
    std::fclose(f);
  }
  return t;
}

// Types a file name into the system's file dialog and presses its button.
void Rispondi(const std::string& passo, HWND d, const std::string& nome, const char* pulsante) {
  // The file name box: a combo box in the Explorer-style dialog, an edit box in the older one.
  HWND campo = GetDlgItem(d, cmb13);
  if (!campo) campo = GetDlgItem(d, edt1);
  if (!campo) Fallisci(passo, "no file name box in the dialog");
  ImpostaTesto(campo, nome);
  Premi(passo, d, pulsante);
  AttendiChiusura(passo, d);
}

std::string Scelto(HWND area) {
  const auto [inizio, lunghezza] = Selezione(area);
  return Testo(area).substr(static_cast<std::size_t>(inizio), static_cast<std::size_t>(lunghezza));
}

// Types `parola` into the search box unless it is null, presses a search button and gives where the
// selection starts then. A message ("Non trovato") fails the step.
long Cerca(HWND a, HWND area, HWND cerca, const char* parola, const char* pulsante) {
  if (parola) ImpostaTesto(cerca, parola);
  const std::string passo = "search \"" + Testo(cerca) + "\": " + pulsante;
  Premi(passo, a, pulsante);
  if (const std::string r = Sbriga(passo, a); !r.empty()) Fallisci(passo, r);
  const long inizio = Selezione(area).first;
  Fatto(passo, "selected \"" + Scelto(area) + "\" at " + std::to_string(inizio));
  return inizio;
}

// The second start: the snapshot opened with "Leggi Dati", every menu item, the search, copy and save,
// then "Esci" and "Close".
void SecondoAvvio(const std::string& programma, const std::string& cartella) {
  Avvia(programma);
  HWND p = AttendiFinestra("main window", nullptr, kPrincipale);
  Premi("Leggi Dati", p, "Leggi Dati");
  HWND d = AttendiFinestra("Leggi Dati", kClasseDialogo, "Carica file info_ordl.bin");
  Rispondi("Leggi Dati", d, kSnapshot, "Open");
  // A snapshot that cannot be read shows a message before the window.
  HWND a = Attendi([] {
    HWND w = Finestra(nullptr, kAnalisi);
    return w ? w : Box();
  });
  if (!a || a == Box()) Fallisci("Leggi Dati", a ? "message \"" + TestoBox(a) + "\"" : "no analysis window");
  HWND area = Controllo(a, win32::kClasseProspetto);
  HWND cerca = Controllo(a, "Edit");
  if (!area || !cerca) Fallisci("analysis window", "no report area or no search box");
  Fatto("Leggi Dati", "the analysis window shows \"" + PrimaRiga(Testo(area)) + "\"");

  const std::vector<Voce> voci = LeggiMenu(a);
  for (const Voce& v : voci) {
    if (v.testo == "Esci") continue;
    const std::string passo = "menu " + v.menu + " > " + v.testo;
    Comando(a, v);
    std::string risposta = Sbriga(passo, a);
    if (!IsWindow(a)) Fallisci(passo, "the analysis window closed");
    Fatto(passo, risposta.empty() ? "\"" + PrimaRiga(Testo(area)) + "\"" : risposta);
  }

  // The listing of the editor's folder names tomb4.exe once and several levels.
  Comando(a, CercaVoce(voci, "Directory Level Editor"));
  Sbriga("search", a);
  Cerca(a, area, cerca, "tomb", "Trova");
  Fotografa(a, "win32_analisi");
  const long primo = Cerca(a, area, cerca, "tr4", "Trova");
  const long dopo = Cerca(a, area, cerca, nullptr, ">");
  if (dopo <= primo) Fallisci("search: >", "the selection did not move on");
  if (Cerca(a, area, cerca, nullptr, "<") >= dopo) Fallisci("search: <", "the selection did not move back");

  // Copy what the last search left selected.
  if (!OpenClipboard(nullptr) || !EmptyClipboard() || !CloseClipboard())
    Fallisci("Copia", "cannot empty the clipboard");
  const std::string daCopiare = Scelto(area);
  Comando(a, CercaVoce(voci, "Copia "));
  if (const std::string r = Sbriga("Copia", a); !r.empty()) Fallisci("Copia", r);
  if (daCopiare.empty() || Appunti() != daCopiare)
    Fallisci("Copia", "the clipboard holds \"" + Appunti() + "\", the selection is \"" + daCopiare + "\"");
  Fatto("Copia", "the clipboard holds \"" + daCopiare + "\"");

  const std::string prospetto = cartella + "\\guida_prospetto.txt";
  DeleteFileA(prospetto.c_str());
  Comando(a, CercaVoce(voci, "Salva prospetto in un file di testo"));
  Rispondi("save", AttendiFinestra("save", kClasseDialogo, "Salva prospetto"), prospetto, "Save");
  Sbriga("save", a);
  const std::string salvato = LeggiFile(prospetto), mostrato = Testo(area);
  DeleteFileA(prospetto.c_str());
  if (salvato != mostrato)
    Fallisci("save", prospetto + " holds " + std::to_string(salvato.size()) + " bytes, the report area " +
                         std::to_string(mostrato.size()) + " that differ");
  Fatto("save", prospetto + " holds the report area's " + std::to_string(salvato.size()) + " bytes");

  Comando(a, CercaVoce(voci, "Esci"));
  AttendiChiusura("Esci", a);
  Calma("Esci", p);
  if (!IsWindowEnabled(p)) Fallisci("Esci", "the main window takes no input");
  Fatto("Esci", "back to the main window");
  Premi("Close", p, "Close");
  AttendiFine("Close");
}

}  // namespace

int main(int argc, char** argv) {
  std::string programma;
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    if (a == "--schermate" && i + 1 < argc)
      gSchermate = argv[++i];
    else if (programma.empty() && a.rfind("--", 0) != 0)
      programma = a;
    else {
      std::fprintf(stderr, "usage: checkordl_guida_win32.exe [--schermate FOLDER] [PROGRAM]\n");
      return 2;
    }
  }
  if (programma.empty()) {
    char proprio[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, proprio, MAX_PATH);
    programma = proprio;
    programma = programma.substr(0, programma.find_last_of('\\') + 1) + "checkordl.exe";
  }
  PrimoAvvio(programma);
  SecondoAvvio(programma, programma.substr(0, programma.find_last_of('\\')));
  std::printf("the program was walked end to end\n");
  return 0;
}
