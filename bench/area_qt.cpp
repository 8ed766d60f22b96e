// The Qt analysis window, offscreen, on the snapshot given: see bench/area_misura.h.
// usage: checkordl_bench_area SNAPSHOT WORD   (with QT_QPA_PLATFORM=offscreen)
#include <QApplication>
#include <QFile>

#include "bench/area_misura.h"
#include "gui/finestra_analisi.h"

namespace {

bench::Memoria Memoria() {
  QFile f(QStringLiteral("/proc/self/status"));
  bench::Memoria m;
  if (!f.open(QIODevice::ReadOnly)) return m;
  for (const QByteArray& riga : f.readAll().split('\n')) {
    const double kb = riga.mid(6).trimmed().split(' ').value(0).toDouble();
    if (riga.startsWith("VmRSS:")) m.residente = kb * 1024;
    if (riga.startsWith("VmHWM:")) m.picco = kb * 1024;
  }
  return m;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (!bench::Argomenti(argc, "checkordl_bench_area")) return 2;
  bench::Servizi s;
  gui::FinestraAnalisi f(nullptr, s.messaggi, s.file, s.appunti);
  if (!analysis::ApriFinestra(f.Modello(), argv[1])) return 1;
  f.show();
  bench::Misura(
      "Qt", f.Modello(), argv[2], [&] { f.Voce(analysis::Voce::mnu_ShowTRLE_Dir)->trigger(); },
      [&] {
        QApplication::processEvents();
        f.Text_Out->viewport()->repaint();
      },
      Memoria);
  return 0;
}
