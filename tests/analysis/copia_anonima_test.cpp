// The anonymized copy against its original: snapshots whose account names stand in every member and in the
// table, in each of the profile paths' forms. The copy must hold no trace of a replaced name, and every
// report, the findings and the comparison must read it as the original with the stand-ins.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "analysis/confronto.h"
#include "analysis/copia_anonima.h"
#include "analysis/riepilogo.h"
#include "finestra_prova.h"
#include "formats/ambiente.h"
#include "formats/archivio.h"
#include "formats/elenco.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "host/byte_le.h"
#include "host/nomi.h"
#include "macchina_prova.h"

namespace {

// `{A}` and `{B}` are the row's two accounts; "Trle" is also a folder, which must stay wherever it is one.
std::string Con(std::string t, const std::string& a, const std::string& b) {
  for (const auto& [segno, nome] : {std::pair{std::string("{A}"), a}, std::pair{std::string("{B}"), b}})
    for (std::size_t p; (p = t.find(segno)) != std::string::npos;) t.replace(p, segno.size(), nome);
  return t;
}

// A level script with one level and, behind its names, the path of a file of the editor's.
std::string Script(const std::string& a) {
  std::string b(56, '\0');
  host::ScriviLE(b, 10, std::uint16_t{1});
  host::ScriviLE(b, 12, std::uint16_t{11});
  host::AccodaLE(b, std::uint16_t{0});
  b += std::string("data\\title") + '\0' + std::string(20, '\0');
  return b + "C:\\Users\\" + a + "\\Desktop\\Trle\\script.txt" + '\0';
}

formats::ElencoFile Elenco(const std::string& base, std::vector<std::string> nomi) {
  std::vector<std::int32_t> dimensioni(nomi.size(), 100);
  return {static_cast<std::int32_t>(nomi.size()), base, std::move(nomi), std::move(dimensioni)};
}

// The environment of the check run, with a field a later program might add, whose keys are paths too.
std::string Ambiente(const std::string& a, const std::string& b) {
  formats::Ambiente amb;
  amb.programma = "CheckORDL";
  amb.bitProgramma = 64;
  amb.dataLocale = "2026-11-25T17:05:03";
  host::Eseguibile e{
      Con("C:\\Users\\{A}\\Desktop\\Trle\\tomb4.exe", a, b), host::MacchinaPe::x86, {}, "", {}};
  e.importazioni.push_back(
      {"bass.dll", host::Origine::cartellaEseguibile, Con("C:\\Users\\{A}\\Desktop\\Trle\\bass.dll", a, b)});
  e.livelli.push_back({"HKCU", "~ RUNASADMIN"});
  amb.eseguibili.push_back({formats::CartellaEseguibile::editor, e});
  amb.fileVirtuali = {Con("D:\\Documents and Settings\\{B}\\Ordelio\\ordelio.prf", a, b)};
  amb.fileVirtualiTotale = 1;
  amb.nonLetti.push_back({Con("C:\\Users\\{A}\\Desktop\\Trle\\script.dat", a, b), 32});
  nlohmann::ordered_json j = nlohmann::ordered_json::parse(formats::CodificaAmbiente(amb));
  j["later"] = {
      {host::VersoUtf8(Con("C:\\Users\\{B}\\x", a, b)), {host::VersoUtf8(Con("/home/{A}/y", a, b))}}};
  return j.dump(2) + "\n";
}

std::string Snapshot(const std::string& a, const std::string& b) {
  formats::InfoHeader h;
  h.StartFolderTrle.Assegna(Con("C:\\Users\\{A}\\Desktop\\Trle", a, b));
  h.StartFolderOrdl.Assegna(Con("D:\\Documents and Settings\\{B}\\Ordelio", a, b));
  h.VersioneOrdelio.Assegna("2.1.0");
  formats::PrefRecord p;
  p.PathArchivio.Assegna(Con("D:\\Documents and Settings\\{B}\\Ordelio\\archivio.qlv", a, b));
  p.PathTRLE.Assegna(Con("C:\\Users\\{A}\\Desktop\\Trle", a, b));
  p.DefaultLoadDir.Assegna(Con("C:\\users\\{A}", a, b));
  p.FolderSavegameExt.Assegna(Con("Z:\\home\\{B}\\salvataggi", a, b));
  formats::ArchivioHeader ah;
  ah.MainDir.Assegna(Con("D:\\Documents and Settings\\{B}\\Ordelio", a, b));
  ah.SecondaryDir.Assegna(Con("D:\\Documents and Settings\\{B}\\Ordelio\\Livelli", a, b));
  ah.TotLivelli = 1;
  formats::ArchivioLivello l;
  l.Nome.Assegna("Trle");
  l.Note.Assegna(Con("copied from C:/Users/{A}/Downloads", a, b));
  l.Autore_Nome.Assegna("Lara");
  l.NomeSoluzione.Assegna(Con("C:\\Users\\{A}\\Desktop\\Trle\\sol.txt", a, b));
  const std::vector<std::pair<std::string, std::string>> membri = {
      {"C:\\Users\\{A}\\AppData\\Local\\CheckORDL\\Infofile.bin", formats::CodificaInfoHeader(h)},
      {"D:\\Documents and Settings\\{B}\\Ordelio\\ordelio.prf", formats::CodificaPreferenze(p)},
      {"D:\\Documents and Settings\\{B}\\Ordelio\\archivio.qlv",
       formats::CodificaArchivioHeader(ah) + formats::CodificaArchivioLivello(l)},
      {"C:\\Users\\{A}\\AppData\\Local\\CheckORDL\\DirArc.el",
       formats::CodificaElenco(Elenco("C:", {Con("\\Users\\{B}\\Livelli\\uno.tr4", a, b)}))},
      {"C:\\Users\\{A}\\AppData\\Local\\CheckORDL\\TRLE.el",
       formats::CodificaElenco(
           Elenco(Con("C:\\Users\\{A}\\Desktop\\Trle", a, b), {"\\tomb4.exe", "\\data\\a.tr4"}))},
      {"C:\\Users\\{A}\\AppData\\Local\\CheckORDL\\ORDL.el",
       formats::CodificaElenco(
           Elenco(Con("D:\\Documents and Settings\\{B}\\Ordelio", a, b), {"\\ordl2009.exe"}))},
      {"C:\\Users\\{A}\\Desktop\\Trle\\ordeio.txt",
       Con("editor=C:\\Users\\{A}\\Desktop\\Trle\r\nwine=/home/{B}/.wine\r\n", a, b)},
      {"C:\\Users\\{A}\\Desktop\\Trle\\script.dat", Script(a)},
      {"C:\\Users\\{A}\\AppData\\Local\\CheckORDL\\ambiente.json", Ambiente(a, b)},
  };
  collection::SnapshotInMemoria s;
  for (const auto& [nome, corpo] : membri) {
    s.tabella.Nomi.push_back(Con(nome, a, b));
    s.tabella.Dimensioni.push_back(static_cast<std::int32_t>(corpo.size()));
    s.corpi.push_back(corpo);
  }
  s.tabella.Numero = static_cast<std::int32_t>(membri.size());
  return collection::CodificaSnapshot(s);
}

// The original's text as the copy should read it: each name of a profile path by its stand-in, found as a
// reader would, by the folder that holds the profiles.
std::string ConSostituti(std::string t, const std::vector<std::pair<std::string, std::string>>& sostituti) {
  for (const auto& [nome, sostituto] : sostituti)
    for (const std::string radice : {"Users\\", "Users/", "Documents and Settings\\", "home\\", "home/"}) {
      const std::string cercato = host::Maiuscolo(radice + nome);
      for (std::size_t p = 0; (p = host::Maiuscolo(t).find(cercato, p)) != std::string::npos;)
        t.replace(p + radice.size(), nome.size(), sostituto);
    }
  return t;
}

std::string Esiti(const std::vector<analysis::Esito>& esiti) {
  std::string t;
  for (const auto& e : esiti) {
    t += e.Id + "|" + e.Titolo + "|" + e.Azione;
    for (const auto& p : e.Evidenze)
      t += "|" + p.Nome + "=" +
           (std::holds_alternative<std::string>(p.Valore) ? std::get<std::string>(p.Valore)
                                                          : std::to_string(std::get<std::int64_t>(p.Valore)));
    t += "\n";
  }
  return t;
}

// Every report item's text, then the findings, of the snapshot `nome` opened as "Leggi Dati" opens it.
std::vector<std::string> Letture(const std::string& nome) {
  AnalisiProva a;
  analysis::ImpostaValori(a.d, nome);
  std::vector<std::string> testi;
  for (int v = 0; v < analysis::kNumeroVoci; ++v) {
    analysis::EseguiVoce(a.d, static_cast<analysis::Voce>(v));
    testi.push_back(a.area.Testo());
  }
  testi.push_back(Esiti(analysis::CalcolaRiepilogo(a.d.CartellaDati, a.d.Contenuto, "C:\\Prog", '.')));
  return testi;
}

struct Caso {
  const char* nome;
  std::string a, b;
  // The stand-ins each gets.
  std::string sa, sb;
  // The names are folders' too (Trle, Ordelio), which stay where they are no account's.
  bool ancheCartella = false;
};

const Caso kCasi[] = {
    {"blank", "Mario Rossi", "Mario Rossi", "user1", "user1"},
    {"accent", "Jos\xE9", "Jos\xE9", "user1\xE9", "user1\xE9"},
    {"case", "MaRiA", "maria", "user1", "user1"},
    {"two_accounts", "anna", "Bob", "user1", "user2"},
    {"a_folder_name_too", "Trle", "Ordelio", "user1", "user2", true},
};

void PrintTo(const Caso& c, std::ostream* os) {
  *os << c.nome;
}

class CopiaAnonimaCasi : public ::testing::TestWithParam<Caso> {};

TEST_P(CopiaAnonimaCasi, NessunNomeEOgniLetturaComeLOriginale) {
  const Caso& c = GetParam();
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Prog/x"), "");
  MacchinaProva::ScriviHost(m.C("orig.bin"), Snapshot(c.a, c.b));
  analysis::CopiaAnonima esito;
  ASSERT_EQ(analysis::SalvaCopiaAnonima({"C:\\orig.bin", "C:\\copia.bin", {}, "C:\\chiave.txt"}, esito), "");

  const std::string copia = host::Maiuscolo(MacchinaProva::LeggiHost(m.C("copia.bin")));
  for (const std::string& nome : {c.a, c.b}) {
    const std::string n = host::Maiuscolo(nome);
    if (!c.ancheCartella) {
      EXPECT_EQ(copia.find(n), std::string::npos) << nome;
    }
    for (const char* radice : {"USERS\\", "USERS/", "SETTINGS\\", "HOME\\", "HOME/"})
      EXPECT_EQ(copia.find(radice + n), std::string::npos) << radice << nome;
  }
  EXPECT_NE(copia.find("\\DESKTOP\\TRLE"), std::string::npos) << "a folder of the account's name stays";
  // Records and the level script keep their lengths; the lists and the text file follow their names.
  const std::vector<std::int32_t> prima = {791, 2606, 546 + 1634};
  for (std::size_t i = 0; i < prima.size(); ++i) EXPECT_EQ(esito.copia.tabella.Dimensioni[i], prima[i]) << i;
  EXPECT_EQ(esito.copia.corpi.at(7).size(), Script(c.a).size());

  const std::vector<std::pair<std::string, std::string>> sostituti = {{c.a, c.sa}, {c.b, c.sb}};
  // The environment: still a document its reader takes, every path the original's with the stand-ins.
  const auto percorsi = [](const std::string& json) {
    std::string t = host::DaUtf8(json);
    for (std::size_t p = 0; (p = t.find("\\\\", p)) != std::string::npos; ++p) t.erase(p, 1);
    return t;
  };
  formats::Ambiente letto;
  std::string motivo;
  EXPECT_TRUE(formats::DecodificaAmbiente(esito.copia.corpi.at(8), &letto, &motivo)) << motivo;
  EXPECT_EQ(percorsi(esito.copia.corpi.at(8)), ConSostituti(percorsi(Ambiente(c.a, c.b)), sostituti));
  const auto originale = Letture("C:\\orig.bin"), anonima = Letture("C:\\copia.bin");
  for (std::size_t i = 0; i < originale.size(); ++i)
    EXPECT_EQ(anonima[i], ConSostituti(originale[i], sostituti)) << "reading " << i;

  std::string chiave;
  for (const auto& v : esito.chiave) chiave += v.sostituto + "\t" + v.originale + "\r\n";
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("chiave.txt")), chiave);
  EXPECT_EQ(esito.chiave.front().sostituto, c.sa);
  EXPECT_EQ(esito.chiave.back().sostituto, c.sb);

  // The comparison of the two shows the replaced paths and nothing else.
  analysis::SnapshotAperto o, n;
  MessaggiProva zitto;
  ASSERT_TRUE(analysis::ApriSnapshot("C:\\orig.bin", "C:\\Prog\\o", o, zitto));
  ASSERT_TRUE(analysis::ApriSnapshot("C:\\copia.bin", "C:\\Prog\\n", n, zitto));
  const analysis::Confronto confronto = analysis::ConfrontaSnapshot(o, n, zitto);
  EXPECT_GT(analysis::NumeroDifferenze(confronto), 0u);
  for (const auto& parte : confronto.parti) {
    // A line or a name that changed is one gone and one come: each gone one comes back with its stand-in.
    std::multiset<std::string> tolti, aggiunti;
    for (const auto& d : parte.differenze) {
      if (d.tipo == analysis::TipoDifferenza::Tolto) tolti.insert(ConSostituti(d.oggetto, sostituti));
      if (d.tipo == analysis::TipoDifferenza::Aggiunto) aggiunti.insert(d.oggetto);
      if (d.tipo == analysis::TipoDifferenza::Cambiato) {
        EXPECT_EQ(ConSostituti(d.vecchio, sostituti), d.nuovo) << parte.chiave << " " << d.oggetto;
      }
      EXPECT_NE(d.tipo, analysis::TipoDifferenza::Spostato);
    }
    EXPECT_EQ(tolti, aggiunti) << parte.chiave;
  }
}

INSTANTIATE_TEST_SUITE_P(Nomi, CopiaAnonimaCasi, ::testing::ValuesIn(kCasi),
                         [](const auto& info) { return std::string(info.param.nome); });

}  // namespace

namespace {

// Where a text holds an account name, and the stand-in it gets where no offset may move.
TEST(CopiaAnonima, NomiNeiPercorsi) {
  struct Riga {
    std::string testo;
    std::string trovati;  // the names found, "|" after each
  };
  const Riga righe[] = {
      {"C:\\Users\\Mario\\Desktop", "Mario|"},
      {"e:/users/mario rossi/x", "mario rossi|"},
      {"C:\\Users\\Mario   ", "Mario|"},                           // a fixed field's blanks
      {std::string("C:\\Users\\Al\0junk", 16), "Al|"},             // a C string's end
      {"C:\\Users\\Public\\Documents C:\\Users\\Default\\x", ""},  // nobody's profiles
      {"C:\\Users\\%USERNAME%\\x", ""},
      {"C:\\Users\\", ""},
      {"\\Users\\Mario\\x", ""},  // no drive: a folder of that name anywhere
      {"C:\\Utenti\\Mario\\x", ""},
      {"Z:\\home\\lara\\.wine /home/lara/x /home/bob", "lara|lara|bob|"},
      {"C:\\Documents and Settings\\Ann\\Dati \"C:\\Users\\Bo\"", "Ann|Bo|"},
      {"C:\\Users\\\\Bob\\x C:\\\\Users\\\\Dan\\\\x /home//eve/x", "Bob|Dan|eve|"},  // doubled, escaped
      {"C:\\DOCUME~1\\Carl\\x", "Carl|"},
      {"C:\\Users\\Eve;C:\\Users\\Fred\\x", "Eve|Fred|"},  // a list of paths
  };
  for (const Riga& r : righe) {
    std::string trovati;
    for (const analysis::Tratto& t : analysis::NomiNelTesto(r.testo))
      trovati += r.testo.substr(t.posizione, t.lunghezza) + "|";
    EXPECT_EQ(trovati, r.trovati) << r.testo;
  }
  EXPECT_EQ(analysis::SostitutoLungo("user1", 8), "user1___");
  EXPECT_EQ(analysis::SostitutoLungo("user12", 3), "u12");
  EXPECT_EQ(analysis::SostitutoLungo("user1", 1), "1");
}

// Members outside the forms the readers expect: every byte keeps its place, and no name is left.
TEST(CopiaAnonima, MembriFuoriForma) {
  const auto stringa = [](const std::string& t) {
    std::string b;
    host::AccodaLE(b, static_cast<std::uint32_t>(t.size()));
    return b + t;
  };
  std::string tagliato;  // a list cut before its sizes, whose profile paths begin in its folder
  host::AccodaLE(tagliato, std::uint32_t{2});
  tagliato += stringa("C:\\Users") + stringa("\\Bob\\a.txt") + stringa("\\Alice\\b");
  const std::string percorso = "C:\\Users\\Bob\\Desktop";
  // A path as long as the environment's reader takes: its stand-in may not lengthen it.
  formats::Ambiente lungo;
  lungo.bitProgramma = 32;
  lungo.dataLocale = "2026-01-01T00:00:00";
  lungo.fileVirtuali = {"C:\\Users\\Bob\\" + std::string(32767 - 13, 'x')};
  lungo.fileVirtualiTotale = 1;
  std::string piatto = "{";  // more keys in one object than the copy looks up one by one
  for (int i = 0; i < 1100; ++i) piatto += "\"k" + std::to_string(i) + "\": 0, ";
  // A path across two fields of the settings, behind a name that its own field's replacement moves.
  std::string attraverso(formats::PrefRecord::kDimensione, ' ');
  const std::size_t campo = formats::CampiTestoPreferenze().at(0).posizione;
  attraverso.replace(campo, 22, "C:\\Users\\Mario Rossi\\a");
  attraverso.replace(campo + 251, 20, "C:\\Users\\Bob\\Desktop");
  const std::pair<std::string, std::string> membri[] = {
      {"C:\\x\\ordelio.prf", attraverso},
      {"C:\\x\\ORDL.el", tagliato},
      {"C:\\x\\ordelio.prf", percorso + std::string(100, ' ')},  // across the fields of a short record
      {"C:\\x\\Infofile.bin", formats::CodificaInfoHeader({}) + percorso},  // behind the record
      {"C:\\x\\ambiente.json", formats::CodificaAmbiente(lungo)},
      {"C:\\x\\ambiente.json", "{\"path\": \"C:\\\\Users\\\\Bob\\\\x\", "},  // not JSON: cut
      {"C:\\x\\ambiente.json", piatto + "\"C:/Users/Bob/x\": 1}"},
      {"C:\\x\\ambiente.json", std::string(100, '[') + "\"C:/Users/Bob/x\"" + std::string(100, ']')},
  };
  for (const auto& [nome, corpo] : membri) {
    const collection::SnapshotInMemoria s{{1, {nome}, {static_cast<std::int32_t>(corpo.size())}}, {corpo}};
    const analysis::CopiaAnonima c = analysis::Anonimizza(s, {});
    const std::string copia = host::Maiuscolo(c.copia.corpi.at(0));
    EXPECT_EQ(copia.size(), corpo.size()) << nome;
    EXPECT_EQ(copia.find("BOB"), std::string::npos) << nome;
    EXPECT_EQ(copia.find("MARIO"), std::string::npos) << nome;
    EXPECT_EQ(copia.find("ALICE"), std::string::npos) << nome;
    EXPECT_GT(c.membri.at(0).sostituzioni, 0) << nome;
  }
}

TEST(CopiaAnonima, AutoriSoloARichiesta) {
  formats::ArchivioLivello l;
  l.Autore_Nome.Assegna("Lara Croft");
  l.Autore_Email.Assegna("lara@croft.example");
  l.Autore_Sito.Assegna("");
  collection::SnapshotInMemoria s;
  s.tabella = {2, {"C:\\A\\archivio.qlv", "C:\\B\\altro.qlv"}, {}};
  for (int i = 0; i < 2; ++i)
    s.corpi.push_back(formats::CodificaArchivioHeader({}) + formats::CodificaArchivioLivello(l));
  s.tabella.Dimensioni.assign(2, static_cast<std::int32_t>(s.corpi[0].size()));

  EXPECT_EQ(analysis::Anonimizza(s, {}).copia.corpi, s.corpi);
  const analysis::CopiaAnonima c = analysis::Anonimizza(s, {true});
  const auto dopo = formats::DecodificaLivelli(c.copia.corpi[1], 1).at(0);
  EXPECT_EQ(dopo.Autore_Nome.Testo(), std::string("author1").append(73, ' '));
  EXPECT_EQ(dopo.Autore_Email.Testo().substr(0, 23), "mail1@example.invalid  ");
  EXPECT_EQ(dopo.Autore_Sito, l.Autore_Sito) << "an empty field stays empty";
  EXPECT_EQ(c.membri[1].sostituzioni, 2);
  EXPECT_EQ(c.chiave.size(), 2u) << "the same author twice is one name";
}

TEST(CopiaAnonima, CheNonSiPuoFare) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("corto.bin"), std::string("\x05\0\0\0", 4));
  MacchinaProva::ScriviHost(m.C("buono.bin"), Snapshot("Mario", "Mario"));
  const collection::ContenutoSnapshot altro{1, {"C:\\x"}, {1}};
  struct Riga {
    analysis::RichiestaCopia r;
    std::string messaggio;
  };
  const Riga righe[] = {
      {{"C:\\manca.bin", "C:\\c.bin"}, "The snapshot cannot be read: C:\\manca.bin: the file does not exist"},
      {{"C:\\corto.bin", "C:\\c.bin"},
       std::string("The snapshot cannot be read: C:\\corto.bin: ") + analysis::kSnapshotIlleggibile},
      {{"C:\\buono.bin", "c:\\BUONO.bin"},
       "The anonymized copy must not replace the snapshot C:\\buono.bin: choose another name"},
      {{"C:\\buono.bin", "C:\\c.bin", {}, "C:\\buono.bin"},
       "The key C:\\buono.bin must be a file apart from the snapshot and the copy: choose another name"},
      {{"C:\\buono.bin", "C:\\c.bin", {}, "C:\\C.BIN"},
       "The key C:\\C.BIN must be a file apart from the snapshot and the copy: choose another name"},
      {{"C:\\buono.bin", "C:\\buono.bin.part"},
       "The anonymized copy must not replace the snapshot C:\\buono.bin: choose another name"},
      {{"C:\\buono.bin", "C:\\.\\Buono.bin"},
       "The anonymized copy must not replace the snapshot C:\\buono.bin: choose another name"},
      {{"C:\\buono.bin", "C:\\c.bin", {}, {}, &altro},
       "The snapshot C:\\buono.bin has changed since it was opened: open it again"},
      {{"C:\\buono.bin", "C:\\manca\\c.bin"}, "Error saving C:\\manca\\c.bin"},
  };
  for (const Riga& r : righe) {
    analysis::CopiaAnonima c;
    EXPECT_EQ(analysis::SalvaCopiaAnonima(r.r, c), r.messaggio);
    EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("c.bin")));
  }
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("buono.bin")), Snapshot("Mario", "Mario"));
}

// What the copy keeps that may still name the person: names of the listings and words of ordeio.txt that hold
// a replaced account name, each once, where first met; profile paths (replaced) and authors (no account) not.
TEST(CopiaAnonima, CioCheResta) {
  struct Riga {
    const char* caso;
    std::string base;
    std::vector<std::string> nomi;
    std::string ordeio;
    std::string attesi;  // "text|where" lines
    std::int64_t oltre = 0;
  };
  std::vector<std::string> molti;
  for (int i = 0; i < 25; ++i) molti.push_back("\\mario" + std::to_string(i) + ".tr4");
  const Riga righe[] = {
      {"accent_any_case",
       "C:\\Users\\Jos\xE9\\Desktop\\Trle",
       {"\\data\\jos\xE9_castello.tr4", "\\JOS\xC9 levels\\a.tr4", "\\JOS\xC9 levels\\b.tr4",
        "\\data\\x.tr4"},
       "By Jos\xE9 (C:\\Users\\Jos\xE9\\x), \"jos\xE9\".\r\n",
       "jos\xE9_castello.tr4|a file name in TRLE.el\nJOS\xC9 levels|a folder name in TRLE.el\n"
       "Jos\xE9|a word of ordeio.txt\njos\xE9|a word of ordeio.txt\n"},
      {"words_of_a_full_name",
       "C:\\Users\\Mario Rossi\\Trle",
       {"\\mario_kart.tr4", "\\Ros.tr4", "\\rossi.tr4"},
       "",
       "mario_kart.tr4|a file name in TRLE.el\nrossi.tr4|a file name in TRLE.el\n"},
      {"account_user_as_under_wine",
       "C:\\users\\user\\Trle",
       {"\\user_levels.tr4", "\\a.tr4"},
       "C:\\users\\user\\x",
       "user_levels.tr4|a file name in TRLE.el\n"},
      {"no_account_replaced", "D:\\Giochi\\Trle", {"\\mario.tr4"}, "Mario", ""},
      {"capped", "C:\\Users\\Mario\\Trle", molti, "", "", 5},
  };
  for (const Riga& r : righe) {
    const std::vector<std::pair<std::string, std::string>> membri = {
        {"C:\\x\\TRLE.el", formats::CodificaElenco(Elenco(r.base, r.nomi))}, {"C:\\x\\ordeio.txt", r.ordeio}};
    collection::SnapshotInMemoria s;
    for (const auto& [nome, corpo] : membri) {
      s.tabella.Nomi.push_back(nome);
      s.tabella.Dimensioni.push_back(static_cast<std::int32_t>(corpo.size()));
      s.corpi.push_back(corpo);
    }
    s.tabella.Numero = 2;
    const analysis::CopiaAnonima c = analysis::Anonimizza(s, {true});
    const analysis::Residui residui = analysis::CercaResidui(c);
    std::string trovati;
    for (const analysis::Residuo& v : residui.voci) trovati += v.testo + "|" + v.dove + "\n";
    EXPECT_EQ(residui.oltre, r.oltre) << r.caso;
    if (r.oltre == 0) {
      EXPECT_EQ(trovati, r.attesi) << r.caso;
    } else {
      EXPECT_EQ(residui.voci.size(), analysis::kResiduiMostrati) << r.caso;
    }
  }
}

TEST(CopiaAnonima, MessaggioFinale) {
  analysis::CopiaAnonima c;
  EXPECT_EQ(analysis::TestoResidui(c, {}), "") << "no account replaced: nothing to say";
  c.chiave = {{"user1", "Ann", analysis::Genere::utente}, {"author1", "Lara", analysis::Genere::autore}};
  c.tabella = 3;
  EXPECT_EQ(
      analysis::TestoCopiaAnonima(c, "C:\\c.bin"),
      "The anonymized copy is saved as C:\\c.bin.\r\nIt replaced 1 account name and 1 of the level "
      "authors' names, addresses and sites in 3 places; check it with \"Leggi Dati\" before you post "
      "it.\r\nNo file or folder name, nor any word of ordeio.txt, in it holds an account name it replaced.");
  EXPECT_EQ(analysis::TestoResidui(c, {{{"ann.tr4", "a file name in TRLE.el"}}, 7}),
            "It keeps these names, which hold an account name it replaced and may still name the person:\r\n"
            "  ann.tr4 (a file name in TRLE.el)\r\n  and 7 more");
  EXPECT_EQ(analysis::NomeChiave("C:\\a.b\\copia"), "C:\\a.b\\copia-key.txt");
}

// The window's options: the authors on a Yes, the key on a Yes and a name, no key on a cancel of its dialog.
TEST(CopiaAnonima, OpzioniDallaFinestra) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Prog/x"), "");
  MacchinaProva::ScriviHost(m.C("snap.bin"), Snapshot("Mario", "Mario"));
  AnalisiProva a;
  analysis::ImpostaValori(a.d, "C:\\snap.bin");
  a.messaggi.si = {true, true};
  a.dialogo.Scegli("C:\\copia.bin");
  a.dialogo.Annulla();
  analysis::mnu_SalvaCopiaAnonima_Click(a.d);
  EXPECT_EQ(a.messaggi.domande,
            (std::vector<std::string>{analysis::kDomandaAutori, analysis::kDomandaChiave}));
  EXPECT_EQ(a.dialogo.titolo, analysis::kTitoloChiave);
  EXPECT_EQ(host::Maiuscolo(MacchinaProva::LeggiHost(m.C("copia.bin"))).find("LARA"), std::string::npos);
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("copia-key.txt")));
  EXPECT_EQ(a.messaggi.tutti.size(), 1u);
  EXPECT_TRUE(a.messaggi.tutti.back().starts_with("plain: The anonymized copy is saved as C:\\copia.bin."));

  a.messaggi.si = {false, true};
  a.dialogo.Scegli("C:\\copia2.bin");
  a.dialogo.Scegli("C:\\chiave.txt");
  analysis::mnu_SalvaCopiaAnonima_Click(a.d);
  EXPECT_NE(MacchinaProva::LeggiHost(m.C("copia2.bin")).find("Lara"), std::string::npos);
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("chiave.txt")), "user1\tMario\r\n");
}

// ---- The profiles that are nobody's ----
// Windows' shared profiles, in any case and under either folder of profiles, name no user and stay.
TEST(CopiaAnonima, ProfiliDiNessuno) {
  for (const char* profilo : {"All Users", "ALL USERS", "Public", "Default", "Default User"})
    for (const char* radice : {"C:\\Documents and Settings\\", "C:\\Users\\"}) {
      const std::string testo = radice + std::string(profilo) + "\\Dati";
      EXPECT_TRUE(analysis::NomiNelTesto(testo).empty()) << testo;
    }
}
// ---- end of the profiles that are nobody's ----

}  // namespace
