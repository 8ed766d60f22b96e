// The environment of a check run: one JSON document (UTF-8) that the check run packs behind the eight
// documented members. It records the program that made the snapshot and when, the machine around the two
// installations (host/ambiente.h), what Windows served from the VirtualStore and the members that could not
// be read. A `format` number leads it: a reader takes the fields it knows and passes over any later ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/ambiente.h"

namespace formats {

inline constexpr int kFormatoAmbiente = 1;

// Which installation's folder an executable stands at the top of.
enum class CartellaEseguibile { editor, ordelio };

struct EseguibileAmbiente {
  CartellaEseguibile cartella = CartellaEseguibile::editor;
  host::Eseguibile eseguibile;
};

// A member that existed but could not be read, with the platform's error number (host::Errore).
struct MembroNonLetto {
  std::string percorso;
  int errore = 0;
};

inline constexpr std::size_t kMassimoPercorsiVirtuali = 1000;

// Text fields in Windows-1252, as everywhere in the program; the JSON holds them in UTF-8.
struct Ambiente {
  int formato = kFormatoAmbiente;
  std::string programma;
  std::string versioneProgramma;
  // 32 or 64: the build that made it.
  int bitProgramma = 0;
  // The local date and time of the check run, "YYYY-MM-DDTHH:MM:SS", and the local time's offset from UTC.
  std::string dataLocale;
  int scartoUtcMinuti = 0;
  host::SistemaWindows windows;
  std::vector<EseguibileAmbiente> eseguibili;
  // Packed members whose bytes came from the VirtualStore.
  std::vector<std::string> membriVirtuali;
  // Listed files that came from the VirtualStore: at most kMassimoPercorsiVirtuali paths, all of them
  // counted.
  std::vector<std::string> fileVirtuali;
  std::size_t fileVirtualiTotale = 0;
  std::vector<MembroNonLetto> nonLetti;
};

// The member's bytes: one JSON object, two-space indented, a line feed at the end.
std::string CodificaAmbiente(const Ambiente& a);

// False, with the reason in `motivo`, when the bytes are not such a document: not JSON, a field of the wrong
// type, a value no check run writes (a count beyond the limits above, a date that is no date, a bitness
// other than 32 or 64). Fields it does not know are passed over.
bool DecodificaAmbiente(std::string_view byte, Ambiente* a, std::string* motivo);

// The words of the JSON for the enumerations, which the reports print too.
const char* NomeMacchina(host::MacchinaPe m);
const char* NomeOrigine(host::Origine o);
const char* NomeCartella(CartellaEseguibile c);

}  // namespace formats
