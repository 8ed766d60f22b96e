// The tool's one description of itself: the verb table gives the dispatch, the usage text, each verb's own
// usage and the manual page, so that none of them is written twice.
#include "uso.h"

#include <algorithm>
#include <cstdio>

#include "analysis/voci.h"

namespace cli {
namespace {

std::string VociReport() {
  std::string voci;
  for (const auto& v : analysis::kVoci) {
    if (!voci.empty()) voci += ' ';
    voci += v.parola;
  }
  return voci;
}

const std::vector<Verbo>& Tabella() {
  static const std::vector<Verbo> verbi = {
      {"pack", "SNAPSHOT MEMBER...", "pack the members into a snapshot", VerboPack},
      {"unpack", "SNAPSHOT FOLDER", "unpack a snapshot into an existing folder and print its table",
       VerboUnpack},
      {"version", "FILE", "print the version text of an executable", VerboVersion},
      {"find-exe", "NAME", "print where an executable is installed", VerboFindExe},
      {"discover", "", "print the editor folder and the Ordelio folder found at start", VerboDiscover},
      {"sample", "FOLDER", "write backup_trle.le of the folder into the program folder", VerboSample},
      {"check", "[TRLE ORDL]", "find both installations (or take these), run the check, write the snapshot",
       VerboCheck},
      {"report", "SNAPSHOT [ITEM... | --all]",
       "open a snapshot and print the report area after the items (--all: the whole snapshot)", VerboReport,
       true},
      {"compare", "OLD NEW [--json]", "open two snapshots and print what changed from the old to the new",
       VerboCompare},
      {"findings", "SNAPSHOT... [--json | --answer [--markdown | --bbcode]]",
       "print what looks wrong in each snapshot (--json: JSON Lines; --answer: the failures and warnings "
       "written to the user, to paste in a mail or, with --markdown or --bbcode, a forum post)",
       VerboFindings},
      {"anonymize", "SNAPSHOT OUT [--authors] [--key FILE]",
       "write a copy of the snapshot with every account name in its paths replaced by user1, user2, ...; "
       "--authors: the level authors too; --key: the stand-ins and the names they replace into FILE",
       VerboAnonymize},
      {"rules", "check [FILE...] | test FILE SNAPSHOT... | list | fields",
       "check rules files (no FILE: those in force) and print every error with its place; print what each "
       "rule of FILE says of each snapshot; list the rules in force, their files and the files left out; "
       "list the fields a rule may compare",
       VerboRules},
      {"demo", "DIR",
       "make a sample machine in DIR (a new or empty folder, or a demo made there before), run the check and "
       "every report on it",
       VerboDemo},
  };
  return verbi;
}

constexpr const char* kPercorsi = "Paths are Windows paths (C:\\Giochi\\Trle) or absolute host paths.\n";
constexpr const char* kOpzioni =
    "       checkordl-cli help VERB | VERB --help\n"
    "       checkordl-cli --help | --version\n";

// "  name ARGS" in a column of its own, the description after it.
std::string RigaVerbo(const Verbo& v) {
  std::string riga = std::string("  ") + v.nome + (*v.argomenti ? " " : "") + v.argomenti;
  riga.resize(std::max<std::size_t>(riga.size() + 1, 28), ' ');
  riga += v.descrizione;
  riga += '\n';
  if (v.voci) riga += std::string(28, ' ') + "(" + VociReport() + ")\n";
  return riga;
}

// Text for roff: a backslash is written as one, a hyphen as a minus sign, as command-line text wants.
std::string Roff(const std::string& testo) {
  std::string out;
  for (char c : testo) {
    if (c == '\\')
      out += "\\e";
    else if (c == '-')
      out += "\\-";
    else
      out += c;
  }
  return out;
}

}  // namespace

const std::vector<Verbo>& Verbi() {
  return Tabella();
}

const Verbo* TrovaVerbo(const std::string& nome) {
  for (const auto& v : Tabella())
    if (nome == v.nome) return &v;
  return nullptr;
}

std::string TestoUso() {
  std::string uso = "usage: checkordl-cli VERB ARGS...\n";
  uso += kOpzioni;
  for (const auto& v : Tabella()) uso += RigaVerbo(v);
  uso += kPercorsi;
  return uso;
}

std::string TestoUsoVerbo(const Verbo& v) {
  std::string uso = std::string("usage: checkordl-cli ") + v.nome + (*v.argomenti ? " " : "") + v.argomenti +
                    "\n  " + v.descrizione + "\n";
  if (v.voci) uso += "  items: " + VociReport() + "\n";
  return uso + kPercorsi;
}

int Uso(const std::string& motivo) {
  if (!motivo.empty()) std::fprintf(stderr, "checkordl-cli: %s\n", motivo.c_str());
  std::fputs(TestoUso().c_str(), stderr);
  return 2;
}

std::string PaginaManuale(const std::string& versione) {
  std::string p = ".TH CHECKORDL\\-CLI 1 \"\" \"CheckORDL " + versione + "\" \"User Commands\"\n";
  p += ".SH NAME\ncheckordl\\-cli \\- the headless tool of CheckORDL\n";
  p += ".SH SYNOPSIS\n.B checkordl\\-cli\n.I VERB\n.RI [ ARGS ...]\n.br\n";
  p += ".B checkordl\\-cli help\n.I VERB\n.br\n.B checkordl\\-cli\n.BR \\-\\-help \" | \" \\-\\-version\n";
  p += ".SH DESCRIPTION\n"
       "CheckORDL gathers what a supporter needs to know about a user's level editor and level archive into "
       "one "
       "snapshot file, and shows a snapshot as plain\\-text reports.\n"
       "This tool runs the same operations as the desktop program\n.BR checkordl ,\n"
       "without a window, against the Windows machine of the Wine prefix named by\n.B WINEPREFIX\n"
       "(else\n.IR ~/.wine ).\n"
       "Messages that the window would show in a box go to standard error as\n.B plain:\nor\n.BR critical: "
       ".\n";
  p += ".SH VERBS\n";
  for (const auto& v : Tabella()) {
    p += ".TP\n.B " + Roff(v.nome) + (*v.argomenti ? " \\fI" + Roff(v.argomenti) + "\\fR" : "") + "\n";
    p += Roff(v.descrizione) + (v.voci ? "; items: " + Roff(VociReport()) : "") + ".\n";
  }
  p += ".PP\n" + Roff(kPercorsi);
  p += ".SH EXIT STATUS\n0 when no critical message was shown, 1 when one was (or a check ended in a prompt "
       "for a folder), 2 for a usage error.\n";
  p += ".SH FILES\nThe program folder holds the working files, the folder\n.I Dati\nand the sample lists\n"
       ".I backup_trle.le\nand\n.IR trle_cd.le .\n"
       "It is the folder of the executable where this user may write there and it is not below\n.IR /usr ;\n"
       "otherwise\n.IR $XDG_DATA_HOME/checkordl ,\nelse\n.IR ~/.local/share/checkordl ,\n"
       "made when first needed.\n"
       "The desktop program uses the same folder.\n"
       ".PP\nRules files (\n.IR *.json )\nare read from the folder\n.I regole\nbeside the executable (else\n"
       ".IR ../share/checkordl/regole ),\nthen from\n.I regole_locali\nin the program folder and in the "
       "user's "
       "data folder; a later rule of the same id replaces an earlier one.\n";
  p += ".SH SEE ALSO\n.BR checkordl (1)\n";
  return p;
}

}  // namespace cli
