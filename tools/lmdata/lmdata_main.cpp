// lmdata: the data package. It carries the program folder's data and
// unpacks it into the folder its own executable stands in, or into the
// folder named as its argument (the installed program fills the per-user
// folder that way: lmdata --console DIR). An existing file is never
// replaced, so a folder in use keeps its records and settings; missing
// folders and files are made. One line on the terminal says what was done.
//
// The program starts it when its folder has no data yet, and ends. So that
// the user sees what happens, the data package then shows a small window
// with its progress; at the end it says that the data is ready and starts
// the program again (when the program stands beside it), or says that the
// program can now be started. Without a display, or with --console (the
// scripts), it works on the terminal alone.

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <cstdio>
#include <memory>

#include "pack.h"

namespace {

const QString kProgram = QStringLiteral("mingjing");
constexpr int kRestartDelayMs = 2000;

bool WantsWindow(int argc, char** argv) {
  for (int i = 1; i < argc; ++i)
    if (QByteArray(argv[i]) == "--console") return false;
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// The small window: a line of text, the progress bar, and a button to close
// it when the work is over without a restart.
struct UnpackWindow {
  QWidget window;
  QLabel* text = nullptr;
  QProgressBar* bar = nullptr;
  QPushButton* close = nullptr;

  UnpackWindow() {
    window.setWindowTitle(QStringLiteral("明镜学习伴侣数据包"));
    auto* v = new QVBoxLayout(&window);
    text = new QLabel(QStringLiteral("正在解压明镜学习伴侣的数据，请稍候……"));
    text->setWordWrap(true);
    text->setMinimumWidth(360);
    v->addWidget(text);
    bar = new QProgressBar;
    v->addWidget(bar);
    close = new QPushButton(QStringLiteral("关闭"));
    close->setVisible(false);
    v->addWidget(close, 0, Qt::AlignRight);
    QObject::connect(close, &QPushButton::clicked, &window, &QWidget::close);
    window.show();
  }
  // The last word: the window stays until the user closes it.
  void finish(const QString& message) {
    text->setText(message);
    close->setVisible(true);
    close->setDefault(true);
    close->setFocus();
  }
};

}  // namespace

int main(int argc, char** argv) {
  const bool windowed = WantsWindow(argc, argv);
  std::unique_ptr<QCoreApplication> app =
      windowed ? std::make_unique<QApplication>(argc, argv) : std::make_unique<QCoreApplication>(argc, argv);
  // The folder to fill: the one named as an argument (the installed
  // program names the per-user folder), else the package's own folder.
  const QString exeDir = QCoreApplication::applicationDirPath();
  QString root = exeDir;
  bool namedFolder = false;
  for (const QString& a : QCoreApplication::arguments().mid(1)) {
    if (a == QStringLiteral("--console")) continue;
    root = a;
    namedFolder = true;
  }
  std::unique_ptr<UnpackWindow> w;
  if (windowed) {
    w = std::make_unique<UnpackWindow>();
    QCoreApplication::processEvents();
  }
  // Says a failure on the terminal and in the window, which stays open.
  auto fail = [&](const QString& message) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    if (!w) return 1;
    w->finish(message);
    w->text->setStyleSheet(QStringLiteral("color: #b00000"));
    QCoreApplication::exec();
    return 1;
  };

  QFile resource(QStringLiteral(":/demo.pack"));
  QList<mjpack::Entry> entries;
  if (!resource.open(QIODevice::ReadOnly) || !mjpack::Unpack(resource.readAll(), &entries))
    return fail(QStringLiteral("明镜学习伴侣数据包已损坏，无法解压。"));
  const mjpack::UnpackReport r = mjpack::UnpackInto(entries, root, [&](int done, int total) {
    if (!w) return;
    w->bar->setRange(0, total);
    w->bar->setValue(done);
    QCoreApplication::processEvents();
  });
  if (!r.failedPath.isEmpty())
    return fail(QStringLiteral("明镜学习伴侣数据包解压失败：%1 无法写入（已写入 %2 个文件）。")
                    .arg(r.failedPath)
                    .arg(r.filesWritten));
  std::printf("明镜学习伴侣数据包已解压到 %s：新写入 %d 个文件，新建 %d 个文件夹，保留已有文件 %d 个。\n",
              qUtf8Printable(root), r.filesWritten, r.dirsMade, r.filesKept);
  std::fflush(stdout);
  if (!w) return 0;

  const QString ready = QStringLiteral("数据已准备好（新写入 %1 个文件）。").arg(r.filesWritten);
  const QString program = exeDir + u'/' + kProgram;
  if (!QFileInfo(program).isExecutable()) {
    w->finish(ready + QStringLiteral("\n现在可以启动明镜学习伴侣了。"));
    return QCoreApplication::exec();
  }
  // Says so first, then starts the program again and goes.
  w->text->setText(ready + QStringLiteral("\n明镜学习伴侣马上重新启动……"));
  int code = 0;
  QTimer::singleShot(kRestartDelayMs, &w->window, [&] {
    const QStringList again = namedFolder ? QStringList{QStringLiteral("--folder"), root} : QStringList{};
    if (QProcess::startDetached(program, again, root)) {
      QCoreApplication::quit();
      return;
    }
    code = 1;
    w->finish(ready + QStringLiteral("\n但无法启动 %1，请手动启动明镜学习伴侣。").arg(program));
  });
  const int rc = QCoreApplication::exec();
  return code != 0 ? code : rc;
}
