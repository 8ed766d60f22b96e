// The answers of the machine and of the helpers above it, read from request files under tests/data/macchina/:
// each file builds one machine, then asks. A row is a verb that builds the machine, or a request, its
// arguments and the answer expected. On Windows the answers are Wine's own, so the Wine prefix back end and
// the platform are held to the same files; the files named prefisso* are about the prefix itself and are left
// out there.
#include <sys/stat.h>
#ifndef _WIN32
#include <sys/xattr.h>
#endif

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <optional>
#include <set>
#include <sstream>
#include <vector>

#include "esadecimale.h"
#include "finestra_prova.h"
#include "host/accesso_dischi.h"
#include "host/accesso_registro.h"
#include "host/collegamenti.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "host/registro_file.h"
#include "host/versione.h"
#include "macchina_prova.h"
#include "misure_finte.h"
#include "support/files.h"
#include "support/installazioni.h"
#include "support/spazio_dischi.h"
#include "support/valori.h"
#include "support/versioni.h"

namespace {

namespace fs = std::filesystem;
using Campi = std::vector<std::string>;
const std::string kDati = CHECKORDL_DATI_PROVA "/";

std::string Unisci(const Campi& parti) {
  std::string s;
  for (std::size_t i = 0; i < parti.size(); ++i) s += (i ? "|" : "") + parti[i];
  return s;
}

// The values separated by blanks; numbers of bytes in doubles as whole numbers.
template <class... T>
std::string Spazi(const T&... v) {
  std::ostringstream s;
  s << std::fixed << std::setprecision(0);
  ((s << v << ' '), ...);
  std::string r = s.str();
  r.pop_back();
  return r;
}

// Text in 16-bit characters where the block has it between '<' and '>'.
std::string Larghi(std::string t) {
  for (std::size_t a; (a = t.find('<')) != std::string::npos;) {
    const std::size_t b = t.find('>', a);
    t.replace(a, b - a + 1, support::InserisciNulDopoCaratteri(t.substr(a + 1, b - a - 1)));
  }
  return t;
}

// `elenco` is the listing the file walks: "primo" makes it anew, "prossimo" goes on with it.
std::string Risposta(const MacchinaProva& m, host::Enumerazione& elenco, const std::string& v,
                     const Campi& c) {
  int e = -1, e2 = -1;
  if (v == "attr") {
    const int a = host::LeggiAttributi(c[0], &e);
    return Spazi(a, e, host::LunghezzaFile(c[0], &e2), e2);
  }
  if (v == "apri") {
    host::File f = host::File::ApriLettura(c[0], &e);
    return Spazi(e, f.Aperto() ? f.Lunghezza() : -1);
  }
  if (v == "elenca" || v == "primo" || v == "prossimo") {
    Campi nomi;
    if (v != "prossimo") elenco = host::Enumerazione(c[0], std::stoi(c[1]));
    std::string n = elenco.Prossima(&e);
    for (; !n.empty() && v == "elenca"; n = elenco.Prossima(&e)) nomi.push_back(n);
    return (v == "elenca" ? Unisci(nomi) : n) + " " + std::to_string(e);
  }
  if (v == "leggi") {
    std::vector<host::VoceCartella> voci;
    Campi nomi;
    if (!host::LeggiCartella(host::ApriCartella(c[0]), std::stoi(c[1]), voci)) return "no";
    for (const auto& x : voci) nomi.push_back(x.nome + ":" + std::to_string(x.attributi));
    return Unisci(nomi);
  }
  if (v == "host") {
    std::string h = host::PercorsoHost(c[0], &e);
    if (h.starts_with(m.Prefisso())) h = "~" + h.substr(m.Prefisso().size());
    return h + " " + std::to_string(e);
  }
  if (v == "windows") return host::PercorsoWindows(c[0][0] == '/' ? c[0] : m.C(c[0]));
  if (v == "imposta") return Spazi(host::ImpostaAttributi(c[0], std::stoi(c[1]), &e), e);
  if (v == "scrivi") {
    host::File f = host::File::ApriScrittura(c[0], &e);
    return Spazi(f.Aperto() && f.Scrivi(c[1].data(), c[1].size()), e);
  }
  if (v == "elimina") return Spazi(host::EliminaFile(c[0], &e), e);
  if (v == "crea") return Spazi(host::CreaUnaCartella(c[0], &e), e);
  if (v == "esiste") return Spazi(support::FileExists(c[0]), support::DirExists(c[0]));
  if (v == "scrivifile") return std::to_string(support::ScriviFileTesto(c[0], c[1]));
  if (v == "leggifile") return support::LeggiFile(c[0]);
  if (v == "creacartella") return std::to_string(support::CreaCartella(c[0]));
  if (v == "cancella") return std::to_string(support::CancellaFile(c[0]));
  if (v == "svuota") return std::to_string(support::SvuotaCartella(c[0], c[1]));
  if (v == "elencafile") {
    std::int32_t n = -1;
    Campi e = support::ElencaFile(c[0], c[1], n);
    std::sort(e.begin(), e.end());
    e.insert(e.begin(), std::to_string(n));
    return Unisci(e);
  }
  if (v == "contenuto") return MacchinaProva::LeggiHost(m.C(c[0]));
  // The helpers on names and texts.
  if (v == "utf8") return host::DaUtf8(c[0]);
  if (v == "cp1252") return host::VersoUtf8(c[0]);
  if (v == "ritorno") return std::to_string(host::DaUtf8(host::VersoUtf8(c[0])) == c[0]);
  if (v == "modello") return std::to_string(host::CorrispondeModello(c[0], c[1]));
  if (v == "dispositivo") return std::to_string(host::NomeDispositivo(c[0]));
  if (v == "uguali") return std::to_string(host::UgualiSenzaCaso(c[0], c[1]));
  if (v == "tagli")
    return Unisci(
        {support::EstraiNomeFile(c[0]), support::EstraiCartella(c[0]), support::EstraiEstensione(c[0])});
  if (v == "dimensione") return support::FormattaDimensione(std::stod(c[0]), c[1][0]);
  if (v == "pulisci") return support::PulisciStringa(c[0]);
  if (v == "progresso") {
    // The steps from the first given to the last.
    BarraProva b;
    b.valore = -1;
    for (double i = std::stod(c[1]); i <= std::stod(c[2]); ++i)
      support::AggiornaProgresso(b, std::stod(c[0]), i);
    return Spazi(b.valore, b.ridisegni);
  }
  if (v == "blocco") return support::CercaVersioneNelBlocco(Larghi(c[0]));
  const auto u = [&](int i) { return static_cast<std::uint32_t>(std::stoul(c[i])); };
  if (v == "codice") return std::to_string(support::CodiceVersioneWindows({u(1), u(2), 0, u(0), ""}));
  if (v == "versione") return support::GetFileVersion(host::PercorsoWindows(c[0]));
  // The registry, and what is found through it. A registry file: its keys, then each value's name, type and
  // data, in the notation of the test data.
  if (v == "filereg") {
    std::string dump;
    for (const auto& k : host::LeggiFileRegistro(c[0])) {
      dump += "[" + InNotazione(k.nome) + (k.collegamento ? "] link\n" : "]\n");
      for (const auto& x : k.valori)
        dump += InNotazione(x.nome) + "\t" + std::to_string(x.tipo) + "\t" + InNotazione(x.dati) + "\n";
    }
    return dump;
  }
  if (v == "indice" || v == "valore") {
    std::string nome = "?", dati = "?";
    int tipo = -1;
    const long r = v == "indice" ? host::LeggiValoreRegistroIndice(c[0], std::stoi(c[1]), &nome, &dati, &tipo)
                                 : host::LeggiValoreRegistroNome(c[0], c[1], &dati, &tipo);
    if (r != host::kRegOk) return std::to_string(r);
    return (v == "indice" ? nome + "|" : "") + std::to_string(tipo) + "|" + dati;
  }
  if (v == "cartellaspeciale") {
    long r = -1;
    const std::string s = host::CartellaSpeciale(std::stoi(c[0]), &r);
    return Spazi(s, static_cast<std::int32_t>(r));
  }
  if (v == "speciale") return support::GetCartellaSpeciale(std::stoi(c[0]));
  if (v == "trova") return support::TrovaEseguibile(c[0]);
  if (v == "primovalore") return support::LeggiPrimoValoreRegistro(c[0]);
  if (v == "sistema") {
    host::VersioneOs x;
    if (!host::LeggiVersioneOs(&x)) return "no";
    return Spazi(x.dwMajorVersion, x.dwMinorVersion, x.dwBuildNumber, x.dwPlatformId, x.szCSDVersion,
                 support::IsWindowsNT());
  }
  // The drives. The record starts with free bytes that only a ready drive of known size may replace.
  if (v == "drive") {
    support::DriveInfo d;
    d.FreeSpace = 9;
    const bool r = support::GetDriveInfo(c[0], d);
    const std::string etichetta = d.VolumeName.substr(0, d.VolumeName.find_last_not_of(' ') + 1);
    return Spazi(r, d.DriveLetter, d.IsReady, d.DriveType, d.FreeSpace, d.TotalSize, d.SerialNumber,
                 etichetta, d.VolumeName.size());
  }
  if (v == "libero") return Spazi(support::SpazioLibero(c[0]));
  if (v == "fissi") return Unisci(support::ElencoDischiFissi());
  if (v == "piuspazio") {
    double b = 42;
    const std::string d = support::DiscoConPiuSpazio(b);
    return Spazi(d, b);
  }
  ADD_FAILURE() << "unknown request " << v;
  return "";
}

// What builds the machine: host names in UTF-8 below C:, or from the prefix when they begin with '/'. 1 when
// the line is one of these, -1 when the file system cannot take it, 0 for a request.
int Prepara(const MacchinaProva& m, std::optional<MisureFinte>& misure, const Campi& c) {
  const std::string h = c.size() < 2 ? "" : c[1][0] == '/' ? m.Prefisso() + c[1] : m.C(c[1]);
  if (c[0] == "file") {
    MacchinaProva::ScriviHost(h, c.size() > 2 ? c[2] : "");
  } else if (c[0] == "cartella") {
    fs::create_directories(h);
  } else if (c[0] == "corrente") {
    fs::current_path(h);
  } else if (c[0] == "registro") {
    std::string testo;
    for (std::size_t i = 1; i < c.size(); ++i)
      testo += c[i].starts_with(kDati) ? MacchinaProva::LeggiHost(c[i]) : c[i];
    m.Registro(testo);
  } else if (c[0] == "appdati") {
    m.AppDataLocale();
  } else if (c[0] == "virtuale") {
    // A file of the user's VirtualStore, below its local application data.
    long esito = 0;
    const std::string locale = host::CartellaSpeciale(host::kCsidlLocalAppData, &esito);
    std::string rel = host::DaUtf8(c[1]);
    std::replace(rel.begin(), rel.end(), '/', '\\');
    MacchinaProva::ScriviHost(host::PercorsoHost(locale + "\\VirtualStore\\" + rel, nullptr),
                              c.size() > 2 ? c[2] : "");
  } else if (c[0] == "misure") {
    // Volume figures by drive letter: letter, free, free to the caller, total.
    if (!misure) misure.emplace();
    MisureFinte::Figure().clear();
    for (std::size_t i = 1; i + 3 < c.size(); i += 4)
      MisureFinte::Figure()[c[i][0]] = {std::stoull(c[i + 2]), std::stoull(c[i + 3]), std::stoull(c[i + 1])};
#ifndef _WIN32
  } else if (c[0] == "via") {
    fs::remove(h);
  } else if (c[0] == "link") {
    fs::create_symlink(c[2], h);
  } else if (c[0] == "chmod") {
    ::chmod(h.c_str(), static_cast<mode_t>(std::stoi(c[2], nullptr, 8)));
  } else if (c[0] == "xattr") {
    return ::setxattr(h.c_str(), "user.DOSATTRIB", c[2].data(), c[2].size(), 0) == 0 ? 1 : -1;
  } else if (c[0] == "prefisso") {
    host::UsaPrefisso(m.Prefisso());
#endif
  } else {
    return 0;
  }
  return 1;
}

TEST(Richieste, RisposteDellaMacchina) {
  std::set<fs::path> file;
  for (const auto& f : fs::directory_iterator(kDati + "macchina")) file.insert(f.path());
  for (const auto& percorso : file) {
    const std::string nome = percorso.filename().string();
#ifdef _WIN32
    if (nome.starts_with("prefisso")) continue;
#endif
    std::ifstream in(percorso, std::ios::binary);
    const fs::path prima = fs::current_path();
    MacchinaProva m;
    std::optional<MisureFinte> misure;
    host::Enumerazione elenco;
    int numero = 0;
    for (std::string riga; std::getline(in, riga);) {
      ++numero;
      if (riga.empty() || riga[0] == '#') continue;
      auto c = ::Campi(riga);
      // "@" starts a path in tests/data.
      for (auto& campo : c)
        if (campo.starts_with('@')) campo = kDati + campo.substr(1);
      SCOPED_TRACE(nome + ":" + std::to_string(numero));
      // A row after "64" holds only on a 64-bit Windows.
      if (c[0] == "64") {
        if (!m.Windows64()) continue;
        c.erase(c.begin());
      }
      // What needs extended attributes comes last: without them the rest of the file is left out.
      const int preparato = Prepara(m, misure, c);
      if (preparato < 0) break;
      if (preparato) continue;
      // Files that a Debian package brings are asked about only when it is installed.
      if (c[0] == "versione" && c[1].starts_with("/usr/") && !fs::exists(c[1])) continue;
      // A long answer is a file of tests/data.
      const std::string atteso = c.back().starts_with(kDati) ? MacchinaProva::LeggiHost(c.back()) : c.back();
      EXPECT_EQ(Risposta(m, elenco, c[0], Campi(c.begin() + 1, c.end() - 1)), atteso) << riga;
    }
    fs::current_path(prima);
  }
}

// The file system itself measured: on Linux the blocks kept for root are not free to anyone.
TEST(Richieste, SpazioDelDiscoVero) {
  MacchinaProva m;
  host::MisureVolume v;
  ASSERT_TRUE(host::MisuraPiattaforma("C:\\", &v));
#ifndef _WIN32
  EXPECT_EQ(v.liberi, v.disponibili);
#endif
  EXPECT_GT(support::SpazioLibero("C:"), 0);
}

}  // namespace
