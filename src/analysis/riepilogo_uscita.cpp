// The findings as the supporter reads them: text laid out for the report area, and JSON for a script.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "analysis/riepilogo.h"
#include "analysis/testo.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace analysis {
namespace {

// Where the titles begin, behind the severity and the longest identifier.
constexpr std::size_t kColonnaId = 27;

std::string NomeGravita(Gravita g) {
  return std::string(kNomiGravita[static_cast<std::size_t>(g)]);
}

std::string TestoEvidenza(const Evidenza& p) {
  if (const auto* s = std::get_if<std::string>(&p.Valore)) return p.Nome + ": " + *s;
  return p.Nome + ": " + std::to_string(std::get<std::int64_t>(p.Valore));
}

}  // namespace

std::string TestoRiepilogo(const std::vector<Esito>& esiti, std::size_t colonne) {
  std::int64_t conta[3] = {};
  for (const auto& e : esiti) ++conta[static_cast<int>(e.Livello)];
  std::string t;
  AggiungiRiga(t, "Findings: " + std::to_string(conta[0]) + " fail, " + std::to_string(conta[1]) + " warn, " +
                      std::to_string(conta[2]) + " pass");
  const std::size_t rientro = 6 + kColonnaId;
  for (const Esito& e : esiti) {
    std::string riga = host::Maiuscolo(NomeGravita(e.Livello)) + "  " + e.Id;
    riga.append(riga.size() < rientro ? rientro - riga.size() : 1, ' ');
    AggiungiRigaAvvolta(t, riga + e.Titolo, 0, rientro, colonne);
    // A rule's finding says where it came from, a pass too: the supporter who doubts it knows what to open.
    if (!e.Regola.empty()) AggiungiRigaAvvolta(t, "rule: " + e.Regola, rientro, rientro, colonne);
    if (e.Livello == Gravita::pass) continue;
    std::string evidenze;
    for (const auto& p : e.Evidenze) evidenze += (evidenze.empty() ? "" : "; ") + TestoEvidenza(p);
    if (!evidenze.empty()) AggiungiRigaAvvolta(t, evidenze, rientro, rientro, colonne);
    if (!e.Azione.empty()) AggiungiRigaAvvolta(t, "-> " + e.Azione, rientro, rientro + 3, colonne);
  }
  return t;
}

std::string TestoRiepilogo(const RiepilogoSnapshot& r, std::size_t colonne) {
  // Only where the snapshot says when it was made: an older snapshot's findings read as they always have.
  std::string t;
  if (!r.Data.empty()) AggiungiRiga(t, "Snapshot made: " + r.Data);
  return t + TestoRiepilogo(r.Esiti, colonne);
}

std::string JsonRiepilogo(const std::string& snapshot, const RiepilogoSnapshot& r) {
  using nlohmann::ordered_json;
  const auto utf8 = [](const std::string& s) { return host::VersoUtf8(s); };
  ordered_json j;
  j["snapshot"] = utf8(snapshot);
  if (!r.Data.empty()) j["made"] = r.Data;
  if (!r.Errore.empty()) j["error"] = r.Errore;
  ordered_json membri = ordered_json::array();
  const std::size_t n = std::min(r.Contenuto.Nomi.size(), r.Contenuto.Dimensioni.size());
  for (std::size_t i = 0; i < n; ++i)
    membri.push_back({{"name", utf8(r.Contenuto.Nomi[i])}, {"size", r.Contenuto.Dimensioni[i]}});
  j["members"] = std::move(membri);
  ordered_json esiti = ordered_json::array();
  for (const auto& e : r.Esiti) {
    ordered_json evidenze = ordered_json::object();
    for (const auto& p : e.Evidenze) {
      if (const auto* s = std::get_if<std::string>(&p.Valore))
        evidenze[utf8(p.Nome)] = utf8(*s);
      else
        evidenze[utf8(p.Nome)] = std::get<std::int64_t>(p.Valore);
    }
    ordered_json esito = {{"id", e.Id},
                          {"severity", NomeGravita(e.Livello)},
                          {"title", utf8(e.Titolo)},
                          {"evidence", std::move(evidenze)},
                          {"action", utf8(e.Azione)}};
    if (!e.Risposta.empty()) esito["answer"] = utf8(e.Risposta);
    if (!e.Regola.empty()) esito["rule"] = utf8(e.Regola);
    esiti.push_back(std::move(esito));
  }
  j["findings"] = std::move(esiti);
  return j.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace analysis
