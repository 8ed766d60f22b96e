// A folder's sub-folder as a walk reaches it; reading a folder is each back end's (collegamenti_*.cpp).
#include "host/collegamenti.h"

#include "host/grezzo.h"
#include "host/macchina.h"

namespace host {

CartellaDaLeggere Sottocartella(const CartellaDaLeggere& cartella, const std::string& nome) {
  CartellaDaLeggere c;
  c.percorso = ConBarra(cartella.percorso) + nome;
  if (!cartella.copia.empty()) c.copia = ConBarra(cartella.copia) + nome;
#ifndef _WIN32
  c.interno = (cartella.interno == "/" ? std::string() : cartella.interno) + "/" + VersoUtf8(nome);
#endif
  return c;
}

}  // namespace host
