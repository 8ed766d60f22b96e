// The analysis window as the operations see it, without a toolkit: the report area, the search box, the
// progress bar, the check marks of the report menu, its message boxes, the common file dialog and the
// clipboard; and what an opened snapshot leaves in it. The window's menu items and buttons call the
// handlers below and nothing else.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "collection/principale.h"
#include "collection/snapshot.h"
#include "formats/info_header.h"
#include "host/macchina.h"
#include "support/interfacce.h"

namespace analysis {

// The report items of the menus "Prospetto", "Analisi" and "Diagnosi"; only those of "Prospetto" carry a
// check mark. Their captions, names, menus and handlers are in the table of analysis/voci.h, in this order.
enum class Voce {
  mnu_ShowInfoHeader,
  mnu_ShowPref,
  mnu_ShowArchivioQlv,
  mnu_ShowORDL_Dir,
  mnu_ShowTRLE_Dir,
  mnu_ShowArchivioDir,
  mnu_ShowOrdelioTxt,
  mnu_ShowScriptDat,
  mnu_AnalisiBackup,
  mnu_ShowAmbiente,
};
inline constexpr int kNumeroVoci = 10;

// The check marks of the menu items.
class SegniMenu {
 public:
  virtual ~SegniMenu() = default;
  virtual bool Checked(Voce v) const = 0;
  virtual void SetChecked(Voce v, bool segnato) = 0;
};

// Check marks held in memory, for the headless tool and tests.
class SegniInMemoria : public SegniMenu {
 public:
  bool Checked(Voce v) const override { return segni_[static_cast<std::size_t>(v)]; }
  void SetChecked(Voce v, bool segnato) override { segni_[static_cast<std::size_t>(v)] = segnato; }

 private:
  std::array<bool, kNumeroVoci> segni_{};
};

inline constexpr const char* kTestoIniziale = "RichTextBox1";

struct Dialog_Analisi {
  support::AreaTesto& Text_Out;
  // The search box: only its text is used.
  support::Didascalia& Text_Cerca;
  support::BarraProgresso& ProgressBar1;
  SegniMenu& Menu;
  support::Messaggi& Messaggi;
  // The main window's one file dialog, shared with the opening of the snapshot.
  support::DialogoFile& CommonDialog1;
  support::Appunti& Clipboard;
  // The folder of the running program: Dati and the sample lists are there.
  std::string CartellaProgramma = host::CartellaProgramma();
  // The header report loads the snapshot's copy of the header record here: the window's own, never the
  // record of start-up that a check run writes from.
  formats::InfoHeader InfoHeader{};

  // What ImpostaValori leaves.
  // The snapshot was unpacked whole into Dati; its file.
  bool SnapshotAperto = false;
  // Why it is not open, when it is not: the findings give it as the snapshot's one finding.
  std::string ErroreSnapshot{};
  std::string NomeSnapshot{};
  collection::ContenutoSnapshot Contenuto{};
  std::string CartellaDati{};
  std::array<std::int32_t, formats::kTestiFlagErrori.size()> FlagBit{};
  std::array<std::string, formats::kTestiFlagErrori.size()> FlagTesti{};
  std::int32_t NumeroFlag = 0;
  // The full paths of the sample files after a backup analysis.
  std::vector<std::string> FileTrovati{};
  std::int32_t NumeroFileTrovati = 0;
  // The program folder's lock, from ImpostaValori for as long as the window lives: the menu items read
  // Dati at every click, and another program must not fill it again meanwhile.
  host::BloccoCartella Blocco{};
};

// The snapshot dialogs' filter: the snapshot's own name first, then any snapshot, then any file.
inline constexpr const char* kFiltroSnapshot =
    "File Info_Ordl.bin|info_ordl.bin|Snapshot (*.bin)|*.bin|All files (*.*)|*.*";
// Where the snapshot dialogs open when no snapshot is open and none was opened before.
inline constexpr const char* kCartellaSnapshot = "c:\\";
// The file in the program folder that remembers the folder of the last snapshot opened in the window, one
// line in Windows-1252.
inline constexpr const char* kFileUltimaCartella = "ultima_cartella.txt";

// Where the snapshot dialogs open: the folder of `aperto` (the open snapshot, "" for none), else the one
// remembered in the program folder, else kCartellaSnapshot. A remembered folder that is not there, or a file
// that does not hold one, counts as none.
std::string CartellaIniziale(const std::string& cartellaProgramma, const std::string& aperto);
// Remembers the folder of `snapshot` for the next dialog; nothing when that cannot be written.
void RicordaCartella(const std::string& cartellaProgramma, const std::string& snapshot);

// "Leggi Dati" up to the choice: sets up the file dialog, opening in `cartella`, and shows it. False on
// cancel; otherwise `nome` is the chosen snapshot, and the caller runs ImpostaValori on a new window and
// shows it modally.
bool ScegliSnapshot(support::DialogoFile& dialogo, std::string& nome, const std::string& cartella,
                    const std::string& titolo = "Carica file info_ordl.bin");
// What an item that needs the open snapshot says when there is none.
inline constexpr const char* kNessunoSnapshot = "No snapshot is open: open one with \"Leggi Dati\" first";
// What "Copia risposta" says once the answer is on the clipboard.
inline constexpr const char* kRispostaCopiata =
    "The answer for the user is on the clipboard: paste it into your mail or post.";
// The window's title: its caption and, once a snapshot was given to it, that file's name.
std::string TitoloFinestra(const Dialog_Analisi& d);
// The title of the dialog that asks for the snapshot to compare the open one with.
inline constexpr const char* kTitoloConfronto = "Open the earlier snapshot to compare with";

// "Leggi Dati" on the main window: nothing during a check run or after a cancel (false); otherwise `nome` is
// the chosen snapshot. The front end then makes the analysis window, runs ApriFinestra on its model and
// shows it modally when that says so.
bool Pul_EstraiDati_Click(const collection::Principale& p, support::DialogoFile& dialogo, std::string& nome);
// ImpostaValori for a new window, and the snapshot's folder remembered once it is open; false when the
// window is not to be shown (another program holds the program folder, which a critical message has said).
// The front end then shows TitoloFinestra as the window's title.
bool ApriFinestra(Dialog_Analisi& d, const std::string& nome);

// Empties (or makes) Dati below the program folder, unpacks the snapshot there and shows the header
// report; "Errrore estraendo file" when it cannot be unpacked. Nothing but a critical message when another
// program holds the program folder (`Blocco` tells).
void ImpostaValori(Dialog_Analisi& d, const std::string& NomeInfoOrdl);

// Clears the marks of the eight report items (not of the analysis item).
void DeselezionaProspetti(Dialog_Analisi& d);

// The menu items.
void mnu_ShowInfoHeader_Click(Dialog_Analisi& d);
void mnu_ShowPref_Click(Dialog_Analisi& d);
void mnu_ShowArchivioQlv_Click(Dialog_Analisi& d);
void mnu_ShowORDL_Dir_Click(Dialog_Analisi& d);
void mnu_ShowTRLE_Dir_Click(Dialog_Analisi& d);
void mnu_ShowArchivioDir_Click(Dialog_Analisi& d);
void mnu_ShowOrdelioTxt_Click(Dialog_Analisi& d);
void mnu_ShowScriptDat_Click(Dialog_Analisi& d);
void mnu_AnalisiBackup_Click(Dialog_Analisi& d);
// The menu "Diagnosi": the environment of the check run that made the snapshot. Like the findings it clears
// the report marks; it has no mark of its own.
void mnu_ShowAmbiente_Click(Dialog_Analisi& d);
// "Confronta con un altro snapshot...": asks for a snapshot with the dialog of "Leggi Dati", unpacks it into
// a folder of its own and shows its comparison with the open one (old) in the report area, clearing the
// report marks. Dati, the open snapshot's table and the header record stay as they were; a cancel changes
// nothing, and a snapshot that cannot be read shows a critical message and no text. No check mark.
void mnu_Confronta_Click(Dialog_Analisi& d);
// The menu "Diagnosi": the findings of the opened snapshot. Like the backup analysis it clears the report
// marks; it has no mark of its own.
void mnu_RiepilogoProblemi_Click(Dialog_Analisi& d);
struct RiepilogoSnapshot;
// The findings of the open snapshot, as "Riepilogo problemi" shows them; a snapshot that could not be opened
// has the one finding snapshot.unreadable.
RiepilogoSnapshot RiepilogoAperto(const Dialog_Analisi& d);
// "Salva copia anonima...": asks where to save a copy of the open snapshot without the account names of
// its paths (copia_anonima.h), writes it and says how many names it replaced. The report area, its marks
// and Dati stay as they were; a cancel changes nothing. A snapshot that is no longer the one opened is
// refused with a critical message.
void mnu_SalvaCopiaAnonima_Click(Dialog_Analisi& d);
// "Salva tutto in un file di testo...": asks where to save the whole snapshot as one text (the member table,
// every report item under its caption, the environment, the findings) and writes it; a file that cannot be
// written is named in a critical message. The report area and its marks stay as they were.
void mnu_SalvaTutto_Click(Dialog_Analisi& d);
// "Copia risposta": the answer to paste for the user (the failures and warnings, written to the user) on the
// clipboard. The report area and its marks stay as they were.
void mnu_CopiaRisposta_Click(Dialog_Analisi& d);
// Runs the menu item `v`, as its click does.
void EseguiVoce(Dialog_Analisi& d, Voce v);

// The search in the report area. `Avanti` gives the direction, `DallInizio` starts at the top instead of
// at the selection; `Trovato` is true when a word was found and selected.
void TrovaTesto(Dialog_Analisi& d, bool Avanti, bool DallInizio, bool& Trovato);
void Pul_Trova_Click(Dialog_Analisi& d);
void Pul_Dopo_Click(Dialog_Analisi& d);
void Pul_Prima_Click(Dialog_Analisi& d);

void mnu_Copia_Click(Dialog_Analisi& d);
void mnu_CaricaFile_Click(Dialog_Analisi& d);
// "Salva prospetto in un file di testo": a file that cannot be written is named in a critical message, with
// why.
void mnu_SalvaFile_Click(Dialog_Analisi& d);

}  // namespace analysis
