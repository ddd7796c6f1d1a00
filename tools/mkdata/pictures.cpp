#include "pictures.h"

#include <QBuffer>
#include <QFont>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QtEndian>
#include <utility>

#include "platform/textfile.h"

namespace mkdata {

namespace {

const QString kFontFamily = QStringLiteral("Noto Sans CJK SC");
const QString kSerifFamily = QStringLiteral("Noto Serif CJK SC");

QFont Font(const QString& family, int pixels, bool bold) {
  QFont f(family);
  f.setPixelSize(pixels);
  f.setBold(bold);
  f.setStyleStrategy(QFont::PreferAntialias);
  return f;
}

// A round mirror with a soft highlight: the program's emblem.
void DrawMirror(QPainter& p, const QPointF& centre, qreal radius) {
  QRadialGradient glass(centre - QPointF(radius * 0.35, radius * 0.35), radius * 1.3);
  glass.setColorAt(0.0, QColor(250, 252, 255));
  glass.setColorAt(0.45, QColor(176, 208, 232));
  glass.setColorAt(1.0, QColor(58, 104, 150));
  p.setPen(QPen(QColor(214, 170, 72), radius * 0.14));
  p.setBrush(glass);
  p.drawEllipse(centre, radius, radius);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(255, 255, 255, 110));
  QPainterPath shine;
  shine.addEllipse(centre - QPointF(radius * 0.62, radius * 0.62), radius * 0.55, radius * 0.28);
  p.drawPath(shine);
}

}  // namespace

namespace {

// The picture of the splash and of the start page: the same, except that
// the splash has the words of the start-up and the frame of its bar, which
// a start page that stays all session must not show.
QImage FrontPicture(bool startUp) {
  const int w = 520, h = 340;
  QImage img(w, h, QImage::Format_RGB32);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.setRenderHint(QPainter::TextAntialiasing);

  QLinearGradient sky(0, 0, 0, h);
  sky.setColorAt(0.0, QColor(16, 42, 82));
  sky.setColorAt(0.7, QColor(28, 86, 128));
  sky.setColorAt(1.0, QColor(20, 60, 96));
  p.fillRect(img.rect(), sky);

  // Faint lines of text in the background: the sea of questions.
  p.setFont(Font(kFontFamily, 13, false));
  p.setPen(QColor(255, 255, 255, 28));
  const QString sea = QStringLiteral("第一条 第二条 第三条 A．B．C．D． 答案 参见 ");
  for (int y = 18; y < h; y += 22) p.drawText(QPointF(-((y * 7) % 90), y), sea + sea + sea);

  DrawMirror(p, QPointF(112, 118), 62);
  p.setFont(Font(kSerifFamily, 54, true));
  p.setPen(QColor(24, 56, 96));
  p.drawText(QRectF(50, 56, 124, 124), Qt::AlignCenter, QStringLiteral("法"));

  p.setPen(QColor(255, 236, 170));
  p.setFont(Font(kSerifFamily, 44, true));
  p.drawText(QPointF(196, 112), QStringLiteral("明镜学习伴侣"));
  p.setFont(Font(kFontFamily, 22, true));
  p.setPen(QColor(230, 240, 250));
  p.drawText(QPointF(200, 148), QStringLiteral("3.10 版"));
  p.setFont(Font(kFontFamily, 16, false));
  p.drawText(QRectF(40, 196, w - 80, 26), Qt::AlignHCenter | Qt::AlignVCenter,
             QStringLiteral("科学、高效、智能化的题海战术"));
  p.setFont(Font(kFontFamily, 13, false));
  p.setPen(QColor(200, 220, 236));
  p.drawText(QRectF(40, 222, w - 80, 22), Qt::AlignHCenter | Qt::AlignVCenter, QStringLiteral("司法统考学习助手"));

  // The stamp that marks the shipped data as demonstration data.
  p.save();
  p.translate(w - 84, 36);
  p.rotate(-10);
  p.setPen(QPen(QColor(214, 48, 40), 3));
  p.setBrush(QColor(214, 48, 40, 36));
  p.drawRoundedRect(QRectF(-66, -22, 132, 44), 8, 8);
  p.setFont(Font(kFontFamily, 24, true));
  p.setPen(QColor(236, 70, 60));
  p.drawText(QRectF(-66, -22, 132, 44), Qt::AlignCenter, QStringLiteral("示例数据"));
  p.restore();

  // The start-up bar runs across the middle third at 87% of the height.
  if (startUp) {
    p.setFont(Font(kFontFamily, 12, false));
    p.setPen(QColor(220, 232, 244));
    p.drawText(QRectF(0, h * 0.87 - 26, w, 20), Qt::AlignHCenter, QStringLiteral("正在启动，请稍候……"));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(8, 24, 48));
    p.drawRect(QRectF(w / 3.0 - 2, h * 0.87 - 2, w / 3.0 + 4, h * 0.007 + 4));
  }

  p.setFont(Font(kFontFamily, 11, false));
  p.setPen(QColor(170, 196, 220));
  p.drawText(QRectF(0, h - 22, w - 10, 18), Qt::AlignRight | Qt::AlignVCenter,
             QStringLiteral("附带的法律和试题均为示例数据"));
  p.end();
  return img;
}

}  // namespace

QImage SplashPicture() { return FrontPicture(true); }
QImage StartPagePicture() { return FrontPicture(false); }

QImage IconPicture(int size) {
  QImage img(size, size, QImage::Format_ARGB32);
  img.fill(Qt::transparent);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.setRenderHint(QPainter::TextAntialiasing);
  const qreal r = size * 0.44;
  DrawMirror(p, QPointF(size / 2.0, size / 2.0), r);
  p.setFont(Font(kSerifFamily, int(size * 0.58), true));
  p.setPen(QColor(24, 56, 96));
  p.drawText(QRectF(0, 0, size, size), Qt::AlignCenter, QStringLiteral("法"));
  p.end();
  return img;
}

QImage PointerPicture() {
  QImage img(32, 32, QImage::Format_ARGB32);
  img.fill(Qt::transparent);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  // A pointing hand: finger up from the hot spot, the palm below it.
  QPainterPath hand;
  hand.moveTo(9, 1);
  hand.cubicTo(11, 0, 13, 1, 13, 3);
  hand.lineTo(13, 11);
  hand.cubicTo(15, 9, 18, 10, 18, 12);
  hand.cubicTo(20, 10, 23, 11, 23, 13);
  hand.cubicTo(25, 12, 27, 13, 27, 15);
  hand.lineTo(27, 22);
  hand.cubicTo(27, 26, 24, 29, 20, 29);
  hand.lineTo(14, 29);
  hand.cubicTo(11, 29, 9, 27, 7, 24);
  hand.lineTo(3, 17);
  hand.cubicTo(2, 15, 4, 13, 6, 15);
  hand.lineTo(7, 17);
  hand.lineTo(7, 3);
  hand.cubicTo(7, 1, 8, 1, 9, 1);
  p.setPen(QPen(Qt::black, 1.3));
  p.setBrush(Qt::white);
  p.drawPath(hand);
  p.end();
  return img;
}

QByteArray CursorFile(const QImage& picture, int hotX, int hotY) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, "ico");
  if (!writer.write(picture)) return QByteArray();
  buffer.close();
  // An icon file becomes a cursor file: type 2 in the header, and the hot
  // spot where the icon entry holds planes and bit count.
  if (bytes.size() < 22) return QByteArray();
  qToLittleEndian<quint16>(2, bytes.data() + 2);
  qToLittleEndian<quint16>(quint16(hotX), bytes.data() + 6 + 4);
  qToLittleEndian<quint16>(quint16(hotY), bytes.data() + 6 + 6);
  return bytes;
}

bool WritePictures(const QString& folder, QString* error) {
  for (const auto& [name, picture] : {std::pair{QStringLiteral("jiemian.jpg"), SplashPicture()},
                                      std::pair{QStringLiteral("startpage.jpg"), StartPagePicture()}}) {
    QImageWriter w(folder + u'/' + name, "jpeg");
    w.setQuality(90);
    if (!w.write(picture)) {
      *error = name + QStringLiteral("：") + w.errorString();
      return false;
    }
  }
  {
    QImageWriter w(folder + QStringLiteral("/fa.ico"), "ico");
    if (!w.write(IconPicture(32))) {
      *error = QStringLiteral("fa.ico：") + w.errorString();
      return false;
    }
  }
  const QByteArray cur = CursorFile(PointerPicture(), 9, 1);
  if (cur.isEmpty() || !mj::WriteBytesAtomic(folder + QStringLiteral("/mmpoint.cur"), cur)) {
    *error = QStringLiteral("mmpoint.cur 无法写入");
    return false;
  }
  return true;
}

}  // namespace mkdata
