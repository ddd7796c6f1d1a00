#include "platform/qt_translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QString>
#include <QTranslator>

namespace mj {

bool InstallChineseQtTexts(QCoreApplication& app, QString* why) {
  const QLocale chinese(QLocale::Chinese, QLocale::China);
  QLocale::setDefault(chinese);
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  // The translator lives as long as the application it serves.
  auto* translator = new QTranslator(&app);
  if (!translator->load(chinese, QStringLiteral("qtbase"), QStringLiteral("_"), folder)) {
    delete translator;
    if (why) *why = folder + QStringLiteral("/qtbase_zh_CN.qm");
    return false;
  }
  QCoreApplication::installTranslator(translator);
  return true;
}

}  // namespace mj
