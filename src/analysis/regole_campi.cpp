// The fields a rule may compare, one row each: the reader checks a rule's field and operands against the
// row, the evaluation reads the value through it, and the README's list is printed from it.
#include <array>
#include <cstdio>
#include <string>

#include "analysis/regole.h"
#include "analysis/regole_condizione.h"
#include "host/nomi.h"
#include "support/valori.h"

namespace analysis {
namespace {

using collection::Membro;
using formats::ArchivioHeader;
using formats::InfoHeader;
using formats::PrefRecord;

ValoreCampo Valore(bool b) {
  return b;
}
ValoreCampo Valore(std::int16_t n) {
  return static_cast<double>(n);
}
ValoreCampo Valore(std::int32_t n) {
  return static_cast<double>(n);
}
ValoreCampo Valore(double n) {
  return n;
}
template <std::size_t N>
ValoreCampo Valore(const formats::StringaFissa<N>& s) {
  return support::PulisciStringa(s.Testo());
}

template <auto Record, auto Membro>
std::optional<ValoreCampo> Leggi(const Fatti& f) {
  return Valore((f.*Record).*Membro);
}

template <auto M>
std::optional<ValoreCampo> Intestazione(const Fatti& f) {
  return Leggi<&Fatti::infoHeader, M>(f);
}
template <auto M>
std::optional<ValoreCampo> Preferenza(const Fatti& f) {
  return Leggi<&Fatti::prf, M>(f);
}
template <auto M>
std::optional<ValoreCampo> Archivio(const Fatti& f) {
  return Valore(f.archivio.header.*M);
}

// The file's length, once the facts carry it.
template <typename R>
std::optional<ValoreCampo> Dimensione(const R& r) {
  if constexpr (requires { r.dimensione; })
    return static_cast<double>(r.dimensione);
  else
    return std::nullopt;
}

const host::SistemaWindows& Win(const Fatti& f) {
  return f.ambiente.ambiente.windows;
}
double Numero(std::uint32_t n) {
  return static_cast<double>(n);
}

std::vector<CampoRegola> FaiCampi() {
  using T = TipoCampo;
  const Membro h = Membro::intestazione, p = Membro::preferenze, a = Membro::archivio, e = Membro::ambiente;
  std::vector<CampoRegola> c = {
      {"header.FlagErrori", T::intero, h, Intestazione<&InfoHeader::FlagErrori>},
      {"header.VersioneOrdelio", T::versione, h, Intestazione<&InfoHeader::VersioneOrdelio>},
      {"header.WindowsXp", T::booleano, h, Intestazione<&InfoHeader::WindowsXp>},
      {"header.SpazioDiscoC", T::numero, h, Intestazione<&InfoHeader::SpazioDiscoC>},
      {"header.SpazioDiscoMaggiore", T::numero, h, Intestazione<&InfoHeader::SpazioDiscoMaggiore>},
      {"header.DiscoMaggiore", T::testo, h, Intestazione<&InfoHeader::DiscoMaggiore>},
      {"header.StartFolderTrle", T::testo, h, Intestazione<&InfoHeader::StartFolderTrle>},
      {"header.StartFolderOrdl", T::testo, h, Intestazione<&InfoHeader::StartFolderOrdl>},
      {"preferences.PathArchivio", T::testo, p, Preferenza<&PrefRecord::PathArchivio>},
      {"preferences.PathTRLE", T::testo, p, Preferenza<&PrefRecord::PathTRLE>},
      {"preferences.NameTom2Pc", T::testo, p, Preferenza<&PrefRecord::NameTom2Pc>},
      {"preferences.NameTomb4", T::testo, p, Preferenza<&PrefRecord::NameTomb4>},
      {"preferences.DefaultLoadDir", T::testo, p, Preferenza<&PrefRecord::DefaultLoadDir>},
      {"preferences.PathEditorGrafico", T::testo, p, Preferenza<&PrefRecord::PathEditorGrafico>},
      {"preferences.LinguaAttuale", T::testo, p, Preferenza<&PrefRecord::LinguaAttuale>},
      {"preferences.FolderSavegameExt", T::testo, p, Preferenza<&PrefRecord::FolderSavegameExt>},
      {"preferences.FolderScriptEx", T::testo, p, Preferenza<&PrefRecord::FolderScriptEx>},
      {"preferences.LinguaDatDefault", T::testo, p, Preferenza<&PrefRecord::LinguaDatDefault>},
      {"preferences.Flags", T::intero, p, Preferenza<&PrefRecord::Flags>},
      {"preferences.VersioneSubBumber", T::intero, p, Preferenza<&PrefRecord::VersioneSubBumber>},
      {"preferences.NumeroArcSavegame", T::intero, p, Preferenza<&PrefRecord::NumeroArcSavegame>},
      {"preferences.TimerDecimi", T::intero, p, Preferenza<&PrefRecord::TimerDecimi>},
      {"preferences.TestShowScreenShot", T::booleano, p, Preferenza<&PrefRecord::TestShowScreenShot>},
      {"preferences.TestChiediDopoCattura", T::booleano, p, Preferenza<&PrefRecord::TestChiediDopoCattura>},
      {"preferences.TestNoAutoCompile", T::booleano, p, Preferenza<&PrefRecord::TestNoAutoCompile>},
      {"preferences.TestConfrontaUguali", T::booleano, p, Preferenza<&PrefRecord::TestConfrontaUguali>},
      {"preferences.TestLogFile", T::booleano, p, Preferenza<&PrefRecord::TestLogFile>},
      {"preferences.TestNonDecomprimere", T::booleano, p, Preferenza<&PrefRecord::TestNonDecomprimere>},
      {"preferences.TestFullBackup", T::booleano, p, Preferenza<&PrefRecord::TestFullBackup>},
      {"preferences.TestAutoSave", T::booleano, p, Preferenza<&PrefRecord::TestAutoSave>},
      {"preferences.TestArchiviaSavegame", T::booleano, p, Preferenza<&PrefRecord::TestArchiviaSavegame>},
      {"preferences.TestVerifyImpage", T::booleano, p, Preferenza<&PrefRecord::TestVerifyImpage>},
      {"preferences.TestAttivaJoystick", T::booleano, p, Preferenza<&PrefRecord::TestAttivaJoystick>},
      {"preferences.size", T::intero, p, [](const Fatti& f) { return Dimensione(f.preferenze); }},
      {"archive.NVersione", T::intero, a, Archivio<&ArchivioHeader::NVersione>},
      {"archive.TotLivelli", T::intero, a, Archivio<&ArchivioHeader::TotLivelli>},
      {"archive.TotCD", T::intero, a, Archivio<&ArchivioHeader::TotCD>},
      {"archive.MainDir", T::testo, a, Archivio<&ArchivioHeader::MainDir>},
      {"archive.SecondaryDir", T::testo, a, Archivio<&ArchivioHeader::SecondaryDir>},
      {"archive.TestCompresso", T::booleano, a, Archivio<&ArchivioHeader::TestCompresso>},
      {"archive.TestAudioInMp3", T::booleano, a, Archivio<&ArchivioHeader::TestAudioInMp3>},
      {"archive.TestSetupCd", T::booleano, a, Archivio<&ArchivioHeader::TestSetupCd>},
      {"archive.SizeMainDir", T::numero, a, Archivio<&ArchivioHeader::SizeMainDir>},
      {"archive.SizeSecondayDir", T::numero, a, Archivio<&ArchivioHeader::SizeSecondayDir>},
      {"archive.levels_read", T::intero, a,
       [](const Fatti& f) -> std::optional<ValoreCampo> {
         return static_cast<double>(f.archivio.livelli.size());
       }},
      {"script.levels", T::intero, Membro::script,
       [](const Fatti& f) -> std::optional<ValoreCampo> {
         return static_cast<double>(f.script.livelli.size());
       }},
      {"windows.product", T::testo, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Win(f).prodotto; }},
      {"windows.version", T::versione, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> {
         const auto& w = Win(f);
         return std::to_string(w.maggiore) + "." + std::to_string(w.minore) + "." + std::to_string(w.build);
       }},
      {"windows.major", T::intero, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Numero(Win(f).maggiore); }},
      {"windows.minor", T::intero, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Numero(Win(f).minore); }},
      {"windows.build", T::intero, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Numero(Win(f).build); }},
      {"windows.display_version", T::testo, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Win(f).rilascio; }},
      {"windows.bits", T::intero, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Win(f).windows64 ? 64.0 : 32.0; }},
      {"windows.wow64", T::booleano, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Win(f).wow64; }},
      {"windows.wine", T::booleano, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Win(f).wine; }},
      {"windows.wine_version", T::testo, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Win(f).versioneWine; }},
      {"windows.uac", T::booleano, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Win(f).uac; }},
      {"windows.virtualization", T::booleano, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Win(f).virtualizzazione; }},
      {"windows.codepage", T::intero, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Numero(Win(f).codePage); }},
      {"windows.dpi", T::intero, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return Numero(Win(f).dpi); }},
      {"program.version", T::versione, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> { return f.ambiente.ambiente.versioneProgramma; }},
      {"program.bits", T::intero, e,
       [](const Fatti& f) -> std::optional<ValoreCampo> {
         return static_cast<double>(f.ambiente.ambiente.bitProgramma);
       }},
  };
  return c;
}

// One part of a version: its leading digits without leading zeros, and what follows them.
struct Parte {
  std::string_view cifre, resto;
};
Parte ProssimaParte(std::string_view& v) {
  while (!v.empty() && (v.front() == ' ' || v.front() == '.' || v.front() == ',')) v.remove_prefix(1);
  std::size_t fine = 0;
  while (fine < v.size() && v[fine] != '.' && v[fine] != ',') ++fine;
  std::string_view p = v.substr(0, fine);
  v.remove_prefix(fine);
  while (!p.empty() && p.back() == ' ') p.remove_suffix(1);
  std::size_t c = 0;
  while (c < p.size() && p[c] >= '0' && p[c] <= '9') ++c;
  std::string_view cifre = p.substr(0, c);
  while (!cifre.empty() && cifre.front() == '0') cifre.remove_prefix(1);
  return {cifre, p.substr(c)};
}

template <typename T>
bool Ordina(Operatore op, const T& a, const T& b) {
  switch (op) {
    case Operatore::uguale:
      return a == b;
    case Operatore::diverso:
      return a != b;
    case Operatore::minore:
      return a < b;
    case Operatore::minoreUguale:
      return a <= b;
    case Operatore::maggiore:
      return a > b;
    case Operatore::maggioreUguale:
      return a >= b;
    default:
      return false;
  }
}

}  // namespace

const std::vector<CampoRegola>& CampiRegole() {
  static const std::vector<CampoRegola> campi = FaiCampi();
  return campi;
}

const CampoRegola* CercaCampo(std::string_view nome) {
  for (const CampoRegola& c : CampiRegole())
    if (c.nome == nome) return &c;
  return nullptr;
}

const char* NomeTipo(TipoCampo t) {
  static constexpr const char* kNomi[] = {"integer", "number", "text", "version", "true/false"};
  return kNomi[static_cast<int>(t)];
}

std::string TestoCampiRegole() {
  std::string t;
  for (const CampoRegola& c : CampiRegole()) {
    char riga[128];
    std::snprintf(riga, sizeof riga, "%-34.*s %-11s %s\n", static_cast<int>(c.nome.size()), c.nome.data(),
                  NomeTipo(c.tipo), collection::VoceDi(c.membro).nomeDati);
    t += riga;
  }
  return t;
}

int ConfrontaVersioni(std::string_view a, std::string_view b) {
  while (true) {
    const bool finita = a.find_first_not_of(" .,") == std::string_view::npos &&
                        b.find_first_not_of(" .,") == std::string_view::npos;
    if (finita) return 0;
    const Parte pa = ProssimaParte(a), pb = ProssimaParte(b);
    if (pa.cifre.size() != pb.cifre.size()) return pa.cifre.size() < pb.cifre.size() ? -1 : 1;
    if (const int c = pa.cifre.compare(pb.cifre)) return c < 0 ? -1 : 1;
    const std::string ra = host::Maiuscolo(pa.resto), rb = host::Maiuscolo(pb.resto);
    if (const int c = ra.compare(rb)) return c < 0 ? -1 : 1;
  }
}

const std::array<char, 256>& TabellaPiega() {
  // Every name of a large list goes through here: a table, made once.
  static const std::array<char, 256> kPiega = [] {
    std::array<char, 256> t{};
    for (int c = 0; c < 256; ++c) t[static_cast<std::size_t>(c)] = host::Maiuscola(static_cast<char>(c));
    t['/'] = '\\';
    return t;
  }();
  return kPiega;
}

void Piega(std::string_view s, std::string& out) {
  const std::array<char, 256>& piega = TabellaPiega();
  out.resize(s.size());
  for (std::size_t i = 0; i < s.size(); ++i) out[i] = piega[static_cast<unsigned char>(s[i])];
}

Modello FaiModello(std::string_view pattern, bool percorsi) {
  Modello m;
  m.percorso = percorsi && !pattern.empty() && (pattern.front() == '/' || pattern.front() == '\\');
  Piega(pattern, m.testo);
  if (m.percorso) {
    const std::size_t primo = m.testo.find_first_not_of('\\');
    m.testo.erase(0, primo == std::string::npos ? m.testo.size() : primo - 1);
    if (m.testo.empty()) m.testo.push_back('\\');
  }
  m.jolly = host::HaJolly(m.testo);
  m.primaStella = m.testo.find('*');
  m.ultimaStella = m.testo.rfind('*');
  return m;
}

namespace {

bool UgualeA(std::string_view parte, std::string_view nome, std::size_t da) {
  for (std::size_t i = 0; i < parte.size(); ++i)
    if (parte[i] != '?' && parte[i] != nome[da + i]) return false;
  return true;
}

// Where `parte` (`?` any character) first stands in nome[da, fine), or npos.
std::size_t Cerca(std::string_view nome, std::size_t da, std::size_t fine, std::string_view parte) {
  if (parte.find('?') == std::string_view::npos) {
    const std::size_t t = nome.substr(0, fine).find(parte, da);
    return t;
  }
  for (std::size_t i = da; i + parte.size() <= fine; ++i)
    if (UgualeA(parte, nome, i)) return i;
  return std::string_view::npos;
}

}  // namespace

bool Corrisponde(const Modello& m, std::string_view nome) {
  const std::string_view p = m.testo;
  if (!m.jolly) return p == nome;
  if (m.primaStella == std::string_view::npos) return p.size() == nome.size() && UgualeA(p, nome, 0);
  // The literal tail and head first: most names fail there, without the walk.
  const std::string_view testa = p.substr(0, m.primaStella), coda = p.substr(m.ultimaStella + 1);
  if (testa.size() + coda.size() > nome.size()) return false;
  if (!UgualeA(coda, nome, nome.size() - coda.size()) || !UgualeA(testa, nome, 0)) return false;
  // Between the first and the last star, each piece where it first stands after the one before: the
  // leftmost place leaves the most room to the pieces after it, so no other place need be tried.
  const std::size_t fine = nome.size() - coda.size();
  std::size_t ni = testa.size();
  for (std::size_t pi = m.primaStella + 1; pi <= m.ultimaStella;) {
    const std::size_t stella = p.find('*', pi);
    const std::string_view pezzo = p.substr(pi, stella - pi);
    pi = stella + 1;
    if (pezzo.empty()) continue;
    const std::size_t t = Cerca(nome, ni, fine, pezzo);
    if (t == std::string_view::npos) return false;
    ni = t + pezzo.size();
  }
  return true;
}

bool ConfrontaNumero(const Confronto& c, double x) {
  for (const Termine& t : c) {
    const bool ok = t.op == Operatore::bit ? x >= -9007199254740992.0 && x <= 9007199254740992.0 &&
                                                 (static_cast<std::int64_t>(x) & t.bit) == t.bit
                                           : Ordina(t.op, x, t.numero);
    if (!ok) return false;
  }
  return true;
}

bool Confronta(const Confronto& c, TipoCampo tipo, const ValoreCampo& v) {
  if (tipo == TipoCampo::intero || tipo == TipoCampo::numero) return ConfrontaNumero(c, std::get<double>(v));
  std::string piegato;
  if (const std::string* testo = std::get_if<std::string>(&v)) Piega(*testo, piegato);
  for (const Termine& t : c) {
    bool ok = false;
    if (tipo == TipoCampo::booleano)
      ok = Ordina(t.op, std::get<bool>(v), t.booleano);
    else if (t.op == Operatore::corrisponde)
      ok = Corrisponde(t.modello, piegato);
    else if (tipo == TipoCampo::versione)
      ok = Ordina(t.op, ConfrontaVersioni(piegato, t.testo), 0);
    else
      ok = Ordina(t.op, piegato, t.testo);
    if (!ok) return false;
  }
  return true;
}

}  // namespace analysis
