#include "gui/testo_qt.h"

#include <QFile>
#include <array>

#include "host/macchina.h"

namespace gui {

const std::array<char16_t, 256>& UnitaDeiByte() {
  // Every byte is one code point of the Basic Multilingual Plane: the machine layer's conversion, once.
  static const std::array<char16_t, 256> unita = [] {
    std::array<char16_t, 256> u{};
    for (int b = 0; b < 256; ++b) {
      const QString q = QString::fromUtf8(host::VersoUtf8(std::string(1, static_cast<char>(b))));
      u[static_cast<std::size_t>(b)] = q.size() == 1 ? q[0].unicode() : u'?';
    }
    return u;
  }();
  return unita;
}

QString DaByte(const std::string& cp1252) {
  // Straight into the QString's one buffer: a report of many megabytes takes no UTF-8 copy on its way.
  const auto& unita = UnitaDeiByte();
  QString q(static_cast<qsizetype>(cp1252.size()), Qt::Uninitialized);
  char16_t* p = reinterpret_cast<char16_t*>(q.data());
  for (const char c : cp1252) *p++ = unita[static_cast<unsigned char>(c)];
  return q;
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
