// The comparison as the supporter reads it (the report text) and as a script reads it (JSON).
#include <array>
#include <nlohmann/json.hpp>

#include "analysis/confronto.h"
#include "analysis/testo.h"
#include "host/macchina.h"

namespace analysis {
namespace {

constexpr const char* kVecchioPiuRecente =
    "The old snapshot is the newer one: it was made after the new one.";

// Wide enough for the longest title, so that the counts of the summary stand in one column.
constexpr std::size_t kColonnaConteggi = 30;

// In the order of `TipoDifferenza`.
constexpr std::array<const char*, 4> kTipi = {"added", "removed", "changed", "moved"};

const char* Tipo(TipoDifferenza t) {
  return kTipi[static_cast<std::size_t>(t)];
}

}  // namespace

std::string TestoConfronto(const Confronto& c, std::size_t colonne) {
  std::string t;
  const auto fatto = [](const std::string& data) { return data.empty() ? data : ", made " + data; };
  AggiungiRigaAvvolta(t, "Old snapshot: " + c.vecchio + fatto(c.dataVecchio), 0, 4, colonne);
  AggiungiRigaAvvolta(t, "New snapshot: " + c.nuovo + fatto(c.dataNuovo), 0, 4, colonne);
  AggiungiRiga(t, "SNAPSHOT COMPARISON (old -> new)");
  if (c.vecchioPiuRecente) AggiungiRiga(t, kVecchioPiuRecente);
  if (!c.ambienteNonConfrontato.empty())
    AggiungiRigaAvvolta(t, "Environment not compared: " + c.ambienteNonConfrontato, 0, 4, colonne);
  AggiungiRiga(t, "Differences: " + std::to_string(NumeroDifferenze(c)));
  for (const auto& p : c.parti) {
    std::string riga = "  " + p.titolo;
    riga.resize(std::max(kColonnaConteggi, riga.size() + 1), ' ');
    AggiungiRiga(t, riga + std::to_string(p.differenze.size()));
  }
  for (const auto& p : c.parti) {
    AggiungiRiga(t, "");
    AggiungiRiga(t, p.titolo + " (" + std::to_string(p.differenze.size()) + ")");
    if (p.differenze.empty()) AggiungiRiga(t, "  No differences");
    for (const auto& d : p.differenze) AggiungiRigaAvvolta(t, d.riga, 2, 4, colonne);
  }
  return t;
}

std::string JsonConfronto(const Confronto& c) {
  using Json = nlohmann::ordered_json;
  const auto utf8 = [](const std::string& s) { return host::VersoUtf8(s); };
  Json parti = Json::array();
  for (const auto& p : c.parti) {
    Json differenze = Json::array();
    for (const auto& d : p.differenze) {
      Json o = {{"kind", Tipo(d.tipo)}, {"item", utf8(d.oggetto)}};
      if (d.tipo != TipoDifferenza::Aggiunto) o["old"] = utf8(d.vecchio);
      if (d.tipo != TipoDifferenza::Tolto) o["new"] = utf8(d.nuovo);
      differenze.push_back(std::move(o));
    }
    parti.push_back({{"part", p.chiave},
                     {"title", utf8(p.titolo)},
                     {"count", p.differenze.size()},
                     {"differences", std::move(differenze)}});
  }
  const std::size_t n = NumeroDifferenze(c);
  Json j = {{"old", utf8(c.vecchio)}, {"new", utf8(c.nuovo)}};
  // Each only where it is known, so that two older snapshots compare as they always have.
  if (!c.dataVecchio.empty()) j["old_made"] = c.dataVecchio;
  if (!c.dataNuovo.empty()) j["new_made"] = c.dataNuovo;
  if (!c.dataVecchio.empty() && !c.dataNuovo.empty()) j["old_is_newer"] = c.vecchioPiuRecente;
  if (!c.ambienteNonConfrontato.empty()) j["environment_not_compared"] = utf8(c.ambienteNonConfrontato);
  j["identical"] = n == 0;
  j["differences"] = n;
  j["parts"] = std::move(parti);
  return j.dump(2) + "\n";
}

}  // namespace analysis
