#include "gui/testo_qt.h"

#include <QFile>

#include "host/machine.h"

namespace gui {

QString DaByte(const std::string& cp1252) {
  return QString::fromUtf8(host::VersoUtf8(cp1252));
}

std::string VersoByte(const QString& testo) {
  const QByteArray utf8 = testo.toUtf8();
  return host::DaUtf8(std::string(utf8.constData(), static_cast<std::size_t>(utf8.size())));
}

QString PercorsoHost(const std::string& winPath) {
  int err = 0;
  const std::string host = host::PercorsoHost(winPath, &err);
  return QFile::decodeName(QByteArray(host.data(), static_cast<qsizetype>(host.size())));
}

std::string PercorsoWindows(const QString& hostPath) {
  const QByteArray nome = QFile::encodeName(hostPath);
  return host::PercorsoWindows(std::string(nome.constData(), static_cast<std::size_t>(nome.size())));
}

}  // namespace gui
