// The answer to paste for the user, on the clipboard.
#include "analysis/dialog_analisi.h"

namespace analysis {

void mnu_CopiaRisposta_Click(Dialog_Analisi& d) {
  (void)d;
}

}  // namespace analysis
