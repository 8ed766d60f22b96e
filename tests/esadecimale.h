// Test data under tests/data, in two notations. A file of bytes (.hex) is hex pairs, blanks ignored, text
// between double quotes taken as it stands, "#" outside quotes starting a comment to the end of the line. A
// table is text, a row a line, its fields separated by tabs (a field keeps its blanks: some are the value),
// lines starting with "#" and blank ones left out; in a field "{hh}" is the byte of that hex value.
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

// A field's text with each "{hh}" made the byte it names.
inline std::string ConByte(std::string campo) {
  const auto cifra = [&](std::size_t i) { return std::isxdigit(static_cast<unsigned char>(campo[i])) != 0; };
  for (std::size_t i = 0; (i = campo.find('{', i)) != std::string::npos; ++i)
    if (i + 3 < campo.size() && campo[i + 3] == '}' && cifra(i + 1) && cifra(i + 2))
      campo.replace(i, 4, 1, static_cast<char>(std::stoi(campo.substr(i + 1, 2), nullptr, 16)));
  return campo;
}

// The other way: each byte that is not printable ASCII, and each "{", as "{hh}".
inline std::string InNotazione(const std::string& byte) {
  static constexpr char kCifre[] = "0123456789abcdef";
  std::string t;
  for (const unsigned char x : byte)
    t += x >= 0x20 && x < 0x7F && x != '{' ? std::string(1, static_cast<char>(x))
                                           : std::string{'{', kCifre[x >> 4], kCifre[x & 15], '}'};
  return t;
}

// The fields of a table row, bytes decoded; a row ending in a tab ends in an empty field.
inline std::vector<std::string> Campi(const std::string& riga) {
  std::vector<std::string> campi;
  for (std::size_t da = 0, a = 0; a != std::string::npos; da = a + 1) {
    a = riga.find('\t', da);
    campi.push_back(ConByte(riga.substr(da, a == std::string::npos ? a : a - da)));
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

// A table in a text file below tests/data.
inline std::vector<std::vector<std::string>> LeggiTabella(const std::string& nome) {
  std::ifstream f(std::string(CHECKORDL_DATI_PROVA) + "/" + nome);
  std::vector<std::vector<std::string>> righe;
  for (std::string riga; std::getline(f, riga);)
    if (!riga.empty() && riga[0] != '#') righe.push_back(Campi(riga));
  return righe;
}

// A table of cases in a file of bytes: each case starts with a line "== " and a table row, its bytes follow.
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
