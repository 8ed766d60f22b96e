// The whole snapshot as one text, for the supporter's files.
#include "analysis/dialog_analisi.h"

namespace analysis {

void mnu_SalvaTutto_Click(Dialog_Analisi& d) {
  (void)d;
}

}  // namespace analysis
