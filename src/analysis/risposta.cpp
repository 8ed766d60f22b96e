#include "analysis/risposta.h"

#include <variant>
#include <vector>

#include "analysis/testo.h"
#include "support/files.h"

namespace analysis {
namespace {

// A line break inside a value would end the line it stands in, and with it a list item or a code span.
std::string SuUnaRiga(std::string s) {
  for (char& c : s)
    if (c == '\r' || c == '\n') c = ' ';
  return s;
}

std::string Valore(const Evidenza& e) {
  if (const auto* s = std::get_if<std::string>(&e.Valore)) return SuUnaRiga(*s);
  return std::to_string(std::get<std::int64_t>(e.Valore));
}

// Prose for Markdown: a backslash before what it would take as markup, the backslashes of paths too, so that
// C:\Users\_x stays as written.
std::string Markdown(const std::string& s) {
  std::string out;
  for (const char c : SuUnaRiga(s)) {
    if (std::string_view("\\`*_[]<>#|~").find(c) != std::string_view::npos) out += '\\';
    out += c;
  }
  return out;
}

// A code span that holds any value: longer fences around a value with backticks of its own.
std::string Codice(const std::string& s) {
  if (s.find('`') == std::string::npos) return "`" + s + "`";
  return "`` " + s + " ``";
}

std::string Quante(std::size_t n, const char* cosa) {
  return std::to_string(n) + " " + cosa + (n == 1 ? "" : "s");
}

struct Forma {
  // The first line, given its plain text and the snapshot's name.
  std::string (*apertura)(const std::string& nome, const std::string& resto);
  std::string inizioElenco, fineElenco;
  void (*voce)(std::string& t, const Esito& e, const char* tipo);
};

void VoceTesto(std::string& t, const Esito& e, const char* tipo) {
  AggiungiRiga(t, "");
  AggiungiRiga(t, std::string("- ") + tipo + ": " + SuUnaRiga(e.Titolo));
  for (const Evidenza& p : e.Evidenze) AggiungiRiga(t, "  " + SuUnaRiga(p.Nome) + ": " + Valore(p));
  AggiungiRiga(t, "  What to do: " + SuUnaRiga(e.Risposta));
}

void VoceMarkdown(std::string& t, const Esito& e, const char* tipo) {
  AggiungiRiga(t, "");
  AggiungiRiga(t, std::string("- **") + tipo + ":** " + Markdown(e.Titolo));
  for (const Evidenza& p : e.Evidenze) AggiungiRiga(t, "  - " + Markdown(p.Nome) + ": " + Codice(Valore(p)));
  AggiungiRiga(t, "");
  AggiungiRiga(t, "  **What to do:** " + Markdown(e.Risposta));
}

void VoceBbcode(std::string& t, const Esito& e, const char* tipo) {
  AggiungiRiga(t, std::string("[*][b]") + tipo + ":[/b] " + SuUnaRiga(e.Titolo));
  if (!e.Evidenze.empty()) {
    std::string codice;
    for (const Evidenza& p : e.Evidenze)
      codice += (codice.empty() ? "" : "\r\n") + SuUnaRiga(p.Nome) + ": " + Valore(p);
    AggiungiRiga(t, "[code]" + codice + "[/code]");
  }
  AggiungiRiga(t, "[b]What to do:[/b] " + SuUnaRiga(e.Risposta));
}

const Forma& FormaDi(FormaRisposta f) {
  static const Forma kTesto{
      [](const std::string& n, const std::string& r) { return "Your snapshot " + n + r; }, "", "", VoceTesto};
  static const Forma kMarkdown{[](const std::string& n, const std::string& r) {
                                 return "**Your snapshot " + Codice(n) + "**" + Markdown(r);
                               },
                               "", "", VoceMarkdown};
  static const Forma kBbcode{
      [](const std::string& n, const std::string& r) { return "[b]Your snapshot " + n + "[/b]" + r; },
      "[list]", "[/list]", VoceBbcode};
  switch (f) {
    case FormaRisposta::markdown:
      return kMarkdown;
    case FormaRisposta::bbcode:
      return kBbcode;
    case FormaRisposta::testo:
      break;
  }
  return kTesto;
}

}  // namespace

std::string TestoRisposta(const RiepilogoSnapshot& r, const std::string& nome, FormaRisposta forma) {
  const Forma& f = FormaDi(forma);
  const std::string file = SuUnaRiga(support::EstraiNomeFile(nome));
  std::string t;
  if (!r.Errore.empty()) {
    AggiungiRiga(t, f.apertura(file, " could not be read: " + r.Errore + "."));
    AggiungiRiga(t, "");
    AggiungiRiga(t, "Please run the check again and send the snapshot file it writes, attached as it is.");
    return t;
  }
  // Failures first, then warnings: the findings come in that order.
  std::vector<const Esito*> voci;
  std::size_t fail = 0;
  for (const Esito& e : r.Esiti) {
    if (e.Livello == Gravita::pass || e.Risposta.empty()) continue;
    voci.push_back(&e);
    if (e.Livello == Gravita::fail) ++fail;
  }
  const std::string quando =
      r.Data.empty() ? " (it does not record when it was made)" : ", made " + SuUnaRiga(r.Data);
  if (voci.empty()) {
    AggiungiRiga(t, f.apertura(file, quando + ": the check found nothing wrong."));
    return t;
  }
  AggiungiRiga(t, f.apertura(file, quando + ": " + Quante(fail, "problem") + " to fix, " +
                                       Quante(voci.size() - fail, "warning") + "."));
  if (!f.inizioElenco.empty()) AggiungiRiga(t, f.inizioElenco);
  for (const Esito* e : voci) f.voce(t, *e, e->Livello == Gravita::fail ? "Problem" : "Warning");
  if (!f.fineElenco.empty()) AggiungiRiga(t, f.fineElenco);
  return t;
}

}  // namespace analysis
