#pragma once
// Qt's own Chinese texts: the buttons, labels and context menus of the
// standard dialogs (files, fonts, colours) and of text boxes come from Qt,
// which speaks English unless its translation is loaded. Both the program
// and the test programs call this right after making their QApplication.

class QCoreApplication;
class QString;

namespace mj {

// Loads qtbase_zh_CN from Qt's translation folder (Debian package
// qt6-translations-l10n), installs it on `app` and makes Chinese the
// default locale. False when the translation file cannot be loaded; `why`
// then names the file that is missing.
bool InstallChineseQtTexts(QCoreApplication& app, QString* why = nullptr);

}  // namespace mj
