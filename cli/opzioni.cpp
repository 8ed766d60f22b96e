#include <algorithm>

#include "verbi.h"

namespace cli {

int SenzaOpzioni(const Argomenti& args, const std::vector<std::string>& note, Argomenti& opzioni,
                 Argomenti& resto) {
  for (const auto& a : args) {
    if (!a.starts_with("--"))
      resto.push_back(a);
    else if (std::find(note.begin(), note.end(), a) != note.end())
      opzioni.push_back(a);
    else
      return Uso("unknown option: " + a);
  }
  return 0;
}

}  // namespace cli
