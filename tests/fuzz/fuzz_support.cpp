#include <QCoreApplication>
#include <QTemporaryDir>

#include "fuzz_target.h"
#include "platform/textfile.h"

namespace mj::fuzz {

std::map<QString, Target>& Targets() {
  static std::map<QString, Target> targets;
  return targets;
}

QString GbkText(const uint8_t* data, size_t size) {
  return FromGbk(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
}

QString WorkFolder() {
  static QTemporaryDir dir;
  return dir.path();
}

}  // namespace mj::fuzz
