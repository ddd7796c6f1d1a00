#include "support/window_checks.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTemporaryFile>
#include <QToolButton>
#include <QWidget>
#include <gtest/gtest.h>

#include "support/test_env.h"

namespace mj::test {

namespace {

QString sizeText(QSize s) { return QStringLiteral("%1x%2").arg(s.width()).arg(s.height()); }

QString rectText(const QRect& r) {
  return QStringLiteral("(%1,%2 %3x%4)").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

QString nameOf(const QWidget* w) {
  QString n = QString::fromLatin1(w->metaObject()->className());
  if (!w->objectName().isEmpty()) n += QStringLiteral(" '") + w->objectName() + u'\'';
  if (auto* l = qobject_cast<const QLabel*>(w); l && !l->text().isEmpty()) n += QStringLiteral(" «") + l->text().left(30) + u'»';
  if (auto* b = qobject_cast<const QAbstractButton*>(w); b && !b->text().isEmpty())
    n += QStringLiteral(" «") + b->text().left(30) + u'»';
  return n;
}

// The text a button shows: "&" marks the shortcut letter, "&&" is one "&".
QString shownButtonText(QString text) {
  text.replace(QStringLiteral("&&"), QStringLiteral("\x01"));
  text.remove(u'&');
  text.replace(u'\x01', u'&');
  return text;
}

// True when `w` sits directly in the viewport of a scroll area: such
// children are meant to reach beyond what is shown, and scroll.
bool inScrollViewport(const QWidget* w) {
  const QWidget* p = w->parentWidget();
  if (!p) return false;
  auto* area = qobject_cast<const QAbstractScrollArea*>(p->parentWidget());
  return area && area->viewport() == p;
}

}  // namespace

std::unique_ptr<QTemporaryFile> UseTestScreens() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!platform.isEmpty() && platform != "offscreen") return nullptr;
  auto file = std::make_unique<QTemporaryFile>(QDir::tempPath() + QStringLiteral("/mj-test-screens-XXXXXX.json"));
  if (!file->open()) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return nullptr;
  }
  // The platform adds the screens in the order of their names, and the
  // first one added is the primary one; logical 96 dpi as on most desktops.
  const QString json = QStringLiteral(
                           "{\"windowFrameMargins\": true, \"screens\": ["
                           "{\"name\": \"1-small\", \"x\": 0, \"y\": 0, \"width\": %1, \"height\": %2, \"logicalDpi\": 96},"
                           "{\"name\": \"2-large\", \"x\": %1, \"y\": 0, \"width\": %3, \"height\": %4, \"logicalDpi\": 96}]}")
                           .arg(kSmallScreen.width())
                           .arg(kSmallScreen.height())
                           .arg(kLargeScreen.width())
                           .arg(kLargeScreen.height());
  file->write(json.toUtf8());
  file->flush();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file->fileName()));
  return file;
}

QScreen* TestScreen(QSize size) {
  for (QScreen* s : QGuiApplication::screens())
    if (s->geometry().size() == size) return s;
  return nullptr;
}

void SettleLayouts() {
  for (int i = 0; i < 3; ++i) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::processEvents();
  }
}

void ShowOnScreen(QWidget* window, QScreen* screen) {
  if (!window || !screen) return;
  const Qt::WindowStates states = window->windowState();
  QScreen* from = window->screen();
  // The same place relative to the new screen, as a window the user moved
  // there would have.
  const QPoint offset = from ? window->pos() - from->geometry().topLeft() : QPoint();
  window->hide();
  window->setScreen(screen);
  window->move(screen->geometry().topLeft() + offset);
  if (states & Qt::WindowMaximized)
    window->showMaximized();
  else
    window->show();
  SettleLayouts();
}

bool ElidedText(const QWidget* w) {
  if (auto* l = qobject_cast<const QLabel*>(w)) {
    if (l->text().isEmpty()) return false;
    if (l->wordWrap()) return l->heightForWidth(l->width()) > l->height();
    const QSize need = l->sizeHint();
    return need.width() > l->width() || need.height() > l->height() + 2;
  }
  if (qobject_cast<const QCheckBox*>(w) || qobject_cast<const QRadioButton*>(w)) {
    auto* b = static_cast<const QAbstractButton*>(w);
    if (b->text().isEmpty()) return false;
    return b->sizeHint().width() > b->width();
  }
  if (auto* b = qobject_cast<const QPushButton*>(w)) {
    if (b->text().isEmpty()) return false;
    const QFontMetrics fm(b->font());
    const QStringList lines = shownButtonText(b->text()).split(u'\n');
    int widest = 0;
    for (const QString& line : lines) widest = qMax(widest, fm.horizontalAdvance(line));
    if (!b->icon().isNull()) widest += b->iconSize().width() + 4;
    // A few pixels of frame on each side.
    return widest + 8 > b->width() || static_cast<int>(lines.size()) * fm.height() + 4 > b->height();
  }
  return false;
}

QStringList LayoutProblems(const QWidget* window) {
  QStringList problems;
  if (!window) return {QStringLiteral("no window")};
  if (const QScreen* screen = window->screen()) {
    const QRect avail = screen->availableGeometry();
    const QRect frame = window->frameGeometry();
    if (!avail.contains(frame))
      problems << QStringLiteral("%1: the window with its frame %2 does not lie inside the screen's available area %3")
                      .arg(nameOf(window), rectText(frame), rectText(avail));
    const QSize least = window->minimumSize().expandedTo(window->minimumSizeHint());
    if (least.width() > avail.width() || least.height() > avail.height())
      problems << QStringLiteral("%1: its minimum size %2 is larger than the screen's available area %3")
                      .arg(nameOf(window), sizeText(least), sizeText(avail.size()));
  }
  const QList<QWidget*> all = window->findChildren<QWidget*>();
  for (const QWidget* w : all) {
    if (w->isWindow() || !w->isVisible()) continue;
    // Widgets inside another window (a child window's own children) belong
    // to that window's check.
    if (w->window() != window) continue;
    const QWidget* parent = w->parentWidget();
    if (parent && !inScrollViewport(w) && !w->geometry().isEmpty() && !parent->rect().contains(w->geometry()))
      problems << QStringLiteral("%1 %2 lies outside its parent %3 (%4)")
                      .arg(nameOf(w), rectText(w->geometry()), nameOf(parent), sizeText(parent->size()));
    if (ElidedText(w))
      problems << QStringLiteral("%1 shows only part of its text: %2 needs %3")
                      .arg(nameOf(w), sizeText(w->size()), sizeText(w->sizeHint()));
    if (auto* bar = qobject_cast<const QMenuBar*>(w)) {
      QStringList hidden;
      for (QAction* a : bar->actions())
        if (a->isVisible() && !a->isSeparator() && !bar->rect().contains(bar->actionGeometry(a))) hidden << a->text();
      auto* ext = bar->findChild<QToolButton*>(QStringLiteral("qt_menubar_ext_button"));
      if ((ext && ext->isVisible()) || !hidden.isEmpty())
        problems << QStringLiteral("%1 (%2 wide) hides entries behind »: %3")
                        .arg(nameOf(bar), QString::number(bar->width()), hidden.join(u' '));
    }
  }
  return problems;
}

QString SaveScreenshot(QWidget* window, const QString& name) {
  const QString dir = OutputDir() + QStringLiteral("/screenshots");
  QDir().mkpath(dir);
  const QString path = dir + u'/' + name + QStringLiteral(".png");
  if (!window->grab().save(path, "PNG")) ADD_FAILURE() << "could not save the screenshot " << path.toStdString();
  return path;
}

void CheckOnScreen(QWidget* window, QSize screenSize, const QString& name) {
  QScreen* screen = TestScreen(screenSize);
  if (!screen) {
    ADD_FAILURE() << "no test screen of " << sizeText(screenSize).toStdString()
                  << " (the test programs set them up on the offscreen platform)";
    return;
  }
  ShowOnScreen(window, screen);
  SaveScreenshot(window, name + u'-' + sizeText(screenSize));
  for (const QString& p : LayoutProblems(window))
    ADD_FAILURE() << name.toStdString() << " on " << sizeText(screenSize).toStdString() << ": " << p.toStdString();
}

void CheckOnScreens(QWidget* window, const QString& name) {
  CheckOnScreen(window, kSmallScreen, name);
  CheckOnScreen(window, kLargeScreen, name);
}

}  // namespace mj::test
