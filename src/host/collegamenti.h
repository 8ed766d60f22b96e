// Reading a whole folder for a walk of its tree: every entry with its attributes, whether it is a link, and
// its size, in one pass, as one find on the platform gives them. A walk must not enter a link to a folder,
// or a link to a parent would make it endless; and asking for each entry's attributes and size again by
// its full path costs a walk of a large tree several times the time of reading it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

struct VoceCartella {
  std::string nome;
  int attributi = 0;
  // A symbolic link or a junction; its attributes and size are those of its target.
  bool collegamento = false;
  // 0 for a folder.
  std::int64_t dimensione = 0;
};

// A folder as a walk reaches it: its Windows path (without a closing "\"; a root as "C:") and what the back
// end needs to find it again without resolving the path once more.
struct CartellaDaLeggere {
  std::string percorso;
  std::string interno;
  // Its VirtualStore copy where the machine virtualizes it, whose entries the reading merges in.
  std::string copia;
};

CartellaDaLeggere ApriCartella(const std::string& winFolder);
// A sub-folder of `cartella` by the name that LeggiCartella gave for it.
CartellaDaLeggere Sottocartella(const CartellaDaLeggere& cartella, const std::string& nome);

// The entries that `mask` admits (hidden 2, system 4, folders 16 on top of plain and read-only files),
// "." and ".." left out, in the platform's order. An entry that cannot be read is left out too. False, with
// nothing listed, when the folder cannot be read.
bool LeggiCartella(const CartellaDaLeggere& cartella, int mask, std::vector<VoceCartella>& voci);

}  // namespace host
