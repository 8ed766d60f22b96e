#include "analysis/riepilogo_ambiente.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <string_view>

#include "analysis/riepilogo_aree.h"
#include "analysis/riepilogo_installazione.h"
#include "collection/snapshot.h"
#include "host/nomi.h"
#include "support/files.h"

namespace analysis {
namespace {

// What to do about a DLL Windows cannot find: the names are matched in lower case, whole or by their start.
struct RegolaDll {
  std::string_view nome;
  bool prefisso;
  // The Visual C++ redistributable that carries it; nullptr for the DirectX helpers.
  const char* redistribuibile;
};
constexpr std::array<RegolaDll, 17> kRegoleDll = {{
    {"d3dx9_", true, nullptr},
    {"xinput1_3.dll", false, nullptr},
    {"d3dcompiler_4", true, nullptr},
    {"msvcr71.dll", false, "2003"},
    {"msvcp71.dll", false, "2003"},
    {"msvcr80.dll", false, "2005"},
    {"msvcp80.dll", false, "2005"},
    {"msvcr90.dll", false, "2008"},
    {"msvcp90.dll", false, "2008"},
    {"msvcr100.dll", false, "2010"},
    {"msvcp100.dll", false, "2010"},
    {"msvcr110.dll", false, "2012"},
    {"msvcp110.dll", false, "2012"},
    {"msvcr120.dll", false, "2013"},
    {"msvcp120.dll", false, "2013"},
    {"vcruntime140", true, "2015-2022"},
    {"msvcp140", true, "2015-2022"},
}};

std::string Minuscolo(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return s;
}

std::string AzioneDll(const std::string& dll, host::MacchinaPe macchina) {
  const std::string nome = Minuscolo(dll);
  for (const RegolaDll& r : kRegoleDll) {
    if (r.prefisso ? !nome.starts_with(r.nome) : nome != r.nome) continue;
    if (!r.redistribuibile)
      return "Install the DirectX End-User Runtime from Microsoft: Windows does not carry " + dll +
             " itself.";
    std::string bit;
    if (macchina == host::MacchinaPe::x86) bit = " (x86)";
    if (macchina == host::MacchinaPe::x64) bit = " (x64)";
    return std::string("Install the Visual C++ ") + r.redistribuibile + " Redistributable" + bit +
           " from Microsoft" +
           (macchina == host::MacchinaPe::x86 ? ", the x86 one even on 64-bit Windows." : ".");
  }
  return "Copy " + dll +
         " into the executable's folder, from the program's own setup or a working installation.";
}

// What a compatibility layer does to a level tool; the version layers share one sentence.
struct Livello {
  std::string_view nome;
  bool prefisso;
  const char* effetto;
};
constexpr std::array<Livello, 14> kLivelli = {{
    {"RUNASADMIN", false,
     "runs it elevated: its writes go to the real folders, not the VirtualStore, and files it makes may be "
     "out "
     "of reach of the tools that run without elevation"},
    {"WINXP", true, "makes it believe it runs on an older Windows"},
    {"VISTA", true, "makes it believe it runs on an older Windows"},
    {"WIN7RTM", false, "makes it believe it runs on an older Windows"},
    {"WIN8RTM", false, "makes it believe it runs on an older Windows"},
    {"WIN9", true, "makes it believe it runs on an older Windows"},
    {"WIN2000", false, "makes it believe it runs on an older Windows"},
    {"NT4SP5", false, "makes it believe it runs on an older Windows"},
    {"HIGHDPIAWARE", false, "leaves its window unscaled on a high-DPI screen"},
    {"DPIUNAWARE", false, "has Windows stretch its window on a high-DPI screen"},
    {"GDIDPISCALING", false, "has Windows scale its drawing on a high-DPI screen"},
    {"DISABLEDXMAXIMIZEDWINDOWEDMODE", false, "turns off the fullscreen optimizations"},
    {"256COLOR", false, "limits it to 256 colours"},
    {"640X480", false, "runs it at 640 x 480"},
}};

std::string EffettoLivello(const std::string& livello) {
  for (const Livello& l : kLivelli)
    if (l.prefisso ? livello.starts_with(l.nome) : livello == l.nome) return livello + " " + l.effetto;
  return livello + " is a layer this program does not know";
}

// The layers of a setting's data, without the flags ("~", "$", ...) that lead it.
std::vector<std::string> Livelli(const std::string& dati) {
  std::vector<std::string> livelli;
  std::size_t i = 0;
  while (i < dati.size()) {
    const std::size_t j = std::min(dati.find(' ', i), dati.size());
    std::string parola = host::Maiuscolo(dati.substr(i, j - i));
    if (!parola.empty() && std::isalnum(static_cast<unsigned char>(parola[0])))
      livelli.push_back(std::move(parola));
    i = j + 1;
  }
  return livelli;
}

// Documents, the desktop and OneDrive: the folders Controlled Folder Access guards by default.
bool SottoCartellaProtetta(const std::string& cartella) {
  const auto parti = ComponentiCartella(cartella);
  return std::any_of(parti.begin(), parti.end(), [](const std::string& p) {
    return p == "DOCUMENTS" || p == "MY DOCUMENTS" || p == "DESKTOP" || p.starts_with("ONEDRIVE");
  });
}

class Ambiente {
 public:
  Ambiente(const Contesto& c, const formats::Ambiente& a) : c_(c), a_(a) {}

  void Verifica(const std::vector<ElencoDiCartella>& elenchi) {
    Dll();
    Impostazioni();
    AccessoControllato(elenchi);
  }

 private:
  void Aggiungi(IdEsito id, Gravita g, std::string titolo, std::vector<Evidenza> evidenze = {},
                std::string azione = {}, std::string risposta = {}) {
    c_.Aggiungi(id, g, std::move(titolo), std::move(evidenze), std::move(azione), std::move(risposta));
  }

  void Dll() {
    std::int64_t dll = 0, mancanti = 0;
    for (const formats::EseguibileAmbiente& ea : a_.eseguibili) {
      const host::Eseguibile& e = ea.eseguibile;
      const std::string nome = support::EstraiNomeFile(e.percorso);
      for (const host::DllImportata& d : e.importazioni) {
        ++dll;
        if (d.origine != host::Origine::nonTrovata) continue;
        ++mancanti;
        Aggiungi(
            IdEsito::dllNotFound, Gravita::fail, nome + " imports " + d.nome + ", which Windows cannot find",
            {{"executable", e.percorso}, {"dll", d.nome}, {"machine", formats::NomeMacchina(e.macchina)}},
            AzioneDll(d.nome, e.macchina) + " Until then " + nome + " does not start.",
            AzioneDll(d.nome, e.macchina) + " Until then " + e.percorso + " does not start.");
      }
    }
    if (mancanti == 0 && dll > 0)
      Aggiungi(
          IdEsito::dllAllFound, Gravita::pass,
          "Windows finds every DLL the executables import: " + Quanti(static_cast<std::size_t>(dll), "DLL") +
              ", " + Quanti(a_.eseguibili.size(), "executable"),
          {{"executables", static_cast<std::int64_t>(a_.eseguibili.size())}, {"dlls", dll}});
  }

  static bool StrumentoDiLivelli(const formats::EseguibileAmbiente& ea) {
    return ea.cartella == formats::CartellaEseguibile::editor ||
           host::UgualiSenzaCaso(support::EstraiNomeFile(ea.eseguibile.percorso), "ordl2009.exe");
  }

  void Marchio(const std::string& file, int zona) {
    if (!ZonaDelWeb(zona)) return;
    ++segnalati_;
    Aggiungi(IdEsito::webMarked, Gravita::warn,
             support::EstraiNomeFile(file) + " carries the mark of the web: zone " + TestoZona(zona),
             {{"file", file}, {"zone", static_cast<std::int64_t>(zona)}},
             "Open the file's Properties and tick \"Unblock\", or unblock the downloaded zip and extract it "
             "again: Windows may refuse to load a marked DLL.",
             "Open the Properties of " + file +
                 " and tick \"Unblock\", or unblock the downloaded zip and extract it again: Windows may "
                 "refuse to load a marked file.");
  }

  void Impostazioni() {
    for (const formats::EseguibileAmbiente& ea : a_.eseguibili) {
      const host::Eseguibile& e = ea.eseguibile;
      Marchio(e.percorso, e.zona);
      for (const host::DllImportata& d : e.importazioni)
        if (d.origine == host::Origine::cartellaEseguibile) Marchio(d.percorso, d.zona);
      if (!StrumentoDiLivelli(ea)) continue;
      for (const host::LivelloCompatibilita& l : e.livelli) {
        std::string effetti;
        for (const std::string& livello : Livelli(l.dati))
          effetti += (effetti.empty() ? "" : "; ") + EffettoLivello(livello);
        if (effetti.empty()) continue;
        ++segnalati_;
        Aggiungi(IdEsito::exeCompatLayers, Gravita::warn,
                 support::EstraiNomeFile(e.percorso) + " runs with compatibility layers set in " + l.radice,
                 {{"executable", e.percorso}, {"root", l.radice}, {"layers", l.dati}},
                 effetti +
                     ". Unless they were set on purpose, clear them in the file's Properties, "
                     "Compatibility (\"Change settings for all users\" for HKLM), so that every level "
                     "tool runs alike.",
                 "Unless you set them on purpose, clear the compatibility settings of " + e.percorso +
                     " in its Properties, Compatibility (\"Change settings for all users\" too): " + effetti +
                     ".");
      }
    }
    if (segnalati_ == 0 && !a_.eseguibili.empty())
      Aggiungi(IdEsito::exeSettingsOk, Gravita::pass,
               "The level tools carry no compatibility layer and no mark of the web");
  }

  void AccessoControllato(const std::vector<ElencoDiCartella>& elenchi) {
    const auto& valore = a_.windows.accessoControllato;
    if (!valore || (*valore != 1 && *valore != 2)) return;
    std::vector<std::pair<std::string, std::string>> cartelle;
    for (const auto& e : elenchi) cartelle.emplace_back(e.ruolo, e.elenco->CartellaBase);
    for (const formats::EseguibileAmbiente& ea : a_.eseguibili)
      cartelle.emplace_back(ea.cartella == formats::CartellaEseguibile::editor ? "editor" : "Ordelio",
                            support::EstraiCartella(ea.eseguibile.percorso));
    std::set<std::string> detti;
    for (const auto& [ruolo, cartella] : cartelle) {
      if (!SottoCartellaProtetta(cartella) || !detti.insert(ruolo).second) continue;
      const std::vector<Evidenza> evidenze = {
          {"folder", ruolo}, {"path", cartella}, {"EnableControlledFolderAccess", std::int64_t{*valore}}};
      if (*valore == 2)
        Aggiungi(IdEsito::cfaAudit, Gravita::pass,
                 "Controlled Folder Access only audits the " + ruolo + " folder, below a guarded folder",
                 evidenze);
      else
        Aggiungi(
            IdEsito::cfaGuardedFolder, Gravita::warn,
            "Controlled Folder Access is on and the " + ruolo + " folder is below a folder it guards",
            evidenze,
            "Allow the level editor, tomb4.exe and ordl2009.exe in Windows Security, Ransomware protection, "
            "or move the installation to a folder such as C:\\TRLE: their writes there are refused.",
            "Allow the level editor, tomb4.exe and ordl2009.exe in Windows Security, Ransomware protection, "
            "or move " +
                PerUtente(ruolo) + " from " + cartella +
                " to a folder such as C:\\TRLE: Windows refuses their writes there.");
    }
  }

  const Contesto& c_;
  const formats::Ambiente& a_;
  std::int64_t segnalati_ = 0;
};

}  // namespace

const formats::MembroNonLetto* MembroNonLettoDi(const AmbienteLetto& a, collection::Membro m) {
  if (a.stato != StatoAmbiente::letto) return nullptr;
  for (const formats::MembroNonLetto& n : a.ambiente.nonLetti)
    if (collection::MembroDiNome(n.percorso) == m) return &n;
  return nullptr;
}

Esito MembroIlleggibile(const formats::MembroNonLetto& n, collection::Membro m) {
  const char* nome = collection::VoceDi(m).nomeDati;
  const std::string motivo = collection::MotivoEsclusione(n.errore);
  return {std::string(VoceDi(IdEsito::memberUnreadable).id),
          Gravita::warn,
          std::string("The check could not read ") + nome + ": " + motivo,
          {{"member", nome},
           {"path", n.percorso},
           {"reason", motivo},
           {"needed_by", collection::VoceDi(m).serve}},
          "Close Ordelio and the level editor, then run the check again.",
          "Close Ordelio and the level editor, then run the check again and send the new snapshot: the check "
          "could not read " +
              n.percorso + "."};
}

void VerificaAmbiente(const Contesto& c) {
  const AmbienteLetto& a = c.fatti.ambiente;
  switch (a.stato) {
    case StatoAmbiente::assente:
      return c.Aggiungi(IdEsito::environmentNotRecorded, Gravita::pass,
                        "The snapshot records no environment: an older program made it");
    case StatoAmbiente::illeggibile:
      return c.Aggiungi(
          IdEsito::environmentUnreadable, Gravita::warn, "The snapshot's ambiente.json cannot be read",
          {{"reason", a.motivo}},
          "Ask the user for a new snapshot: the checks on the environment were left out.",
          "Please run the check again and send the new snapshot: its ambiente.json is damaged.");
    case StatoAmbiente::letto:
      break;
  }
  Ambiente(c, a.ambiente).Verifica(ElenchiPresenti(c.fatti));
}

}  // namespace analysis
