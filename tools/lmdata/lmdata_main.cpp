// lmdata: the data package. It carries the program folder's data and
// unpacks it into the folder its own executable stands in. An existing file
// is never replaced, so a folder in use keeps its records and settings;
// missing folders and files are made. One line says what was done.

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

#include "pack.h"

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QString root = QCoreApplication::applicationDirPath();
  QFile resource(QStringLiteral(":/demo.pack"));
  QList<mjpack::Entry> entries;
  if (!resource.open(QIODevice::ReadOnly) || !mjpack::Unpack(resource.readAll(), &entries)) {
    std::fprintf(stderr, "明镜学习伴侣数据包已损坏，无法解压。\n");
    return 1;
  }
  const mjpack::UnpackReport r = mjpack::UnpackInto(entries, root);
  if (!r.failedPath.isEmpty()) {
    std::fprintf(stderr, "明镜学习伴侣数据包解压失败：%s 无法写入（已写入 %d 个文件）。\n",
                 qUtf8Printable(r.failedPath), r.filesWritten);
    return 1;
  }
  std::printf("明镜学习伴侣数据包已解压到 %s：新写入 %d 个文件，新建 %d 个文件夹，保留已有文件 %d 个。\n",
              qUtf8Printable(root), r.filesWritten, r.dirsMade, r.filesKept);
  return 0;
}
