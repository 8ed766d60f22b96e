// Wine's text registry as it may stand in a prefix someone edited by hand, and the lookups made on it.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "host/accesso_registro.h"
#include "host/macchina.h"
#include "host/registro_file.h"
#include "prefisso_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string_view testo(reinterpret_cast<const char*>(dati), n);
  const auto chiavi = host::AnalizzaTestoRegistro(testo);
  std::size_t totale = 0;
  for (const auto& k : chiavi) {
    std::string normale;
    if (!host::NormalizzaChiave(k.nome, &normale) || normale != k.nome) std::abort();
    for (std::size_t i = 0; i < k.valori.size(); ++i) {
      const auto& v = k.valori[i];
      // Only the default value has no name, and it sorts first.
      if (i > 0 && v.nome.empty()) std::abort();
      totale += v.nome.size() + v.dati.size();
      if (v.tipo == host::kRegLink && host::TestoDaUtf16(v.dati).size() > v.dati.size() / 2) std::abort();
    }
  }
  // Nothing grows past twice the text (a string stored as UTF-16 bytes is the most).
  if (totale > 2 * n + 16) std::abort();

  {
    std::ofstream f(PrefissoFuzz() + "/system.reg", std::ios::binary | std::ios::trunc);
    f.write(testo.data(), static_cast<std::streamsize>(testo.size()));
  }
  std::size_t chiesti = 0;
  for (const auto& k : chiavi) {
    if (++chiesti > 64) break;
    std::string nome, valore;
    const long e = host::LeggiValoreRegistroIndice(k.nome, 0, &nome, &valore);
    if (e == host::kRegOk && !k.collegamento && !k.valori.empty() && nome != k.valori[0].nome &&
        valore.size() > n)
      std::abort();
    if (!k.valori.empty()) host::LeggiValoreRegistroNome(k.nome + "\\x\\..", k.valori.back().nome, &valore);
  }
  long esito = 0;
  host::CartellaSpeciale(38, &esito);
  return 0;
}
