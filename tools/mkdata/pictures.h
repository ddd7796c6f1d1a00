#pragma once
// The pictures of the program folder, drawn rather than shipped: the splash
// picture jiemian.jpg, the start page's picture startpage.jpg (the same
// without the words and bar of the start-up), the window icon fa.ico and
// the link pointer mmpoint.cur. Needs a QGuiApplication (fonts).

#include <QImage>
#include <QString>

namespace mkdata {

QImage SplashPicture();
QImage StartPagePicture();
QImage IconPicture(int size);
QImage PointerPicture();
// The pointer as a Windows cursor file (.cur) with its hot spot.
QByteArray CursorFile(const QImage& picture, int hotX, int hotY);

// Writes jiemian.jpg, startpage.jpg, fa.ico and mmpoint.cur into folder.
bool WritePictures(const QString& folder, QString* error);

}  // namespace mkdata
