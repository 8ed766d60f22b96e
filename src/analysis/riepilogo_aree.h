// The checks of the findings by area, each a function over the facts of a snapshot, and what they share. The
// table that runs them, in order, is in riepilogo.cpp.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "analysis/fatti.h"
#include "analysis/id_esiti.h"
#include "analysis/riepilogo.h"

namespace analysis {

// A name of the editor list as the checks look it up: upper case, from the list's folder ("\" first).
std::string ChiaveNome(const std::string& nome);

struct Contesto {
  const Fatti& fatti;
  // Of the names the checks asked for (as ChiaveNome gives them), those the editor list holds; empty unless
  // that list was read whole.
  const std::unordered_set<std::string>& nomiTrle;
  // The folder of the sample lists, and the decimal separator of the sizes in the texts.
  const std::string& cartellaProgramma;
  char separatore;
  std::vector<Esito>& esiti;

  // `risposta` is the action written to the user; a failure or a warning gives one.
  void Aggiungi(IdEsito id, Gravita g, std::string titolo, std::vector<Evidenza> evidenze = {},
                std::string azione = {}, std::string risposta = {}) const;
  bool NelTrle(const std::string& nome) const { return nomiTrle.contains(ChiaveNome(nome)); }
};

// The names a check looks for in the editor list, as the facts give them.
using NomiCercati = void (*)(const Fatti&, std::vector<std::string>&);

// The members: lists that could not be read whole, members missing or that the check run could not read, or
// all of them there; the header that cannot be read, or its error flags.
void VerificaMembri(const Contesto& c);
void VerificaFlag(const Contesto& c);

// The editor folder: the script that cannot be read, or its levels against the folder; empty levels;
// tomb4.exe.
void NomiScript(const Fatti& f, std::vector<std::string>& nomi);
void VerificaLivelliScript(const Contesto& c);
void VerificaLivelliVuoti(const Contesto& c);
void NomiTomb4(const Fatti& f, std::vector<std::string>& nomi);
void VerificaTomb4(const Contesto& c);

// Ordelio: its settings and the editor folder they name, its archive and the archive folder, the free space
// and its version, as the header records them.
void VerificaCartellaEditor(const Contesto& c);
void VerificaArchivio(const Contesto& c);
void VerificaSpazio(const Contesto& c);
void VerificaVersioneOrdelio(const Contesto& c);

// backup_trle against the sample lists beside the program.
void VerificaBackup(const Contesto& c);

// Where the installations are (riepilogo_installazione.cpp) and the check run's environment
// (riepilogo_ambiente.cpp).
void VerificaInstallazione(const Contesto& c);
void VerificaAmbiente(const Contesto& c);

}  // namespace analysis
