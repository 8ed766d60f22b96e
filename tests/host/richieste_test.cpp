// The machine's answers to requests about paths, attributes, files and folders, read from files under
// tests/data/macchina/: each file builds a machine, then asks. A line is fields separated by tabs; the
// requests end with the answer expected. On Windows the answers are Wine's own, so the Wine prefix back end
// and the platform are held to the same files.
#include <sys/stat.h>
#ifndef _WIN32
#include <sys/xattr.h>
#include <unistd.h>
#endif

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <vector>

#include "host/collegamenti.h"
#include "host/machine.h"
#include "macchina_prova.h"
#include "support/files.h"

namespace {

namespace fs = std::filesystem;
using Campi = std::vector<std::string>;

std::string Unisci(const std::vector<std::string>& parti) {
  std::string s;
  for (const auto& p : parti) s += (s.empty() ? "" : "|") + p;
  return s;
}

std::string Coppia(long long a, int b) {
  return std::to_string(a) + " " + std::to_string(b);
}

// What a call gives, then the error number it set.
template <class Chiamata>
std::string ConErrore(Chiamata chiama) {
  int err = -1;
  const long long r = chiama(&err);
  return Coppia(r, err);
}

// What each request answers, from its fields after the verb.
const std::map<std::string, std::function<std::string(const MacchinaProva&, const Campi&)>> kRichieste = {
    {"attr",
     [](auto&, const Campi& c) {
       return ConErrore([&](int* e) { return host::LeggiAttributi(c[0], e); }) + " " +
              ConErrore([&](int* e) { return host::LunghezzaFile(c[0], e); });
     }},
    {"apri",
     [](auto&, const Campi& c) {
       int err = -1;
       host::File f = host::File::ApriLettura(c[0], &err);
       return Coppia(err, static_cast<int>(f.Aperto() ? f.Lunghezza() : -1));
     }},
    {"elenca",
     [](auto&, const Campi& c) {
       std::vector<std::string> nomi;
       int err = 0;
       for (std::string n = host::DirPrimo(c[0], std::stoi(c[1]), &err); !n.empty();
            n = host::DirProssimo(&err))
         nomi.push_back(n);
       return Unisci(nomi) + " " + std::to_string(err);
     }},
    {"leggi",
     [](auto&, const Campi& c) {
       std::vector<host::VoceCartella> voci;
       std::vector<std::string> nomi;
       if (!host::LeggiCartella(host::ApriCartella(c[0]), std::stoi(c[1]), voci)) return std::string("no");
       for (const auto& v : voci) nomi.push_back(v.nome + ":" + std::to_string(v.attributi));
       return Unisci(nomi);
     }},
    {"host",
     [](auto& m, const Campi& c) {
       int err = -1;
       std::string h = host::PercorsoHost(c[0], &err);
       if (h.starts_with(m.Prefisso())) h = "~" + h.substr(m.Prefisso().size());
       return h + " " + std::to_string(err);
     }},
    {"windows",
     [](auto& m, const Campi& c) { return host::PercorsoWindows(c[0][0] == '/' ? c[0] : m.C(c[0])); }},
    {"imposta",
     [](auto&, const Campi& c) {
       return ConErrore([&](int* e) { return host::ImpostaAttributi(c[0], std::stoi(c[1]), e); });
     }},
    {"scrivi",
     [](auto&, const Campi& c) {
       return ConErrore([&](int* e) {
         host::File f = host::File::ApriScrittura(c[0], e);
         return f.Aperto() && f.Scrivi(c[1].data(), c[1].size());
       });
     }},
    {"elimina",
     [](auto&, const Campi& c) { return ConErrore([&](int* e) { return host::EliminaFile(c[0], e); }); }},
    {"crea",
     [](auto&, const Campi& c) { return ConErrore([&](int* e) { return host::CreaUnaCartella(c[0], e); }); }},
    {"esiste",
     [](auto&, const Campi& c) { return Coppia(support::FileExists(c[0]), support::DirExists(c[0])); }},
    {"contenuto", [](auto& m, const Campi& c) { return MacchinaProva::LeggiHost(m.C(c[0])); }},
};

// What builds the machine: host names in UTF-8 below C:, or from the prefix when they begin with '/'; "\n"
// in a file's content is a line end. False when the file system cannot take the request.
bool Prepara(const MacchinaProva& m, const Campi& c) {
  const std::string h = c.size() < 2 ? "" : c[1][0] == '/' ? m.Prefisso() + c[1] : m.C(c[1]);
  if (c[0] == "file") {
    std::string testo = c.size() > 2 ? c[2] : "";
    for (std::size_t k; (k = testo.find("\\n")) != std::string::npos;) testo.replace(k, 2, "\n");
    MacchinaProva::ScriviHost(h, testo);
  } else if (c[0] == "cartella") {
    fs::create_directories(h);
  } else if (c[0] == "corrente") {
    fs::current_path(h);
#ifndef _WIN32
  } else if (c[0] == "link") {
    fs::create_symlink(c[2], h);
  } else if (c[0] == "chmod") {
    ::chmod(h.c_str(), static_cast<mode_t>(std::stoi(c[2], nullptr, 8)));
  } else if (c[0] == "xattr") {
    return ::setxattr(h.c_str(), "user.DOSATTRIB", c[2].data(), c[2].size(), 0) == 0;
  } else if (c[0] == "prefisso") {
    host::UsaPrefisso(m.Prefisso());
#endif
  } else {
    ADD_FAILURE() << "unknown line " << c[0];
  }
  return true;
}

TEST(Richieste, RisposteDellaMacchina) {
  // file, and whether it is about the Wine prefix only
  const std::pair<const char*, bool> file[] = {{"regole.txt", false}, {"prefisso.txt", true}};
  for (const auto& [nome, soloWine] : file) {
#ifdef _WIN32
    if (soloWine) continue;
#endif
    std::ifstream in(std::string(CHECKORDL_DATI_PROVA "/macchina/") + nome);
    ASSERT_TRUE(in) << nome;
    const fs::path prima = fs::current_path();
    {
      MacchinaProva m;
      int numero = 0;
      for (std::string riga; std::getline(in, riga);) {
        ++numero;
        if (riga.empty() || riga[0] == '#') continue;
        Campi c;
        std::istringstream s(riga);
        for (std::string campo; std::getline(s, campo, '\t');) c.push_back(campo);
        SCOPED_TRACE(std::string(nome) + ":" + std::to_string(numero));
        const auto r = kRichieste.find(c[0]);
        // What needs extended attributes comes last: without them the rest of the file is left out.
        if (r == kRichieste.end() && !Prepara(m, c)) break;
        if (r == kRichieste.end()) continue;
        const Campi argomenti(c.begin() + 1, c.end() - 1);
        EXPECT_EQ(r->second(m, argomenti), c.back()) << riga;
      }
      fs::current_path(prima);
    }
  }
}

}  // namespace
