// Tables of cases in files under tests/data. Bytes are written there in hex: two digits a byte, blanks
// ignored, text between double quotes taken as it stands, "#" outside quotes starting a comment to the end of
// the line.
#pragma once

#include <algorithm>
#include <cctype>
#include <fstream>
#include <string>
#include <vector>

inline void AccodaEsadecimale(const std::string& riga, std::string& byte, std::string& cifre) {
  bool testo = false;
  for (const char c : riga) {
    if (c == '"') {
      testo = !testo;
    } else if (testo) {
      byte += c;
    } else if (c == '#') {
      return;
    } else if (std::isxdigit(static_cast<unsigned char>(c)) && (cifre += c).size() == 2) {
      byte += static_cast<char>(std::stoi(cifre, nullptr, 16));
      cifre.clear();
    }
  }
}

inline std::string LeggiEsadecimale(const std::string& percorso) {
  std::ifstream f(percorso);
  std::string riga, byte, cifre;
  while (std::getline(f, riga)) AccodaEsadecimale(riga, byte, cifre);
  return byte;
}

// The fields of a table row "field | field | ...", blanks around each taken off.
inline std::vector<std::string> Campi(const std::string& riga) {
  std::vector<std::string> campi;
  for (std::size_t da = 0, a = 0; a != std::string::npos; da = a + 1) {
    a = riga.find('|', da);
    std::string campo = riga.substr(da, a == std::string::npos ? a : a - da);
    campo.erase(0, campo.find_first_not_of(' '));
    campo.erase(campo.find_last_not_of(' ') + 1);
    campi.push_back(campo);
  }
  return campi;
}

// The widest line of a report text (lines ended by CR LF), in characters.
inline std::size_t RigaPiuLarga(const std::string& testo) {
  std::size_t massima = 0;
  for (std::size_t i = 0; i < testo.size();) {
    std::size_t fine = testo.find("\r\n", i);
    if (fine == std::string::npos) fine = testo.size();
    massima = std::max(massima, fine - i);
    i = fine + 2;
  }
  return massima;
}

// A text without its blanks and line ends: what wrapping must leave as it was.
inline std::string SenzaSpazi(std::string testo) {
  std::erase_if(testo, [](char c) { return c == ' ' || c == '\r' || c == '\n'; });
  return testo;
}

// A table in a text file below tests/data: a row a line, lines starting with "#" and blank ones left out.
inline std::vector<std::vector<std::string>> LeggiTabella(const std::string& nome) {
  std::ifstream f(std::string(CHECKORDL_DATI_PROVA) + "/" + nome);
  std::vector<std::vector<std::string>> righe;
  for (std::string riga; std::getline(f, riga);)
    if (!riga.empty() && riga[0] != '#') righe.push_back(Campi(riga));
  return righe;
}

// A table of cases whose bytes are written in hex: each case starts with a line "== field | field | ...",
// its bytes follow.
struct CasoEsadecimale {
  std::vector<std::string> campi;
  std::string byte;
};

inline std::vector<CasoEsadecimale> LeggiCasi(const std::string& nome) {
  std::ifstream f(std::string(CHECKORDL_DATI_PROVA) + "/" + nome);
  std::vector<CasoEsadecimale> casi;
  std::string cifre;
  for (std::string riga; std::getline(f, riga);) {
    if (riga.starts_with("== "))
      casi.push_back({Campi(riga.substr(3)), ""});
    else if (!casi.empty())
      AccodaEsadecimale(riga, casi.back().byte, cifre);
  }
  return casi;
}
