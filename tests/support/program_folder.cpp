#include "support/program_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include "bank/tables.h"
#include "platform/dbftable.h"

namespace mj::test {

void WriteIcon(const QString& path) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QImage img(32, 32, QImage::Format_ARGB32);
  img.fill(QColor(0x20, 0x60, 0xA0));
  img.save(path, "ICO");
}

namespace {

// A 300 x 200 picture of one colour.
void WriteJpeg(const QString& path) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QImage img(300, 200, QImage::Format_RGB32);
  img.fill(QColor(0x30, 0x50, 0x90));
  img.save(path, "JPG");
}

}  // namespace

void MakeProgramFolder(const TestEnv& t, const FolderParts& parts) {
  if (parts.yibanti) t.mkdir(u"\\yibanti"_qs);
  if (parts.iniFolder || parts.icon || parts.splash) {
    t.mkdir(u"\\ini"_qs);
    NoSupportSite(t);
  }
  if (parts.icon) WriteIcon(t.path(u"\\ini\\fa.ico"_qs));
  if (parts.rootIcon) WriteIcon(t.path(u"\\fa.ico"_qs));
  if (parts.splash) WriteJpeg(t.path(u"\\ini\\jiemian.jpg"_qs));
  if (parts.readme) t.mkdir(u"\\readme"_qs);
  if (parts.formatDocs) t.mkdir(u"\\法律文书"_qs);
  if (parts.tables) {
    t.mkdir(u"\\dbf"_qs);
    DbfTable::create(t.path(u"\\dbf\\33.mmd"_qs), tables::LawNameFields());
    DbfTable::create(t.path(u"\\dbf\\items.mmd"_qs), tables::ItemFields());
    DbfTable::create(t.path(u"\\dbf\\33ok.mmd"_qs), tables::DirectoryFields());
    DbfTable::create(t.path(u"\\dbf\\csitems.mmd"_qs), tables::ItemFields());
    DbfTable::create(t.path(u"\\dbf\\csface.mmd"_qs), tables::DirectoryFields());
  }
  if (parts.dataPackage) {
    const QString p = t.path(u"\\lmdata"_qs);
    QFile f(p);
    f.open(QIODevice::WriteOnly);
    f.write("#!/bin/sh\nexit 0\n");
    f.close();
    f.setPermissions(f.permissions() | QFile::ExeOwner);
  }
}

}  // namespace mj::test
