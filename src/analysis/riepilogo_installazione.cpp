#include "analysis/riepilogo_installazione.h"

#include <algorithm>
#include <string>

#include "analysis/ambiente_dati.h"
#include "analysis/elenchi.h"
#include "analysis/riepilogo_aree.h"
#include "host/nomi.h"

namespace analysis {
namespace {

// A path's characters, terminator included, must stay below this (MAX_PATH).
constexpr std::size_t kLimite = 260;
// A folder this close to the limit leaves no room for the names the level tools make in it.
constexpr std::size_t kMargine = 20;
constexpr const char* kAltrove = "such as C:\\TRLE";

bool SottoProgrammi(const std::string& cartella) {
  const auto parti = ComponentiCartella(cartella);
  return !parti.empty() && (parti[0] == "PROGRAM FILES" || parti[0] == "PROGRAM FILES (X86)");
}

bool SottoOneDrive(const std::string& cartella) {
  const auto parti = ComponentiCartella(cartella);
  return std::any_of(parti.begin(), parti.end(),
                     [](const std::string& p) { return p.starts_with("ONEDRIVE"); });
}

bool SoloAscii(const std::string& s) {
  return std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string SenzaBarra(std::string cartella) {
  while (cartella.size() > 3 && cartella.back() == '\\') cartella.pop_back();
  return cartella;
}

class Installazione {
 public:
  explicit Installazione(const Contesto& c) : c_(c) {}

  void Verifica(const std::vector<ElencoDiCartella>& elenchi, const formats::Ambiente* ambiente) {
    for (const auto& e : elenchi) Cartella(e.ruolo, *e.elenco);
    if (avvisi_ == 0)
      c_.Aggiungi(IdEsito::installPathsOk, Gravita::pass,
                  "The installation folders are outside Program Files and OneDrive, plain and short");
    if (ambiente) VirtualStore(*ambiente);
  }

 private:
  void Avvisa(IdEsito id, std::string titolo, std::vector<Evidenza> evidenze, std::string azione,
              std::string risposta) {
    ++avvisi_;
    c_.Aggiungi(id, Gravita::warn, std::move(titolo), std::move(evidenze), std::move(azione),
                std::move(risposta));
  }

  void Cartella(const std::string& ruolo, const formats::ElencoFile& elenco) {
    const std::string cartella = SenzaBarra(elenco.CartellaBase);
    const std::vector<Evidenza> evidenza = {{"folder", ruolo}, {"path", cartella}};
    if (SottoProgrammi(cartella))
      Avvisa(IdEsito::installProgramFiles, "The " + ruolo + " folder is below a Program Files folder",
             evidenza,
             std::string("Files the level tools write there may live in the user's VirtualStore and differ "
                         "from what others see; installing in a folder of the user's, ") +
                 kAltrove + ", avoids it.",
             "Move " + PerUtente(ruolo) + " from " + cartella + " to a folder of your own, " + kAltrove +
                 ": below Program Files, Windows may keep what the level tools write in a copy of its own.");
    if (!SoloAscii(cartella))
      Avvisa(IdEsito::installNonAsciiPath, "The " + ruolo + " folder's path has characters outside ASCII",
             evidenza,
             std::string("Move the installation to a folder whose path is plain ASCII, ") + kAltrove +
                 ": the level tools may not open it.",
             "Move " + PerUtente(ruolo) + " from " + cartella +
                 " to a folder whose path has only plain letters, " + kAltrove +
                 ": the level tools may not open it.");
    if (SottoOneDrive(cartella))
      Avvisa(IdEsito::installOnedrive, "The " + ruolo + " folder is below a OneDrive folder", evidenza,
             std::string("Move the installation out of OneDrive into a folder of the user's, ") + kAltrove +
                 ": OneDrive may keep files online only or lock them while it syncs.",
             "Move " + PerUtente(ruolo) + " from " + cartella + " out of OneDrive, to a folder " + kAltrove +
                 ": OneDrive may keep files online only or lock them while it syncs.");
    if (cartella.size() + kMargine >= kLimite)
      Avvisa(IdEsito::installLongPath,
             "The " + ruolo + " folder's path is " + std::to_string(cartella.size()) +
                 " characters long, near the limit of 260",
             {{"folder", ruolo}, {"path", cartella}, {"length", static_cast<std::int64_t>(cartella.size())}},
             std::string("Move the installation to a shorter path, ") + kAltrove +
                 ": the level tools cannot open longer paths.",
             "Move " + PerUtente(ruolo) + " from " + cartella + " to a shorter path, " + kAltrove +
                 ": the level tools cannot open longer paths.");
    Nomi(ruolo, cartella, elenco);
  }

  // The names of a list: "?" where Windows' code page could not show a character, and full paths that
  // reach the limit. One warning each, with the count and the first such name.
  void Nomi(const std::string& ruolo, const std::string& cartella, const formats::ElencoFile& elenco) {
    std::int64_t illeggibili = 0, lunghi = 0;
    std::string primoIlleggibile, primoLungo;
    for (std::size_t i = 0; i < VociUsabili(elenco); ++i) {
      const std::string& nome = elenco.NomiFile[i];
      if (nome.find('?') != std::string::npos && illeggibili++ == 0) primoIlleggibile = nome;
      const std::size_t lunghezza = cartella.size() + (nome.starts_with('\\') ? 0 : 1) + nome.size();
      if (lunghezza + 1 > kLimite && lunghi++ == 0) primoLungo = nome;
    }
    if (illeggibili > 0)
      Avvisa(IdEsito::installUnshowableName,
             "The " + ruolo + " folder holds names with characters the Windows code page cannot show",
             {{"folder", ruolo}, {"names", illeggibili}, {"first", primoIlleggibile}},
             "Rename those files and folders with plain letters: the level tools cannot open them.",
             "Rename the files and folders in " + cartella +
                 " whose names have letters Windows cannot show " + "(the first is " + primoIlleggibile +
                 ") with plain letters: the level tools cannot open them.");
    if (lunghi > 0)
      Avvisa(IdEsito::installLongName,
             "The " + ruolo + " folder holds paths that reach the limit of 260 characters",
             {{"folder", ruolo}, {"names", lunghi}, {"first", primoLungo}},
             std::string("Shorten those names, or move the installation to a shorter path, ") + kAltrove +
                 ": the level tools cannot open them.",
             "Shorten the names in " + cartella + " whose paths reach 260 characters (the first is " +
                 primoLungo + "), or move " + PerUtente(ruolo) + " to a shorter path, " + kAltrove + ".");
  }

  // What the level tools read there is the user's own copy, which other programs and other accounts do not
  // see.
  void VirtualStore(const formats::Ambiente& a) {
    if (a.membriVirtuali.empty() && a.fileVirtualiTotale == 0) return;
    std::string membri;
    for (const std::string& m : a.membriVirtuali) membri += (membri.empty() ? "" : "; ") + m;
    std::vector<Evidenza> evidenze = {{"members", membri},
                                      {"listed_files", static_cast<std::int64_t>(a.fileVirtualiTotale)}};
    if (!a.fileVirtuali.empty()) evidenze.push_back({"first_listed", a.fileVirtuali.front()});
    Avvisa(IdEsito::installVirtualstore,
           "Windows served " + Quanti(a.membriVirtuali.size(), "member") + " and " +
               Quanti(a.fileVirtualiTotale, "listed file") + " from the VirtualStore",
           std::move(evidenze),
           std::string(
               "The level tools see the user's VirtualStore copies, which other programs and an elevated "
               "run do not: move the installation to a folder of the user's, ") +
               kAltrove + ", and copy the VirtualStore's files into it.",
           std::string("Move the level editor and Ordelio to a folder of your own, ") + kAltrove +
               ", and copy into it the files Windows keeps for them in your VirtualStore "
               "(%LOCALAPPDATA%\\VirtualStore).");
  }

  const Contesto& c_;
  std::int64_t avvisi_ = 0;
};

}  // namespace

std::string PerUtente(const std::string& ruolo) {
  if (ruolo == "editor") return "the level editor";
  if (ruolo == "archive") return "the level archive";
  return ruolo;
}

std::vector<std::string> ComponentiCartella(const std::string& cartella) {
  std::vector<std::string> parti;
  std::size_t i = cartella.size() >= 2 && cartella[1] == ':' ? 2 : 0;
  while (i < cartella.size()) {
    const std::size_t j = std::min(cartella.find('\\', i), cartella.size());
    if (j > i) parti.push_back(host::Maiuscolo(cartella.substr(i, j - i)));
    i = j + 1;
  }
  return parti;
}

std::vector<ElencoDiCartella> ElenchiPresenti(const Fatti& f) {
  std::vector<ElencoDiCartella> elenchi;
  if (f.trle.stato != StatoMembro::assente) elenchi.push_back({"editor", &f.trle.letto->elenco});
  if (f.ordl.stato != StatoMembro::assente) elenchi.push_back({"Ordelio", &f.ordl.letto->elenco});
  if (f.dirarc.stato != StatoMembro::assente) elenchi.push_back({"archive", &f.dirarc.letto->elenco});
  return elenchi;
}

void VerificaInstallazione(const Contesto& c) {
  const std::vector<ElencoDiCartella> elenchi = ElenchiPresenti(c.fatti);
  if (elenchi.empty()) return;
  const AmbienteLetto& a = c.fatti.ambiente;
  Installazione(c).Verifica(elenchi, a.stato == StatoAmbiente::letto ? &a.ambiente : nullptr);
}

}  // namespace analysis
