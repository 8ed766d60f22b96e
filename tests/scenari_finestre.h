// The main window's start-up and Change cases that both window suites run, from one table,
// tests/data/finestre/avvio_e_cambia.txt; each suite drives them through its own toolkit.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "esadecimale.h"
#include "support/files.h"

struct CasoCambia {
  std::string nome;
  std::string pulsante;  // empty: none pressed, the window as it opens
  std::string etichetta;
  std::string cartella;
  bool editor = false;  // the folder is made an editor's before the button is pressed
  bool ok = false;
  std::string dopo;
  std::vector<std::string> messaggi;
};

// The rows in order; "(discovery)" becomes what discovery put in the row's label, as scoperte says.
inline std::vector<CasoCambia> CasiCambia(const std::map<std::string, std::string>& scoperte) {
  std::vector<CasoCambia> casi;
  for (auto r : LeggiTabella("finestre/avvio_e_cambia.txt")) {
    if (r.size() < 7) r.resize(7);
    for (auto& cella : r)
      if (cella == "-") cella.clear();
    CasoCambia c{r[0], r[1], r[2], r[3], r[4] == "editor", r[5] == "OK", r[6], {}};
    if (const auto s = scoperte.find(c.etichetta); c.dopo == "(discovery)" && s != scoperte.end())
      c.dopo = s->second;
    for (std::size_t i = 7; i < r.size(); ++i)
      if (!r[i].empty()) c.messaggi.push_back(r[i]);
    casi.push_back(c);
  }
  return casi;
}

// What a row makes on the machine before its button is pressed.
inline bool PreparaCaso(const CasoCambia& c) {
  if (!c.editor) return true;
  bool fatto = support::CreaCartella(c.cartella) && support::CreaCartella(c.cartella + "\\data");
  for (const char* f : {"\\tomb4.exe", "\\data\\a.tr4", "\\script.dat"})
    fatto = fatto && support::ScriviFileTesto(c.cartella + f, "x");
  return fatto;
}
