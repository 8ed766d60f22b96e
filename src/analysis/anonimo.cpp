#include "analysis/anonimo.h"

#include <algorithm>
#include <array>

#include "host/nomi.h"

namespace analysis {
namespace {

bool Barra(char c) {
  return c == '\\' || c == '/';
}

// A byte that ends a name: a slash, one that Windows refuses in names, a control byte.
bool FineNome(char c) {
  // A ';' too: it parts the paths of a list of them.
  static constexpr std::string_view kRifiutati = "\\/:*?\"<>|;";
  return static_cast<unsigned char>(c) < 0x20 || kRifiutati.find(c) != std::string_view::npos;
}

bool Lettera(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The folders that hold the profiles, after a drive (XP's also by its short name).
constexpr std::array<std::string_view, 4> kRadici = {"USERS", "DOCUMENTS AND SETTINGS", "DOCUME~1", "HOME"};
// Profiles that are nobody's: they say nothing of the user and stay.
constexpr std::array<std::string_view, 4> kComuni = {"PUBLIC", "DEFAULT", "DEFAULT USER", "ALL USERS"};

constexpr std::size_t kNo = std::string_view::npos;

// Behind the slashes from `i` (a path written with doubled ones, or escaped, has runs); npos for none.
std::size_t DopoBarre(std::string_view t, std::size_t i) {
  const std::size_t da = i;
  while (i < t.size() && Barra(t[i])) ++i;
  return i > da ? i : kNo;
}

// Where the account name begins behind the ':' or the first '/' of a run at `p`, or npos.
std::size_t InizioNome(std::string_view t, std::size_t p) {
  if (t[p] == '/') {
    if (p > 0 && t[p - 1] == '/') return kNo;
    const std::size_t dopo = DopoBarre(t, p);
    return t.substr(dopo, 4) == "home" ? DopoBarre(t, dopo + 4) : kNo;
  }
  if (p == 0 || !Lettera(t[p - 1])) return kNo;
  const std::size_t dopo = DopoBarre(t, p + 1);
  if (dopo == kNo) return kNo;
  for (const std::string_view radice : kRadici)
    if (host::UgualiSenzaCaso(t.substr(dopo, radice.size()), radice))
      if (const std::size_t nome = DopoBarre(t, dopo + radice.size()); nome != kNo) return nome;
  return kNo;
}

// The name from `inizio`: to the next byte that ends a name, less closing blanks and dots.
std::size_t LunghezzaNome(std::string_view t, std::size_t inizio) {
  std::size_t fine = inizio;
  while (fine < t.size() && !FineNome(t[fine])) ++fine;
  while (fine > inizio && (t[fine - 1] == ' ' || t[fine - 1] == '.')) --fine;
  return fine - inizio;
}

bool Comune(std::string_view nome) {
  if (nome.starts_with('%')) return true;
  return std::any_of(kComuni.begin(), kComuni.end(),
                     [&](std::string_view c) { return host::UgualiSenzaCaso(nome, c); });
}

bool SoloAscii(std::string_view s) {
  return std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string Sostituto(Genere genere, int numero, std::string_view originale) {
  const std::string n = std::to_string(numero);
  switch (genere) {
    case Genere::utente:
      return "user" + n + (SoloAscii(originale) ? "" : "\xE9");
    case Genere::autore:
      return "author" + n;
    case Genere::email:
      return "mail" + n + "@example.invalid";
    case Genere::sito:
      return "site" + n + ".example.invalid";
  }
  return n;
}

// Writes `testo` with each trait replaced by what `sostituto` makes of it.
template <typename Fa>
std::string Sostituisci(std::string_view testo, const std::vector<Tratto>& tratti, Fa sostituto) {
  std::string out;
  out.reserve(testo.size() + 8 * tratti.size());
  std::size_t da = 0;
  for (const Tratto& t : tratti) {
    out.append(testo.substr(da, t.posizione - da));
    out += sostituto(testo.substr(t.posizione, t.lunghezza));
    da = t.posizione + t.lunghezza;
  }
  out.append(testo.substr(da));
  return out;
}

}  // namespace

bool Sostituti::GiaSostituto(std::string_view nome) const {
  // Read by its shape, not against every stand-in given: a list can bring a hundred thousand of them.
  // `user12`, `user12\xE9` or `u12`, padded with '_', or the last digits of a number.
  while (!nome.empty() && nome.back() == '_') nome.remove_suffix(1);
  const std::string n = host::Maiuscolo(nome);
  std::string_view cifre = n;
  if (cifre.starts_with("USER"))
    cifre.remove_prefix(4);
  else if (cifre.starts_with('U'))
    cifre.remove_prefix(1);
  if (cifre.size() > 1 && cifre.back() == '\xC9' && n.starts_with("USER")) cifre.remove_suffix(1);
  const auto numeri = numeri_.find(Genere::utente);
  if (cifre.empty() || cifre.size() > 9 || numeri == numeri_.end()) return false;
  int numero = 0;
  for (const char c : cifre) {
    if (c < '0' || c > '9') return false;
    numero = numero * 10 + (c - '0');
  }
  // Digits alone are the end of a stand-in cut short, of any number.
  return cifre.size() == n.size() || numero <= numeri->second;
}

const std::string& Sostituti::Di(Genere genere, std::string_view originale) {
  auto [it, nuovo] = indice_.try_emplace({genere, host::Maiuscolo(originale)}, chiave_.size());
  if (nuovo)
    chiave_.push_back({Sostituto(genere, ++numeri_[genere], originale), std::string(originale), genere});
  return chiave_[it->second].sostituto;
}

std::string SostitutoLungo(const std::string& sostituto, std::size_t lunghezza) {
  if (sostituto.size() <= lunghezza) return sostituto + std::string(lunghezza - sostituto.size(), '_');
  std::string numero;
  for (const char c : sostituto)
    if (c >= '0' && c <= '9') numero += c;
  const std::string corto = "u" + numero;
  if (corto.size() <= lunghezza) return corto + std::string(lunghezza - corto.size(), '_');
  return numero.substr(numero.size() - lunghezza);
}

std::vector<Tratto> NomiNelTesto(std::string_view testo) {
  std::vector<Tratto> tratti;
  std::size_t libero = 0;
  for (std::size_t p = testo.find_first_of(":/"); p != std::string_view::npos;
       p = testo.find_first_of(":/", p + 1)) {
    const std::size_t inizio = InizioNome(testo, p);
    if (inizio == std::string_view::npos || inizio < libero) continue;
    const std::size_t n = LunghezzaNome(testo, inizio);
    if (n == 0 || Comune(testo.substr(inizio, n))) continue;
    tratti.push_back({inizio, n});
    libero = inizio + n;
  }
  return tratti;
}

std::string AnonimizzaTesto(std::string_view testo, Sostituti& s, std::int64_t& sostituzioni) {
  const std::vector<Tratto> tratti = NomiNelTesto(testo);
  if (tratti.empty()) return std::string(testo);
  sostituzioni += static_cast<std::int64_t>(tratti.size());
  return Sostituisci(testo, tratti, [&](std::string_view nome) { return s.Di(Genere::utente, nome); });
}

void SostituisciInPosto(std::string& byte, const Tratto& t, Sostituti& s, std::int64_t& sostituzioni) {
  const std::string nome = byte.substr(t.posizione, t.lunghezza);
  byte.replace(t.posizione, t.lunghezza, SostitutoLungo(s.Di(Genere::utente, nome), t.lunghezza));
  ++sostituzioni;
}

void AnonimizzaInPosto(std::string& byte, std::size_t da, std::size_t a, Sostituti& s,
                       std::int64_t& sostituzioni, bool ripasso) {
  const std::string_view parte = std::string_view(byte).substr(da, a - da);
  for (Tratto t : NomiNelTesto(parte)) {
    if (ripasso && s.GiaSostituto(parte.substr(t.posizione, t.lunghezza))) continue;
    t.posizione += da;
    SostituisciInPosto(byte, t, s, sostituzioni);
  }
}

void AnonimizzaCampo(std::string& byte, std::size_t da, std::size_t lunghezza, Sostituti& s,
                     std::int64_t& sostituzioni) {
  if (da >= byte.size()) return;
  const std::string_view campo = std::string_view(byte).substr(da, lunghezza);
  std::vector<Tratto> tratti = NomiNelTesto(campo);
  std::erase_if(tratti,
                [&](const Tratto& t) { return s.GiaSostituto(campo.substr(t.posizione, t.lunghezza)); });
  if (tratti.empty()) return;
  std::string nuovo =
      Sostituisci(campo, tratti, [&](std::string_view nome) { return s.Di(Genere::utente, nome); });
  const char riempimento = campo.back() == '\0' ? '\0' : ' ';
  // A field the stand-ins would overflow keeps every name's place instead: a cut stand-in could read as
  // anything.
  if (nuovo.find_last_not_of(riempimento) >= campo.size()) {
    AnonimizzaInPosto(byte, da, da + campo.size(), s, sostituzioni, true);
    return;
  }
  sostituzioni += static_cast<std::int64_t>(tratti.size());
  nuovo.resize(campo.size(), riempimento);
  byte.replace(da, campo.size(), nuovo);
}

std::string AnonimizzaSotto(std::string_view base, std::string_view nome, Sostituti& s,
                            std::int64_t& sostituzioni, std::string& appoggio, bool inPosto) {
  appoggio.assign(base).append(nome);
  std::vector<Tratto> tratti = NomiNelTesto(appoggio);
  std::erase_if(tratti, [&](const Tratto& t) { return t.posizione < base.size(); });
  if (tratti.empty()) return std::string(nome);
  for (Tratto& t : tratti) t.posizione -= base.size();
  sostituzioni += static_cast<std::int64_t>(tratti.size());
  return Sostituisci(nome, tratti, [&](std::string_view n) {
    return inPosto ? SostitutoLungo(s.Di(Genere::utente, n), n.size()) : s.Di(Genere::utente, n);
  });
}

}  // namespace analysis
