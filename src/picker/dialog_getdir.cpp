#include "picker/dialog_getdir.h"

#include <utility>

#include "host/accesso_dischi.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace picker {
namespace {

constexpr char kNonPronto[] = "Drive not ready";
constexpr char kNomeMancante[] = "You must write name for new folder, before click on this button";

// The drive letter of a value, upper case, or 0 when it does not begin with one.
char Lettera(const std::string& valore) {
  if (valore.size() < 2 || valore[1] != ':') return 0;
  const char l = host::Maiuscola(valore[0]);
  return l >= 'A' && l <= 'Z' ? l : 0;
}

std::string Quotato(const std::string& percorso) {
  return "\"" + percorso + "\"";
}

// Resolves a folder list value to a whole path and reads the folders it holds. A bare "X:" stands for the
// drive's current folder: where this dialog last showed that drive, else the process's current folder
// when it lies there, else the root.
int Leggi(const Dialog_GetDir& d, const std::string& valore, ListaCartelle* lista) {
  const char l = Lettera(valore);
  if (!l) return host::kErrPathNotFound;
  std::string path = valore;
  if (path.size() == 2) {
    const std::string corrente = host::CartellaCorrente();
    if (!d.correnti[l - 'A'].empty())
      path = d.correnti[l - 'A'];
    else if (Lettera(corrente) == l)
      path = corrente;
    else
      path += '\\';
  }
  if (path[2] != '\\') return host::kErrPathNotFound;
  while (path.size() > 3 && path.back() == '\\') path.pop_back();

  int err = 0;
  const int attr = host::LeggiAttributi(path, &err);
  if (attr < 0) return err == host::kErrDeviceUnavailable ? err : host::kErrPathNotFound;
  if (!(attr & host::kAttrDirectory)) return host::kErrPathNotFound;

  const std::string base = path.back() == '\\' ? path : path + "\\";
  std::vector<std::string> sottocartelle;
  host::Enumerazione elenco(base, host::kAttrDirectory);
  for (std::string n = elenco.Prossima(&err); !n.empty(); n = elenco.Prossima(&err)) {
    if (n == "." || n == "..") continue;
    int e = 0;
    const int a = host::LeggiAttributi(base + n, &e);
    if (a >= 0 && (a & host::kAttrDirectory)) sottocartelle.push_back(n);
  }
  if (err) return err;
  lista->Path = path;
  lista->sottocartelle = std::move(sottocartelle);
  return 0;
}

void Mostra(Dialog_GetDir& d, ListaCartelle lista) {
  d.correnti[Lettera(lista.Path) - 'A'] = lista.Path;
  const bool cambiata = lista.Path != d.Dir1.Path;
  d.Dir1 = std::move(lista);
  if (cambiata) Dir1_Change(d);
}

void ImpostaValoriDa(Dialog_GetDir& d, const std::string& Percorso, bool ripiego) {
  d.ExitValue = false;
  d.PathDir = Percorso;
  std::string mostra = Percorso.empty() ? host::CartellaCorrente() : Percorso;
  if (ImpostaDrive(d, mostra) == host::kErrPathNotFound) {
    mostra = host::CartellaCorrente();
    ImpostaDrive(d, mostra);
  }
  if (ImpostaPath(d, mostra) != 0) {
    if (!ripiego) {
      ImpostaValoriDa(d, host::CartellaCorrente(), true);
      return;
    }
    // Not even the current folder can be listed: an empty list, rather than trying again for ever.
    d.Dir1 = ListaCartelle{mostra, {}};
  }
  d.Text_Path = mostra;
}

}  // namespace

std::vector<std::string> ElencoDrive() {
  std::vector<std::string> elenco;
  for (char l = 'A'; l <= 'Z'; ++l) {
    host::OggettoDrive drive;
    int err = 0;
    if (host::LeggiDrive(std::string(1, l) + ":\\", &drive, &err)) elenco.push_back(std::string(1, l) + ":");
  }
  return elenco;
}

void Carica(Dialog_GetDir& d) {
  d.Drive1.elenco = ElencoDrive();
  const std::string corrente = host::CartellaCorrente();
  const char l = Lettera(corrente);
  d.Drive1.Drive = l ? std::string(1, l) + ":" : std::string();
  ListaCartelle lista;
  if (Leggi(d, corrente, &lista) == 0) {
    d.correnti[l - 'A'] = lista.Path;
    d.Dir1 = std::move(lista);
  }
}

int ImpostaDrive(Dialog_GetDir& d, const std::string& valore) {
  const char l = Lettera(valore);
  if (!l) return host::kErrPathNotFound;
  host::OggettoDrive drive;
  int err = 0;
  if (!host::LeggiDrive(std::string(1, l) + ":\\", &drive, &err) || !drive.IsReady)
    return host::kErrDeviceUnavailable;
  const std::string nuovo = std::string(1, l) + ":";
  if (nuovo == d.Drive1.Drive) return 0;
  d.Drive1.Drive = nuovo;
  Drive1_Change(d);
  return 0;
}

int ImpostaPath(Dialog_GetDir& d, const std::string& valore) {
  ListaCartelle lista;
  const int err = Leggi(d, valore, &lista);
  if (err) return err;
  Mostra(d, std::move(lista));
  return 0;
}

void AggiornaDir(Dialog_GetDir& d) {
  ListaCartelle lista;
  if (Leggi(d, d.Dir1.Path, &lista) == 0) d.Dir1 = std::move(lista);
}

void ScegliDrive(Dialog_GetDir& d, const std::string& drive) {
  const char l = Lettera(drive);
  const std::string nuovo = std::string(1, l) + ":";
  bool presente = false;
  for (const auto& e : d.Drive1.elenco) presente = presente || e == nuovo;
  if (!l || !presente || nuovo == d.Drive1.Drive) return;
  d.Drive1.Drive = nuovo;
  Drive1_Change(d);
}

void ImpostaValori(Dialog_GetDir& d, const std::string& Percorso) {
  ImpostaValoriDa(d, Percorso, false);
}

void Dir1_Change(Dialog_GetDir& d) {
  d.Text_Path = d.Dir1.Path;
}

void Drive1_Change(Dialog_GetDir& d) {
  const std::string prima = d.Dir1.Path;
  if (ImpostaPath(d, d.Drive1.Drive) == host::kErrDeviceUnavailable) {
    d.messaggi.Critico(kNonPronto);
    ImpostaPath(d, prima);
    // Setting the drive back raises this event once more, which finds the list where it now stands.
    ImpostaDrive(d, prima);
  }
  AggiornaDir(d);
}

void Pul_NuovaCartella_Click(Dialog_GetDir& d) {
  if (d.Text_PathDir.empty()) {
    d.messaggi.Critico(kNomeMancante);
    return;
  }
  const std::string nuovo = NormalizzaPercorso(d.Dir1.Path + "\\" + support::TogliSpazi(d.Text_PathDir));
  int err = 0;
  // Folders included: a file of that name blocks the folder just the same.
  const std::string trovato = host::Enumerazione(nuovo, host::kAttrDirectory).Prossima(&err);
  if (!trovato.empty()) {
    d.messaggi.Critico("The folder " + Quotato(nuovo) + " is already present");
    return;
  }
  if (err) {
    d.messaggi.Critico("The folder " + Quotato(nuovo) + " cannot be read");
    return;
  }
  if (!host::CreaUnaCartella(nuovo, &err)) {
    d.messaggi.Critico("The folder " + Quotato(nuovo) + " cannot be created");
    return;
  }
  ImpostaValori(d, nuovo);
}

void OKButton_Click(Dialog_GetDir& d) {
  d.PathDir = d.Dir1.Path;
  // A root comes back as "C:", so that every result takes "\" and a name alike.
  if (d.PathDir.size() < 4) {
    const std::size_t k = d.PathDir.find(":\\");
    if (k != std::string::npos) d.PathDir.erase(k + 1, 1);
  }
  d.ExitValue = true;
  d.chiuso = true;
}

void CancelButton_Click(Dialog_GetDir& d) {
  d.PathDir.clear();
  d.ExitValue = false;
  d.chiuso = true;
}

void ChiudiDallaCornice(Dialog_GetDir& d) {
  d.chiuso = true;
}

DialogoGetDir::DialogoGetDir(support::Messaggi& messaggi, Utente utente)
    : messaggi_(messaggi), utente_(std::move(utente)) {}

Dialog_GetDir& DialogoGetDir::Istanza() {
  if (!modello_) {
    modello_.emplace(Dialog_GetDir{messaggi_});
    Carica(*modello_);
  }
  return *modello_;
}

void DialogoGetDir::ImpostaTitolo(const std::string& titolo) {
  Istanza().Caption = titolo;
}

void DialogoGetDir::ImpostaValori(const std::string& percorso) {
  picker::ImpostaValori(Istanza(), percorso);
}

void DialogoGetDir::MostraModale() {
  Dialog_GetDir& d = Istanza();
  d.chiuso = false;
  if (utente_) utente_(d);
  if (!d.chiuso) ChiudiDallaCornice(d);
  exitValue_ = d.ExitValue;
  pathDir_ = d.PathDir;
  // The controls go with the window; the next use starts from fresh ones.
  modello_.reset();
}

bool DialogoGetDir::ExitValue() const {
  return modello_ ? modello_->ExitValue : exitValue_;
}

std::string DialogoGetDir::PathDir() const {
  return modello_ ? modello_->PathDir : pathDir_;
}

std::vector<RigaCartella> RigheDir(const ListaCartelle& l) {
  std::vector<RigaCartella> righe;
  const std::string& path = l.Path;
  if (path.size() < 2) return righe;
  righe.push_back({path.substr(0, 2) + "\\", path.substr(0, 2) + "\\", 0, true});
  std::size_t inizio = 3;
  while (inizio < path.size()) {
    std::size_t fine = path.find('\\', inizio);
    if (fine == std::string::npos) fine = path.size();
    righe.push_back(
        {path.substr(inizio, fine - inizio), path.substr(0, fine), static_cast<int>(righe.size()), true});
    inizio = fine + 1;
  }
  const std::string base = path.size() > 3 ? path + "\\" : path;
  const int livello = static_cast<int>(righe.size());
  for (const auto& s : l.sottocartelle) righe.push_back({s, base + s, livello, false});
  return righe;
}

void Dir1_Attivata(Dialog_GetDir& d, const std::string& percorso) {
  if (ImpostaPath(d, percorso) != 0) AggiornaDir(d);
}

}  // namespace picker
