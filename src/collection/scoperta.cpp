#include "collection/scoperta.h"

#include "host/nomi.h"
#include "support/files.h"
#include "support/installazioni.h"
#include "support/spazio_dischi.h"
#include "support/valori.h"
#include "support/versioni.h"

namespace collection {

std::string TrovaCartellaTrle() {
  const std::string valore = support::LeggiPrimoValoreRegistro(std::string(support::kAppPaths) + "tomb4.exe");
  if (valore.empty()) return {};
  // The entry may name the executable or only its folder; anything holding ".exe" is taken for the file.
  if (host::Maiuscolo(valore).find(".EXE") != std::string::npos) return support::EstraiCartella(valore);
  return valore;
}

void CercaInstallazioni(Principale& p, formats::PrefRecord& pref) {
  const std::string trle = TrovaCartellaTrle();
  if (!trle.empty()) p.Label_NomeTrle.ImpostaTesto(trle);

  const std::string ordl2009 = support::TrovaEseguibile("ordl2009.exe");
  if (!ordl2009.empty()) {
    const std::string ordl = support::EstraiCartella(ordl2009);
    p.Label_DirORDL.ImpostaTesto(ordl);
    formats::CaricaPreferenze(ordl + "\\Ordelio.prf", pref);
    const std::string pathTrle = support::PulisciStringa(pref.PathTRLE.Testo());
    if (support::DirExists(pathTrle)) p.Label_NomeTrle.ImpostaTesto(pathTrle);
  }

  // The captions are read only now, so the header records what the two sources settled on.
  formats::InfoHeader& h = p.InfoHeader;
  h.StartFolderTrle.Assegna(p.Label_NomeTrle.Testo());
  h.StartFolderOrdl.Assegna(p.Label_DirORDL.Testo());
  h.WindowsXp = support::IsWindowsNT();
  double libero = h.SpazioDiscoMaggiore;
  const std::string disco = support::DiscoConPiuSpazio(libero);
  if (!disco.empty()) {
    h.DiscoMaggiore.Assegna(disco);
    h.SpazioDiscoMaggiore = libero;
  }
  h.SpazioDiscoC = support::SpazioLibero("c:");
}

}  // namespace collection
