#include "collection/selezione.h"

#include "support/files.h"

namespace collection {
namespace {

// Caption, start folder, modal display; the chosen folder only after OK. An empty start folder makes the
// dialog open on the process's current folder.
bool ChiediCartella(support::DialogoCartella& d, const std::string& titolo, const std::string& inizio,
                    std::string* scelta) {
  d.ImpostaTitolo(titolo);
  d.ImpostaValori(inizio);
  d.MostraModale();
  if (!d.ExitValue()) return false;
  *scelta = d.PathDir();
  return true;
}

}  // namespace

void Pul_CambiaORDL_Click(Principale& p) {
  if (p.ControlloInCorso) return;  // a click that arrives while a check run scans
  std::string scelta;
  if (!ChiediCartella(p.Dialog_GetDir, "Select folder where is Ordelio", p.Label_DirORDL.Testo(), &scelta))
    return;
  if (support::FileExists(scelta + "\\ordl2009.exe"))
    p.Label_DirORDL.ImpostaTesto(scelta);
  else
    p.Messaggi.Critico("In this folder is missing file ordl2009.exe this cannot be ORDL folder");
}

void Pul_CambiaTrle_Click(Principale& p) {
  if (p.ControlloInCorso) return;
  std::string scelta;
  if (!ChiediCartella(p.Dialog_GetDir, "Select TRLE folder", p.Label_NomeTrle.Testo(), &scelta)) return;
  if (ControllaCartellaTrle(scelta, p.Messaggi)) p.Label_NomeTrle.ImpostaTesto(scelta);
}

bool ControllaCartellaTrle(const std::string& Cartella, support::Messaggi& messaggi) {
  // The pattern goes to the file test as it is: any one match is enough.
  for (const char* richiesto : {"\\tomb4.exe", "\\data\\*.tr4", "\\script.dat"}) {
    if (!support::FileExists(Cartella + richiesto)) {
      messaggi.Critico("This is not a correct Level Editor folder: " + Cartella);
      return false;
    }
  }
  return true;
}

}  // namespace collection
