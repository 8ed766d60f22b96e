// The checks on Ordelio: the editor folder its settings name, its level archive against the archive folder,
// and what the header records of it and of the drives.
#include <variant>

#include "analysis/riepilogo_aree.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {
namespace {

// Below this a drive is too full for the editor to build its levels.
constexpr double kSpazioMinimo = 200.0 * 1024 * 1024;

// A Windows folder path as compared: upper case, no closing backslash.
std::string CartellaConfrontabile(std::string p) {
  while (!p.empty() && p.back() == '\\') p.pop_back();
  return host::Maiuscolo(p);
}

// A disk figure as a count of bytes, or as its text where a damaged header holds no such count (a NaN,
// a negative or an enormous value).
std::variant<std::string, std::int64_t> Byte(double v, const std::string& testo) {
  if (v >= 0 && v < 9e18) return static_cast<std::int64_t>(v);
  return testo;
}

// An archive whose header cannot be read, or that holds fewer level records than its header counts: Ordelio
// lists only what the file holds.
void ArchivioDanneggiato(const Contesto& c) {
  const ArchivioFatti& a = c.fatti.archivio;
  const std::string nome =
      support::EstraiNomeFile(collection::TrovaArchivio(*c.fatti.contenuto, c.fatti.cartellaDati));
  const std::string azione = "Restore " + nome +
                             " from a backup, or let Ordelio rebuild its archive. The check of the archive "
                             "folder was left out.",
                    risposta = "Restore " + nome + " from a backup, or let Ordelio rebuild its archive.";
  const auto letti = static_cast<std::int64_t>(a.livelli.size());
  const bool tagliato = a.dimensione >= static_cast<std::int64_t>(formats::ArchivioHeader::kDimensione) &&
                        a.header.TotLivelli > letti;
  if (!tagliato)
    return c.Aggiungi(IdEsito::archiveUnreadable, Gravita::fail,
                      "The level archive " + nome + " cannot be read",
                      {{"archive", nome}, {"reason", a.problema}, {"size", a.dimensione}}, azione, risposta);
  c.Aggiungi(IdEsito::archiveCut, Gravita::fail,
             "The level archive " + nome + " is cut: it holds " + std::to_string(letti) + " of the " +
                 std::to_string(a.header.TotLivelli) + " levels its header counts",
             {{"archive", nome},
              {"counted", std::int64_t{a.header.TotLivelli}},
              {"read", letti},
              {"size", a.dimensione}},
             azione, risposta);
}

}  // namespace

void VerificaCartellaEditor(const Contesto& c) {
  const Record& r = c.fatti.preferenze;
  if (r.stato == StatoMembro::danneggiato)
    c.Aggiungi(IdEsito::prefsWrongLength, Gravita::warn,
               "ordelio.prf is not of the length of Ordelio's settings",
               {{"reason", r.problema}, {"size", r.dimensione}},
               "Ordelio may be of another version, or its settings damaged: have the user open Ordelio's "
               "settings, save them, and check again. The check of the editor folder was left out.",
               "Open Ordelio's settings, save them, and run the check again: ordelio.prf is not as this "
               "Ordelio writes it.");
  if (r.stato != StatoMembro::letto || c.fatti.trle.stato == StatoMembro::assente) return;
  const std::string pathTrle = support::PulisciStringa(c.fatti.prf.PathTRLE.Testo());
  const std::string& cartella = c.fatti.trle.letto->elenco.CartellaBase;
  const std::vector<Evidenza> evidenze = {{"PathTRLE", pathTrle}, {"editor_folder", cartella}};
  if (CartellaConfrontabile(pathTrle) == CartellaConfrontabile(cartella))
    c.Aggiungi(IdEsito::prefsSameEditorFolder, Gravita::pass,
               "Ordelio points at the editor folder that was checked", evidenze);
  else
    c.Aggiungi(
        IdEsito::prefsOtherEditorFolder, Gravita::fail,
        "Ordelio points at another editor folder than the one that was checked", evidenze,
        "Set the editor folder in Ordelio's settings to the level editor the user plays, or check that "
        "folder instead.",
        "In Ordelio's settings, set the editor folder to " + cartella +
            " (or to the level editor you play, if that is another one): it now points at " + pathTrle + ".");
}

void VerificaArchivio(const Contesto& c) {
  const Fatti& f = c.fatti;
  if (f.archivio.stato == StatoMembro::danneggiato) return ArchivioDanneggiato(c);
  if (f.archivio.stato != StatoMembro::letto || f.dirarc.stato != StatoMembro::letto) return;
  const formats::ElencoFile& e = f.dirarc.letto->elenco;
  // A level folder shows in the list only through the files below it.
  std::unordered_set<std::string> cartelle;
  for (std::size_t i = 0; i < VociUsabili(e); ++i) {
    const std::string& nome = e.NomiFile[i];
    const std::size_t inizio = nome.starts_with('\\') ? 1 : 0;
    const std::size_t fine = nome.find('\\', inizio);
    if (fine != std::string::npos) cartelle.insert(host::Maiuscolo(nome.substr(inizio, fine - inizio)));
  }
  const std::int32_t livelli = f.archivio.header.TotLivelli;
  const auto numero = static_cast<std::int64_t>(cartelle.size());
  const std::vector<Evidenza> evidenze = {
      {"TotLivelli", std::int64_t{livelli}}, {"folders", numero}, {"archive_folder", e.CartellaBase}};
  if (numero < livelli)
    c.Aggiungi(IdEsito::archiveFewFolders, Gravita::warn,
               "The archive lists " + std::to_string(livelli) + " levels but its folder holds " +
                   std::to_string(numero) + " level folders",
               evidenze,
               "Restore the missing level folders from a backup, or let Ordelio rebuild its archive.",
               "Restore the missing level folders in " + e.CartellaBase +
                   " from a backup, or let Ordelio rebuild its archive.");
  else
    c.Aggiungi(IdEsito::archiveFoldersMatch, Gravita::pass,
               "The archive folder holds a folder for each of the " + std::to_string(livelli) + " levels",
               evidenze);
}

void VerificaSpazio(const Contesto& c) {
  if (c.fatti.header.stato != StatoMembro::letto) return;
  const formats::InfoHeader& h = c.fatti.infoHeader;
  struct Disco {
    std::string lettera;
    double libero;
  };
  std::vector<Disco> dischi = {{"C", h.SpazioDiscoC}};
  const char maggiore = host::Maiuscola(h.DiscoMaggiore.byte[0]);
  if (maggiore >= 'A' && maggiore <= 'Z' && maggiore != 'C')
    dischi.push_back({std::string(1, maggiore), h.SpazioDiscoMaggiore});
  std::string tutti;
  bool poco = false;
  for (const auto& d : dischi) {
    const std::string libero = support::FormattaDimensione(d.libero, c.separatore);
    tutti += (tutti.empty() ? "" : ", ") + d.lettera + ": " + libero;
    if (d.libero >= kSpazioMinimo) continue;
    poco = true;
    c.Aggiungi(IdEsito::diskLowSpace, Gravita::warn,
               "Drive " + d.lettera + ": has little free space (" + libero + ")",
               {{"drive", d.lettera}, {"free_bytes", Byte(d.libero, libero)}},
               "Free at least 200 Mb on drive " + d.lettera + ": before building or installing levels.",
               "Free at least 200 Mb on drive " + d.lettera + ": before you build or install levels.");
  }
  if (!poco) c.Aggiungi(IdEsito::diskSpaceOk, Gravita::pass, "Enough free space: " + tutti);
}

void VerificaVersioneOrdelio(const Contesto& c) {
  const formats::InfoHeader& h = c.fatti.infoHeader;
  if (c.fatti.header.stato != StatoMembro::letto || (h.FlagErrori & formats::kMancaOrdl2009Exe)) return;
  const std::string versione = support::PulisciStringa(h.VersioneOrdelio.Testo());
  if (versione.empty())
    c.Aggiungi(
        IdEsito::ordelioNoVersion, Gravita::warn, "ordl2009.exe was found but carries no version text",
        {{"VersioneOrdelio", versione}},
        "Reinstall Ordelio from its own setup: this ordl2009.exe may be damaged or not the right one.",
        "Reinstall Ordelio from its own setup: your ordl2009.exe may be damaged or not the right one.");
  else
    c.Aggiungi(IdEsito::ordelioVersion, Gravita::pass, "Ordelio's version is " + versione,
               {{"VersioneOrdelio", versione}});
}

}  // namespace analysis
