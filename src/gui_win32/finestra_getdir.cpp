#include "gui_win32/finestra_getdir.h"

#include <commctrl.h>

#include "picker/forma_getdir.h"

namespace win32 {

FinestraGetDir::FinestraGetDir(HWND proprietario, picker::Dialog_GetDir& modello) : modello_(modello) {
  Crea(picker::kFormaGetDir, proprietario, WS_POPUP | WS_CAPTION | WS_SYSMENU, nullptr);
  SendMessageA(Controllo("Dir1"), TVM_SETINDENT, static_cast<WPARAM>(Px(picker::forma_getdir::kRientro)), 0);
  SetWindowTextA(Controllo("Text_PathDir"), modello_.Text_PathDir.c_str());
  Aggiorna();
}

void FinestraGetDir::Aggiorna() {
  aggiornando_ = true;
  SetWindowTextA(Hwnd(), modello_.Caption.c_str());
  HWND drive = Controllo("Drive1");
  SendMessageA(drive, CB_RESETCONTENT, 0, 0);
  for (const auto& d : modello_.Drive1.elenco)
    SendMessageA(drive, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(d.c_str()));
  SendMessageA(drive, CB_SETCURSEL,
               static_cast<WPARAM>(SendMessageA(drive, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                reinterpret_cast<LPARAM>(modello_.Drive1.Drive.c_str()))),
               0);

  // The folder list as a tree: the open folders of the path, then those the last one holds.
  HWND albero = Controllo("Dir1");
  SendMessageA(albero, WM_SETREDRAW, FALSE, 0);
  SendMessageA(albero, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
  righe_ = picker::RigheDir(modello_.Dir1);
  HTREEITEM corrente = TVI_ROOT;
  std::vector<HTREEITEM> aperte;
  for (std::size_t i = 0; i < righe_.size(); ++i) {
    TVINSERTSTRUCTA ins{};
    ins.hParent = corrente;
    ins.hInsertAfter = TVI_LAST;
    ins.item.mask = TVIF_TEXT | TVIF_PARAM;
    ins.item.pszText = righe_[i].nome.data();
    ins.item.lParam = static_cast<LPARAM>(i);
    auto* voce =
        reinterpret_cast<HTREEITEM>(SendMessageA(albero, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&ins)));
    if (righe_[i].aperta) {
      corrente = voce;
      aperte.push_back(voce);
    }
  }
  for (HTREEITEM v : aperte) SendMessageA(albero, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(v));
  if (!aperte.empty())
    SendMessageA(albero, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(aperte.back()));
  SendMessageA(albero, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(albero, nullptr, TRUE);
  SetWindowTextA(Controllo("Text_Path"), Accorciato(Controllo("Text_Path"), modello_.Text_Path).c_str());
  aggiornando_ = false;
}

void FinestraGetDir::AttivaRiga(std::size_t indice) {
  if (indice >= righe_.size()) return;
  picker::Dir1_Attivata(modello_, righe_[indice].percorso);
  Aggiorna();
}

void FinestraGetDir::Clic(void (*gestore)(picker::Dialog_GetDir&)) {
  gestore(modello_);
  Aggiorna();
  if (modello_.chiuso) Chiudi();
}

bool FinestraGetDir::Comando(int id, int codice) {
  if (id == IdDi("Text_PathDir") && codice == EN_CHANGE) {
    if (aggiornando_) return true;
    modello_.Text_PathDir = TestoDi(Controllo("Text_PathDir"));
    return true;
  }
  if (id == IDCANCEL) {
    // Escape closes the dialog as its frame does: no button is the cancel button, and the caller takes the
    // close as a cancel.
    Chiudi();
    return true;
  }
  if (id == IDOK) {
    // Enter in the folder list opens the folder, as a double click does.
    if (GetFocus() == Controllo("Dir1")) PostMessageA(Hwnd(), kAttiva, 0, 0);
    return true;
  }
  if (id == IdDi("Drive1") && codice == CBN_SELCHANGE) {
    // The list is filled again after its own notification has returned.
    PostMessageA(Hwnd(), kDrive, 0, 0);
    return true;
  }
  if (codice != BN_CLICKED) return false;
  if (id == IdDi("OKButton"))
    Clic(picker::OKButton_Click);
  else if (id == IdDi("CancelButton"))
    Clic(picker::CancelButton_Click);
  else if (id == IdDi("Pul_NuovaCartella"))
    Clic(picker::Pul_NuovaCartella_Click);
  else
    return false;
  return true;
}

LRESULT FinestraGetDir::Notifica(const NMHDR* n) {
  // The open folders stay open: only a new path changes the tree.
  if (n->code == TVN_ITEMEXPANDINGA || n->code == TVN_ITEMEXPANDINGW) return aggiornando_ ? FALSE : TRUE;
  if (n->idFrom == static_cast<UINT_PTR>(IdDi("Dir1")) && n->code == NM_DBLCLK)
    PostMessageA(Hwnd(), kAttiva, 0, 0);
  return 0;
}

void FinestraGetDir::Privato(UINT m, WPARAM, LPARAM) {
  if (m == kDrive) {
    HWND drive = Controllo("Drive1");
    const auto i = SendMessageA(drive, CB_GETCURSEL, 0, 0);
    if (i >= 0) {
      char testo[16] = {};
      if (SendMessageA(drive, CB_GETLBTEXTLEN, static_cast<WPARAM>(i), 0) <
          static_cast<LRESULT>(sizeof(testo)))
        SendMessageA(drive, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(testo));
      picker::ScegliDrive(modello_, testo);
    }
    Aggiorna();
    return;
  }
  if (m != kAttiva) return;
  HWND albero = Controllo("Dir1");
  auto* voce = reinterpret_cast<HTREEITEM>(SendMessageA(albero, TVM_GETNEXTITEM, TVGN_CARET, 0));
  if (!voce) return;
  TVITEMA item{};
  item.mask = TVIF_PARAM;
  item.hItem = voce;
  if (SendMessageA(albero, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)))
    AttivaRiga(static_cast<std::size_t>(item.lParam));
}

std::string FinestraGetDir::Suggerimento(HWND controllo) const {
  return controllo == Controllo("Text_Path") ? modello_.Text_Path : Finestra::Suggerimento(controllo);
}

bool FinestraGetDir::PuoChiudersi() {
  // The frame closes the dialog; OK and Cancel have closed the model already.
  if (!modello_.chiuso) picker::ChiudiDallaCornice(modello_);
  return true;
}

}  // namespace win32
