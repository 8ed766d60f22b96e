// What the machine layer answers, one request a line on stdin, one answer block on stdout. Built for both
// back ends, so that the Wine prefix as this program reads it can be held against the same prefix as Wine's
// own calls show it (scripts/wine_incrocio.sh). Requests, fields separated by a tab:
//   dir PATTERN MASK     every name with its attributes, in the order given
//   attr PATH            attributes and error number
//   len PATH             length and error number
//   read PATH            opens the file for reading: length, first bytes in hex, error number
//   reg KEY              every value: index, name, type, data in hex; the closing result code
//   regname KEY NAME     one value by name
//   drive LETTER         the Drive object
//   space LETTER         the volume's figures: available, total, free
//   special CSIDL        the folder and the result code
//   os                   the OS version
//   windows              the environment's Windows facts (not whether this program runs under WOW64 nor
//                        Wine's version: a 64-bit Windows build and the Wine back end differ there by nature)
//   exes FOLDER FIRST... the executables at the top of a folder, FIRST ones first
//   exe PATH             one executable: machine, imports and where each is found, layers, zone
//   vstore FOLDER MAX    the files of FOLDER that a legacy program reads from the VirtualStore
// Requests are UTF-8 text; names are answered as Windows-1252 bytes.
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "host/accesso_dischi.h"
#include "host/accesso_registro.h"
#include "host/ambiente.h"
#include "host/macchina.h"
#include "host/versione.h"

namespace {

std::string Esa(const std::string& byte) {
  static const char kCifre[] = "0123456789abcdef";
  std::string s;
  for (unsigned char c : byte) {
    s += kCifre[c >> 4];
    s += kCifre[c & 15];
  }
  return s;
}

std::vector<std::string> Campi(const std::string& riga) {
  std::vector<std::string> c;
  std::size_t i = 0;
  for (std::size_t j; (j = riga.find('\t', i)) != std::string::npos; i = j + 1)
    c.push_back(riga.substr(i, j - i));
  c.push_back(riga.substr(i));
  return c;
}

std::string Risposta(const std::vector<std::string>& c) {
  std::ostringstream o;
  const std::string& verbo = c[0];
  const std::string a = c.size() > 1 ? c[1] : std::string();
  int err = 0;
  if (verbo == "dir" && c.size() == 3) {
    const int mask = std::stoi(c[2]);
    host::Enumerazione elenco(a, mask);
    for (std::string n = elenco.Prossima(&err); !n.empty(); n = elenco.Prossima(&err)) {
      std::string cartella = a.substr(0, a.find_last_of("\\/") + 1);
      int e2 = 0;
      const int attr = n == "." || n == ".." ? -2 : host::LeggiAttributi(cartella + n, &e2);
      o << n << '\t' << attr << '\n';
    }
    o << "err " << err << '\n';
  } else if (verbo == "attr") {
    const int attr = host::LeggiAttributi(a, &err);
    o << attr << ' ' << err << '\n';
  } else if (verbo == "len") {
    const auto n = host::LunghezzaFile(a, &err);
    o << n << ' ' << err << '\n';
  } else if (verbo == "read") {
    host::File f = host::File::ApriLettura(a, &err);
    std::string inizio(16, '\0');
    inizio.resize(f.Leggi(inizio.data(), inizio.size()));
    o << f.Lunghezza() << ' ' << Esa(inizio) << ' ' << err << '\n';
  } else if (verbo == "reg") {
    long esito = 0;
    for (int i = 0;; ++i) {
      std::string nome, dati;
      int tipo = 0;
      esito = host::LeggiValoreRegistroIndice(a, i, &nome, &dati, &tipo);
      if (esito != host::kRegOk) break;
      o << i << '\t' << nome << '\t' << tipo << '\t' << Esa(dati) << '\n';
    }
    o << "end " << esito << '\n';
  } else if (verbo == "regname" && c.size() == 3) {
    std::string dati;
    int tipo = 0;
    const long esito = host::LeggiValoreRegistroNome(a, c[2], &dati, &tipo);
    o << esito << ' ' << tipo << ' ' << Esa(dati) << '\n';
  } else if (verbo == "drive") {
    host::OggettoDrive d;
    const bool ok = host::LeggiDrive(a, &d, &err);
    o << ok << ' ' << err << " letter=" << d.DriveLetter << " ready=" << d.IsReady << " type=" << d.DriveType
      << " share=" << d.ShareName << " space=" << d.SpazioLetto << '\n';
  } else if (verbo == "space") {
    host::MisureVolume m;
    const bool ok = host::MisuraPiattaforma(a, &m);
    o << ok << ' ' << m.disponibili << ' ' << m.totali << ' ' << m.liberi << '\n';
  } else if (verbo == "special") {
    long esito = 0;
    const std::string cartella = host::CartellaSpeciale(std::stoi(a), &esito);
    o << cartella << ' ' << esito << '\n';
  } else if (verbo == "os") {
    host::VersioneOs v;
    const bool ok = host::LeggiVersioneOs(&v);
    o << ok << ' ' << v.dwMajorVersion << '.' << v.dwMinorVersion << '.' << v.dwBuildNumber << ' '
      << v.dwPlatformId << " [" << v.szCSDVersion << "]\n";
  } else if (verbo == "windows") {
    const host::SistemaWindows w = host::LeggiSistemaWindows();
    o << "product=" << w.prodotto << " release=" << w.rilascio << " version=" << w.maggiore << '.' << w.minore
      << '.' << w.build << " 64=" << w.windows64 << " wine=" << w.wine << " uac=" << w.uac
      << " virtualization=" << w.virtualizzazione << " acp=" << w.codePage << " dpi=" << w.dpi
      << " cfa=" << (w.accessoControllato ? std::to_string(*w.accessoControllato) : "-")
      << " dep=" << (w.dep ? std::to_string(*w.dep) : "-") << " zones=" << w.zoneLeggibili << '\n';
  } else if (verbo == "exes" && c.size() >= 2) {
    for (const std::string& e : host::EseguibiliInCima(a, std::vector<std::string>(c.begin() + 2, c.end())))
      o << e << '\n';
  } else if (verbo == "exe") {
    const host::Eseguibile e = host::StudiaEseguibile(a, host::LeggiSistemaWindows());
    o << "machine=" << static_cast<int>(e.macchina) << " zone=" << e.zona << " problem=" << e.problema
      << '\n';
    for (const auto& d : e.importazioni)
      o << "  " << d.nome << ' ' << static_cast<int>(d.origine) << ' ' << d.percorso << ' ' << d.zona << '\n';
    for (const auto& l : e.livelli) o << "  layer " << l.radice << '=' << l.dati << '\n';
  } else if (verbo == "vstore" && c.size() == 3) {
    std::size_t totale = 0;
    for (const std::string& f : host::FileDaVirtualStore(a, std::stoul(c[2]), &totale)) o << f << '\n';
    o << "total " << totale << '\n';
  } else {
    o << "?\n";
  }
  return o.str();
}

}  // namespace

int main() {
#ifdef _WIN32
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  std::string riga;
  while (std::getline(std::cin, riga)) {
    if (riga.empty() || riga[0] == '#') continue;
    riga = host::DaUtf8(riga);
    std::vector<std::string> c = Campi(riga);
    const std::string risposta = "> " + riga + "\n" + Risposta(c);
    std::fwrite(risposta.data(), 1, risposta.size(), stdout);
  }
  return 0;
}
