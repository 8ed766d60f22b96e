#include "analysis/dialog_analisi.h"

#include <vector>

#include "analysis/ambiente_dati.h"
#include "analysis/analisi_backup.h"
#include "analysis/confronto.h"
#include "analysis/copia_anonima.h"
#include "analysis/elenchi.h"
#include "analysis/forma_analisi.h"
#include "analysis/prospetto_ambiente.h"
#include "analysis/prospetto_archivio.h"
#include "analysis/prospetto_header.h"
#include "analysis/prospetto_preferenze.h"
#include "analysis/riepilogo.h"
#include "analysis/testi.h"
#include "analysis/voci.h"
#include "collection/blocco.h"
#include "collection/membri.h"
#include "host/nomi.h"
#include "host/vista_virtuale.h"
#include "support/files.h"
#include "support/testo_uscita.h"
#include "support/valori.h"

namespace analysis {
namespace {

void Segna(Dialog_Analisi& d, Voce v) {
  DeselezionaProspetti(d);
  d.Menu.SetChecked(v, true);
}

void Mostra(Dialog_Analisi& d, const std::optional<std::string>& testo) {
  if (testo) d.Text_Out.ImpostaTesto(*testo);
}

void Directory(Dialog_Analisi& d, Voce v, const ProspettoDirectory& quale) {
  Segna(d, v);
  Mostra(d, MostraDirectory(d.CartellaDati, quale, d.ProgressBar1, d.Messaggi));
}

// The two reports that test for their file before they touch the marks.
void TestoSalvato(Dialog_Analisi& d, Voce v, const std::optional<std::string>& testo) {
  if (!testo) return;
  Segna(d, v);
  Mostra(d, testo);
}

bool FineParola(char c) {
  return c == ' ' || c == '\r' || c == ':';
}

}  // namespace

namespace {

// The folder of a Windows path to a file; a drive's root keeps its "\", as a bare "C:" is the drive's
// current folder.
std::string CartellaDelFile(const std::string& percorso) {
  std::string c = support::EstraiCartella(percorso);
  if (c.size() == 2 && c[1] == ':') c += '\\';
  return c;
}

std::string CartellaRicordata(const std::string& cartellaProgramma) {
  const std::string testo = support::LeggiFile(cartellaProgramma + "\\" + kFileUltimaCartella);
  const std::string riga = testo.substr(0, testo.find_first_of("\r\n"));
  // Only a full path that is there: anything else in the file is not ours, or is out of date.
  const bool piena = riga.size() >= 3 && riga[1] == ':' && riga[2] == '\\';
  const bool rete = riga.starts_with("\\\\") && riga.size() > 2;
  if ((!piena && !rete) || riga.find('\0') != std::string::npos || !support::DirExists(riga)) return "";
  return riga;
}

}  // namespace

std::string CartellaIniziale(const std::string& cartellaProgramma, const std::string& aperto) {
  if (!aperto.empty()) {
    if (const std::string c = CartellaDelFile(aperto); !c.empty()) return c;
  }
  if (const std::string c = CartellaRicordata(cartellaProgramma); !c.empty()) return c;
  return kCartellaSnapshot;
}

void RicordaCartella(const std::string& cartellaProgramma, const std::string& snapshot) {
  const std::string cartella = CartellaDelFile(snapshot);
  if (cartella.empty()) return;
  const std::string riga = cartella + "\r\n";
  // A folder not remembered only costs the supporter a click: the window opens all the same.
  (void)support::ScriviFileIntero(cartellaProgramma + "\\" + kFileUltimaCartella, {riga});
}

std::string TitoloFinestra(const Dialog_Analisi& d) {
  std::string titolo = kFormaAnalisi.caption;
  if (!d.NomeSnapshot.empty()) titolo += " - " + support::EstraiNomeFile(d.NomeSnapshot);
  return titolo;
}

bool ScegliSnapshot(support::DialogoFile& dialogo, std::string& nome, const std::string& cartella,
                    const std::string& titolo) {
  dialogo.ImpostaTitolo(titolo);
  dialogo.ImpostaNomeFile("");
  dialogo.ImpostaCartellaIniziale(cartella);
  dialogo.ImpostaFiltro(kFiltroSnapshot);
  if (!dialogo.MostraApri()) return false;
  nome = dialogo.NomeFile();
  return true;
}

void ImpostaValori(Dialog_Analisi& d, const std::string& NomeInfoOrdl) {
  d.Blocco = collection::BloccaCartellaProgramma(d.CartellaProgramma, d.Messaggi);
  if (d.Blocco.Occupato()) return;
  d.CartellaDati = d.CartellaProgramma + "\\Dati";
  // A Dati that is a file, a link or keeps old files is no place for the snapshot, and what it holds is not
  // the snapshot's: the reports then find their files missing, as after a snapshot that cannot be read.
  host::EscludiCartella({});
  if (const std::string motivo = support::PreparaCartellaDiLavoro(d.CartellaProgramma, d.CartellaDati);
      !motivo.empty()) {
    d.ErroreSnapshot = "the working folder " + d.CartellaDati + " cannot be used: " + motivo;
    d.Messaggi.Critico("Cannot use the working folder " + d.CartellaDati + ": " + motivo);
    host::EscludiCartella(d.CartellaDati);
    return;
  }
  d.NomeSnapshot = NomeInfoOrdl;
  d.SnapshotAperto =
      collection::EstraiSnapshot(NomeInfoOrdl, d.CartellaDati, d.Contenuto, d.CartellaProgramma);
  if (!d.SnapshotAperto) {
    d.ErroreSnapshot = support::FileExists(NomeInfoOrdl) ? kSnapshotIlleggibile : kSnapshotMancante;
    d.Messaggi.Semplice("Errrore estraendo file");
    return;
  }
  for (std::size_t i = 0; i < formats::kTestiFlagErrori.size(); ++i) {
    d.FlagBit[i] = formats::kTestiFlagErrori[i].bit;
    d.FlagTesti[i] = std::string(formats::kTestiFlagErrori[i].testo);
  }
  d.NumeroFlag = static_cast<std::int32_t>(formats::kTestiFlagErrori.size());
  mnu_ShowInfoHeader_Click(d);
}

void DeselezionaProspetti(Dialog_Analisi& d) {
  for (const auto& v : kVoci)
    if (v.posto == Posto::prospetto) d.Menu.SetChecked(v.voce, false);
}

void mnu_ShowInfoHeader_Click(Dialog_Analisi& d) {
  Segna(d, Voce::mnu_ShowInfoHeader);
  std::vector<formats::TestoFlag> tabella;
  for (std::int32_t i = 0; i < d.NumeroFlag && i < static_cast<std::int32_t>(d.FlagBit.size()); ++i) {
    const auto j = static_cast<std::size_t>(i);
    tabella.push_back({d.FlagBit[j], d.FlagTesti[j]});
  }
  Mostra(d, ProspettoHeader(d.CartellaDati, tabella, d.InfoHeader, d.Messaggi));
}

void mnu_ShowPref_Click(Dialog_Analisi& d) {
  Segna(d, Voce::mnu_ShowPref);
  Mostra(d, ProspettoPreferenze(d.CartellaDati, d.Messaggi));
}

void mnu_ShowArchivioQlv_Click(Dialog_Analisi& d) {
  // With no archive among the members nothing changes, the marks included.
  if (!collection::TrovaArchivio(d.Contenuto, d.CartellaDati).empty()) Segna(d, Voce::mnu_ShowArchivioQlv);
  Mostra(d, ProspettoArchivio(d.Contenuto, d.CartellaDati, d.Messaggi).testo);
}

void mnu_ShowORDL_Dir_Click(Dialog_Analisi& d) {
  Directory(d, Voce::mnu_ShowORDL_Dir, kDirectoryOrdl);
}
void mnu_ShowTRLE_Dir_Click(Dialog_Analisi& d) {
  Directory(d, Voce::mnu_ShowTRLE_Dir, kDirectoryTrle);
}
void mnu_ShowArchivioDir_Click(Dialog_Analisi& d) {
  Directory(d, Voce::mnu_ShowArchivioDir, kDirectoryArchivio);
}

void mnu_ShowOrdelioTxt_Click(Dialog_Analisi& d) {
  TestoSalvato(d, Voce::mnu_ShowOrdelioTxt, MostraOrdelioTxt(d.CartellaDati, d.Messaggi));
}
void mnu_ShowScriptDat_Click(Dialog_Analisi& d) {
  TestoSalvato(d, Voce::mnu_ShowScriptDat, MostraScriptDat(d.CartellaDati, d.Messaggi));
}

void mnu_AnalisiBackup_Click(Dialog_Analisi& d) {
  const auto testo =
      AnalisiBackup(d.CartellaProgramma, d.CartellaDati, d.FileTrovati, d.ProgressBar1, d.Messaggi);
  if (!testo) return;
  d.NumeroFileTrovati = static_cast<std::int32_t>(d.FileTrovati.size());
  Mostra(d, testo);
  DeselezionaProspetti(d);
}

void mnu_ShowAmbiente_Click(Dialog_Analisi& d) {
  const auto testo = ProspettoAmbiente(d.CartellaDati, d.Messaggi);
  if (!testo) return;
  Mostra(d, testo);
  DeselezionaProspetti(d);
}

void mnu_Confronta_Click(Dialog_Analisi& d) {
  std::string nome;
  // The open snapshot is the one the supporter answers, the newer: the one picked is the earlier.
  if (!ScegliSnapshot(d.CommonDialog1, nome, CartellaIniziale(d.CartellaProgramma, d.NomeSnapshot),
                      kTitoloConfronto))
    return;
  SnapshotAperto vecchio;
  const std::string cartella = d.CartellaProgramma + "\\" + kCartellaConfronto;
  if (ApriSnapshot(nome, cartella, vecchio, d.Messaggi)) {
    Mostra(d, TestoConfronto(
                  ConfrontaSnapshot(vecchio, {d.CartellaDati, d.Contenuto, d.NomeSnapshot}, d.Messaggi)));
    DeselezionaProspetti(d);
  }
  // The comparison is made: the copy of the other snapshot is of no more use, and not ours to keep.
  support::SvuotaCartella(cartella, "*");
}

RiepilogoSnapshot RiepilogoAperto(const Dialog_Analisi& d) {
  // The same findings as the tool's of the snapshot.
  RiepilogoSnapshot r;
  // Dati holds nothing of a snapshot that could not be unpacked: its members are not missing, it is.
  if (!d.SnapshotAperto) {
    r.Errore = d.ErroreSnapshot;
    r.Esiti = {EsitoIlleggibile(r.Errore)};
    return r;
  }
  r.Esiti = CalcolaRiepilogo(d.CartellaDati, d.Contenuto, d.CartellaProgramma, support::SeparatoreDecimale());
  if (const AmbienteLetto a = LeggiAmbienteDati(d.CartellaDati); a.stato == StatoAmbiente::letto)
    r.Data = DataControllo(a.ambiente);
  return r;
}

void mnu_RiepilogoProblemi_Click(Dialog_Analisi& d) {
  Mostra(d, TestoRiepilogo(RiepilogoAperto(d)));
  DeselezionaProspetti(d);
}

void mnu_SalvaCopiaAnonima_Click(Dialog_Analisi& d) {
  if (!d.SnapshotAperto) {
    d.Messaggi.Critico(kNessunoSnapshot);
    return;
  }
  d.CommonDialog1.ImpostaTitolo(kTitoloCopiaAnonima);
  d.CommonDialog1.ImpostaNomeFile(NomeCopiaAnonima(d.NomeSnapshot));
  d.CommonDialog1.ImpostaFiltro("Snapshot (*.bin)|*.bin");
  if (!d.CommonDialog1.MostraSalva()) return;
  RichiestaCopia r{d.NomeSnapshot, d.CommonDialog1.NomeFile(), {}, {}, &d.Contenuto};
  const std::string copia = r.copia;
  r.opzioni.autori = d.Messaggi.Domanda(kDomandaAutori);
  if (d.Messaggi.Domanda(kDomandaChiave)) {
    d.CommonDialog1.ImpostaTitolo(kTitoloChiave);
    d.CommonDialog1.ImpostaNomeFile(NomeChiave(copia));
    d.CommonDialog1.ImpostaFiltro("Text (*.txt)|*.txt");
    // A cancel here means no key, not no copy.
    if (d.CommonDialog1.MostraSalva()) r.fileChiave = d.CommonDialog1.NomeFile();
  }
  CopiaAnonima esito;
  if (const std::string errore = SalvaCopiaAnonima(r, esito); !errore.empty()) {
    d.Messaggi.Critico(errore);
    return;
  }
  d.Messaggi.Semplice(TestoCopiaAnonima(esito, copia));
}

bool Pul_EstraiDati_Click(const collection::Principale& p, support::DialogoFile& dialogo, std::string& nome) {
  // A click that arrives while a check run scans: the run owns the window until it closes it.
  if (p.ControlloInCorso) return false;
  return ScegliSnapshot(dialogo, nome, CartellaIniziale(p.CartellaProgramma, ""));
}

bool ApriFinestra(Dialog_Analisi& d, const std::string& nome) {
  ImpostaValori(d, nome);
  if (d.SnapshotAperto) RicordaCartella(d.CartellaProgramma, nome);
  return !d.Blocco.Occupato();
}

void EseguiVoce(Dialog_Analisi& d, Voce v) {
  VoceDi(v).esegui(d);
}

void TrovaTesto(Dialog_Analisi& d, bool Avanti, bool DallInizio, bool& Trovato) {
  Trovato = false;
  const std::string testo = d.Text_Out.Testo();
  const std::string cerca = d.Text_Cerca.Testo();
  // Positions from here on are those of the string, counted from 1.
  const long l = static_cast<long>(testo.size());
  const long posizione = DallInizio ? 0 : d.Text_Out.SelStart() + 1;
  if (Avanti ? posizione >= l : posizione <= 1) return;

  const std::string mt = host::Maiuscolo(testo);
  const std::string mc = host::Maiuscolo(cerca);
  const long lc = static_cast<long>(mc.size());
  long inizio = 0;
  if (Avanti) {
    // The first occurrence at position `posizione` + 1 or later; an empty text is found there at once.
    const std::size_t a = mt.find(mc, static_cast<std::size_t>(posizione));
    if (a == std::string::npos) return;
    inizio = static_cast<long>(a) + 1;
  } else {
    // The last occurrence that ends at position `posizione` - 1 or earlier; an empty text is found there.
    const long ultimoInizio = lc == 0 ? posizione - 2 : posizione - 1 - lc;  // as an index from 0
    if (ultimoInizio < 0) return;
    const std::size_t a = mt.rfind(mc, static_cast<std::size_t>(ultimoInizio));
    if (a == std::string::npos) return;
    inizio = static_cast<long>(a) + 1;
  }
  // The selection runs from the occurrence to the end of its word, whatever the search text's length.
  long fine = inizio;
  while (fine <= l && !FineParola(testo[static_cast<std::size_t>(fine - 1)])) ++fine;
  d.Text_Out.Seleziona(inizio - 1, fine - inizio);
  Trovato = true;
}

namespace {
void Cerca(Dialog_Analisi& d, bool avanti, bool dallInizio) {
  bool trovato = false;
  TrovaTesto(d, avanti, dallInizio, trovato);
  if (!trovato) d.Messaggi.Semplice("Non trovato");
}
}  // namespace

void Pul_Trova_Click(Dialog_Analisi& d) {
  Cerca(d, true, true);
}
void Pul_Dopo_Click(Dialog_Analisi& d) {
  Cerca(d, true, false);
}
void Pul_Prima_Click(Dialog_Analisi& d) {
  Cerca(d, false, false);
}

void mnu_Copia_Click(Dialog_Analisi& d) {
  const std::string scelto = d.Text_Out.SelText();
  if (scelto.empty()) {
    d.Messaggi.Critico("Nessun testo selezionato");
    return;
  }
  d.Clipboard.Svuota();
  d.Clipboard.ImpostaTesto(scelto);
}

void mnu_CaricaFile_Click(Dialog_Analisi& d) {
  d.CommonDialog1.ImpostaTitolo("Carica prospetto");
  d.CommonDialog1.ImpostaNomeFile("");
  d.CommonDialog1.ImpostaFiltro("File di testo (*.txt)|*.txt");
  if (!d.CommonDialog1.MostraApri()) return;
  d.Text_Out.ImpostaTesto(support::LeggiFile(d.CommonDialog1.NomeFile()));
}

void mnu_SalvaFile_Click(Dialog_Analisi& d) {
  d.CommonDialog1.ImpostaTitolo("Salva prospetto");
  d.CommonDialog1.ImpostaNomeFile("");
  d.CommonDialog1.ImpostaFiltro("File di testo (*.txt)|*.txt");
  if (!d.CommonDialog1.MostraSalva()) return;
  const std::string nome = d.CommonDialog1.NomeFile();
  if (const std::string motivo = support::ScriviTestoIntero(nome, d.Text_Out.Testo()); !motivo.empty())
    d.Messaggi.Critico("Could not write " + nome + ": " + motivo);
}

}  // namespace analysis
