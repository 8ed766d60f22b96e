// What both drivers of bench/area.sh do with the analysis window once it is open on a snapshot: the menu
// item of the editor's listing, timed from the click to the text shown in the area, the resident memory
// before and after, a search for a word on the last line; and the core alone making the same report string,
// the baseline of the same run.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>

#include "analysis/dialog_analisi.h"
#include "analysis/elenchi.h"

namespace bench {

// Resident memory now and at its highest, in bytes.
struct Memoria {
  double residente = 0, picco = 0;
};

// A benchmark that shows a message has gone wrong: the messages go to standard error.
class MessaggiErrore : public support::Messaggi {
 public:
  void Semplice(const std::string& testo) override { std::fprintf(stderr, "plain: %s\n", testo.c_str()); }
  void Critico(const std::string& testo) override { std::fprintf(stderr, "critical: %s\n", testo.c_str()); }
};

// A file dialog that always answers with the same file of the program folder.
class DialogoFisso : public support::DialogoFileConImpostazioni {
 private:
  bool Mostra(bool) override {
    nome_ = host::CartellaProgramma() + "\\prospetto.txt";
    return true;
  }
};

// What the window needs of the program around it: nothing is asked, nothing kept.
struct Servizi {
  MessaggiErrore messaggi;
  DialogoFisso file;
  support::AppuntiMuti appunti;
};

inline bool Argomenti(int argc, const char* programma) {
  if (argc == 3) return true;
  std::fprintf(stderr, "usage: %s SNAPSHOT WORD\n", programma);
  return false;
}

inline double Millisecondi(std::chrono::steady_clock::time_point da) {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - da).count();
}

// `clic` sends the menu item's command as the window gets it, `giro` lets the window handle what waits
// and paint, `memoria` reads the process's figures. Prints one line for `fronte`.
template <class Clic, class Giro, class Leggi>
void Misura(const char* fronte, analysis::Dialog_Analisi& d, const std::string& parola, Clic clic, Giro giro,
            Leggi memoria) {
  using Orologio = std::chrono::steady_clock;
  giro();
  const Memoria riposo = memoria();
  auto t = Orologio::now();
  clic();
  giro();
  const double msClic = Millisecondi(t);
  const Memoria mostrato = memoria();
  const std::size_t byte = d.Text_Out.Testo().size();

  d.Text_Cerca.ImpostaTesto(parola);
  t = Orologio::now();
  analysis::Pul_Trova_Click(d);
  giro();
  const double msCerca = Millisecondi(t);
  const long selezione = d.Text_Out.SelStart();

  // The report saved and loaded back (the dialog answers with a file of the program folder): the area
  // holds a new string of the same size.
  analysis::mnu_SalvaFile_Click(d);
  analysis::mnu_CaricaFile_Click(d);
  giro();
  const Memoria ricaricato = memoria();

  MessaggiErrore messaggi;
  support::BarraMuta barra;
  t = Orologio::now();
  const auto nucleo = analysis::MostraDirectory(d.CartellaDati, analysis::kDirectoryTrle, barra, messaggi);
  const double msNucleo = Millisecondi(t);
  if (!nucleo || nucleo->size() != byte)
    std::fprintf(stderr, "%s: the area does not hold the report\n", fronte);
  std::size_t righe = 0;
  for (const char c : *nucleo) righe += c == '\n';

  const double mb = 1024.0 * 1024.0;
  std::printf("%s: %zu lines, %.1f MB of text\n", fronte, righe, byte / mb);
  std::printf("  click to text %.0f ms; the core alone makes the string in %.0f ms: %.2fx\n", msClic,
              msNucleo, msClic / msNucleo);
  std::printf("  search for a word on the last line %.0f ms (found at %ld)\n", msCerca, selezione);
  std::printf(
      "  resident %.1f MB at rest, %.1f MB with the listing: +%.1f MB = %.2fx the text; peak %.1f MB\n",
      riposo.residente / mb, mostrato.residente / mb, (mostrato.residente - riposo.residente) / mb,
      (mostrato.residente - riposo.residente) / static_cast<double>(byte), mostrato.picco / mb);
  std::printf("  saved and loaded back: resident %.1f MB, peak %.1f MB\n", ricaricato.residente / mb,
              ricaricato.picco / mb);
}

}  // namespace bench
