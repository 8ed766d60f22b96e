// The environment report: the machine around the two installations as the check run recorded it in the
// snapshot's ambiente.json, for telling why a program does not start there.
#pragma once

#include <optional>
#include <string>

#include "formats/ambiente.h"
#include "support/interfacce.h"

namespace analysis {

// Its lines open with "Made:", "Program:", "Windows:", "Runs as:" and "Wine:", in that order, which differ
// between the builds that make a snapshot by nature; the machine's settings, each executable and its
// imports, the VirtualStore and the members that were not read follow.
std::string TestoAmbiente(const formats::Ambiente& a);

// The report of `cartellaDati`\ambiente.json. A snapshot without it, or with one that cannot be read, gives a
// critical message that says so and no text: the window then leaves its text and its marks alone.
std::optional<std::string> ProspettoAmbiente(const std::string& cartellaDati, support::Messaggi& messaggi);

inline constexpr const char* kAmbienteAssente =
    "The snapshot holds no ambiente.json: an older program made it, which did not record the environment";

}  // namespace analysis
