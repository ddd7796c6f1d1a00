#include "papers/loose_papers.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include "law/numerals.h"

namespace mj::test {

namespace {

const QString CrLf = QStringLiteral("\r\n");

int Pick(std::mt19937& rng, int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); }
bool Chance(std::mt19937& rng, int percent) { return Pick(rng, 100) < percent; }
template <typename T>
const T& OneOf(std::mt19937& rng, const QList<T>& list) {
  return list[Pick(rng, static_cast<int>(list.size()))];
}

const QStringList kPieces = {
    QStringLiteral("甲公司与乙公司签订了一份买卖合同"), QStringLiteral("约定由乙公司于三个月内交付货物"),
    QStringLiteral("张某因涉嫌故意伤害罪被公安机关刑事拘留"), QStringLiteral("人民检察院经审查后决定提起公诉"),
    QStringLiteral("李某向人民法院提起诉讼"), QStringLiteral("要求王某赔偿损失三万元"),
    QStringLiteral("某县人民政府作出行政处罚决定"), QStringLiteral("当事人不服申请行政复议"),
    QStringLiteral("关于本案的处理"), QStringLiteral("依照法律规定"), QStringLiteral("在诉讼过程中"),
    QStringLiteral("A公司的法定代表人"), QStringLiteral("B公司主张合同无效"), QStringLiteral("第二审人民法院"),
    QStringLiteral("被告人对一审判决不服"), QStringLiteral("证人赵某出庭作证"), QStringLiteral("2019年3月5日"),
    QStringLiteral("标的额为12.5万元"), QStringLiteral("其中的正确答案。"), QStringLiteral("参见有关司法解释"),
    QStringLiteral("（每题1分）"), QStringLiteral("其正确的答案"), QStringLiteral("依第三条规定"),
};
const QStringList kAsks = {
    QStringLiteral("下列说法正确的是"), QStringLiteral("下列哪一选项是正确的？"),
    QStringLiteral("关于本案，下列哪些说法是错误的？"), QStringLiteral("人民法院应当如何处理？"),
    QStringLiteral("下列表述中，不正确的是（      ）"), QStringLiteral("对此，下列判断正确的是：")};
const QStringList kLaws = {QStringLiteral("《刑诉》"),     QStringLiteral("《刑诉法》"),     QStringLiteral("《民诉》"),
                           QStringLiteral("《民诉法》"),   QStringLiteral("《高法解释》"),   QStringLiteral("《六机关规定》"),
                           QStringLiteral("《刑法》"),     QStringLiteral("《民法典》"),     QStringLiteral("《民通意见》"),
                           QStringLiteral("《高检规则》"), QStringLiteral("《人民检察院规则》"), QStringLiteral("《刑事诉讼法》")};

QString Sentence(std::mt19937& rng) {
  QString s;
  const int n = 4 + Pick(rng, 3);
  for (int i = 0; i < n; ++i) {
    if (i) s += OneOf(rng, QStringList{QStringLiteral("，"), QStringLiteral(","), QStringLiteral("；"), QStringLiteral("、")});
    s += OneOf(rng, kPieces);
  }
  return s;
}

QString Article(std::mt19937& rng) {
  const int n = 1 + Pick(rng, 600);
  return Chance(rng, 80) ? QStringLiteral("第") + DaXie(n) + QStringLiteral("条") : QStringLiteral("第") + QString::number(n) + QStringLiteral("条");
}

QString Citation(std::mt19937& rng) {
  QString c = OneOf(rng, kLaws) + Article(rng);
  for (int k = Pick(rng, 3); k > 0; --k) {
    if (Chance(rng, 50))
      c += QStringLiteral("、") + DaXie(1 + Pick(rng, 600)) + QStringLiteral("条");
    else
      c += QStringLiteral("、") + Article(rng);
  }
  if (Chance(rng, 20)) c += QStringLiteral("，") + OneOf(rng, kLaws) + Article(rng);
  return c;
}

// Breaks a text into lines at random places, as a page or a book does.
QString Broken(std::mt19937& rng, const QString& text) {
  if (!Chance(rng, 35) || text.size() < 6) return text;
  const int at = 2 + Pick(rng, static_cast<int>(text.size()) - 3);
  return text.left(at) + (Chance(rng, 20) ? QStringLiteral(" ") : QString()) + CrLf + text.mid(at);
}

QString Blanks(std::mt19937& rng) {
  return OneOf(rng, QStringList{QString(), QString(), QString(), QStringLiteral(" "), QStringLiteral("  "),
                                QStringLiteral("　"), QStringLiteral("\t")});
}

QString Keys(std::mt19937& rng) {
  QString k;
  for (const QChar c : QStringLiteral("ABCD"))
    if (Chance(rng, 40)) k += c;
  if (k.isEmpty()) k = QString(QStringLiteral("ABCD").at(Pick(rng, 4)));
  return Chance(rng, 10) ? k.toLower() : k;
}

}  // namespace

QString LoosePaper(std::mt19937& rng, int questions) {
  const QString numberMark = OneOf(rng, QStringList{QStringLiteral("、"), QStringLiteral("."), QStringLiteral("．"), QStringLiteral("，"),
                                                    QStringLiteral("。"), QStringLiteral(",")});
  const QString optionMark = OneOf(rng, QStringList{QStringLiteral("、"), QStringLiteral("."), QStringLiteral("．"), QStringLiteral("，"),
                                                    QStringLiteral(","), QStringLiteral("。"), QStringLiteral(":")});
  const bool listAtEnd = Chance(rng, 25);
  QString p;
  if (Chance(rng, 60)) p += QStringLiteral("2019年国家司法考试模拟试题") + Blanks(rng) + CrLf;
  if (Chance(rng, 30)) p += QStringLiteral("说明：本试卷共") + QString::number(questions) + QStringLiteral("题。") + CrLf;
  const int sections = 1 + Pick(rng, 3);
  const QStringList heads = {QStringLiteral("一、单项选择题"), QStringLiteral("二、多项选择题"), QStringLiteral("三、任意选择题")};
  const QStringList headsPoint = {QStringLiteral("一．单项选择题"), QStringLiteral("二．多项选择题"), QStringLiteral("三．任意选择题")};
  QStringList answers;
  int n = 0;
  for (int s = 0; s < sections; ++s) {
    p += (Chance(rng, 50) ? heads[s] : headsPoint[s]);
    if (Chance(rng, 50)) p += OneOf(rng, QStringList{QStringLiteral("（每题1分，共50分）"), QStringLiteral("(每题2分)"), QStringLiteral("：")});
    p += CrLf;
    const int count = s == sections - 1 ? questions - n : questions / sections;
    for (int q = 0; q < count; ++q) {
      ++n;
      const QString num = QString::number(n) + (Chance(rng, 5) ? QStringLiteral("、") : numberMark);
      const bool inline_ = Chance(rng, 15) && !p.endsWith(CrLf);
      p += inline_ ? QStringLiteral(" ") + num : Blanks(rng) + num;
      p += Blanks(rng) + Broken(rng, Sentence(rng) + QStringLiteral("。") + OneOf(rng, kAsks));
      if (Chance(rng, 10)) p += QStringLiteral("（  ）");
      const int layout = Pick(rng, 4);
      for (int o = 0; o < 4; ++o) {
        const QString letter = QString(QStringLiteral("ABCD").at(o));
        const QString mark = Chance(rng, 8) ? QStringLiteral("、") : optionMark;
        QString option = (Chance(rng, 5) ? letter.toLower() : letter) + mark + Blanks(rng) + Broken(rng, OneOf(rng, kPieces));
        if (Chance(rng, 15)) option += QStringLiteral("。");
        if (layout == 0 || (layout == 1 && o % 2 == 0) || o == 0)
          p += CrLf + option;
        else
          p += Blanks(rng) + QStringLiteral("  ") + option;
      }
      if (Chance(rng, 10)) p += CrLf;
      const QString keys = Keys(rng);
      answers << QString::number(n) + QStringLiteral(".") + keys.toUpper();
      if (!listAtEnd || Chance(rng, 20)) {
        p += CrLf;
        switch (Pick(rng, 9)) {
          case 0: p += QStringLiteral("答案：") + keys; break;
          case 1: p += QStringLiteral("答案:") + keys + QStringLiteral("，参见") + Citation(rng); break;
          case 2: p += QStringLiteral("答案与解析：") + keys + QStringLiteral("。解析：见") + Citation(rng); break;
          case 3: p += QStringLiteral("正确答案：") + keys; break;
          case 4: p += QStringLiteral("答案及解析：") + keys + QStringLiteral(",见") + Citation(rng) + QStringLiteral("。"); break;
          case 5: p += QStringLiteral("【答案】") + keys + CrLf + QStringLiteral("注解：") + Sentence(rng) + QStringLiteral("。"); break;
          case 6: p += QStringLiteral("答案及注释：") + keys + QStringLiteral(" 参见") + Citation(rng) + QStringLiteral("。注于2019年1月1日"); break;
          case 7: p += QStringLiteral("[答案：]") + keys + QStringLiteral("[参见：]") + Citation(rng); break;
          default: p += QStringLiteral("参考答案：") + keys; break;
        }
        if (Chance(rng, 10)) p += QStringLiteral("  ");
      }
      if (Chance(rng, 20)) p += CrLf;
      p += CrLf;
    }
  }
  if (listAtEnd) {
    p += (Chance(rng, 50) ? QStringLiteral("本卷参考答案") : QStringLiteral("参考答案")) + CrLf;
    for (int i = 0; i < answers.size(); ++i) p += answers[i] + (i % 5 == 4 ? CrLf : QStringLiteral("  "));
  }
  if (Chance(rng, 15)) {
    while (p.endsWith(CrLf)) p.chop(2);
  }
  return p;
}

QList<RealQuestion> RealQuestions(const QString& jsonPath) {
  QFile f(jsonPath);
  if (!f.open(QIODevice::ReadOnly)) return {};
  const QJsonDocument doc = QJsonDocument::fromJson(f.readAll());
  QList<RealQuestion> out;
  const QJsonArray items = doc.isArray() ? doc.array() : doc.object().value(QStringLiteral("data")).toArray();
  for (const QJsonValue& v : items) {
    const QJsonObject o = v.toObject();
    const QString q = o.value(QStringLiteral("question")).toString();
    RealQuestion r;
    // The options close the text: A:...;B:...;C:...;D:...。
    const qsizetype a = q.lastIndexOf(QStringLiteral("A:"));
    const qsizetype b = q.indexOf(QStringLiteral(";B:"), a);
    const qsizetype c = q.indexOf(QStringLiteral(";C:"), b);
    const qsizetype d = q.indexOf(QStringLiteral(";D:"), c);
    if (a < 0 || b < 0 || c < 0 || d < 0) continue;
    r.stem = q.left(a).trimmed();
    r.options[0] = q.mid(a + 2, b - a - 2).trimmed();
    r.options[1] = q.mid(b + 3, c - b - 3).trimmed();
    r.options[2] = q.mid(c + 3, d - c - 3).trimmed();
    QString last = q.mid(d + 3).trimmed();
    if (last.endsWith(u'。')) last.chop(1);
    r.options[3] = last;
    const QString ans = o.value(QStringLiteral("answer")).toString();
    for (const QChar ch : ans)
      if (ch >= u'A' && ch <= u'D') r.answer += ch;
    out.append(r);
  }
  return out;
}

QString RealLoosePaper(const QList<RealQuestion>& questions, int firstNumber) {
  QString p = QStringLiteral("一、单项选择题") + CrLf;
  for (int i = 0; i < questions.size(); ++i) {
    const RealQuestion& r = questions[i];
    p += QString::number(firstNumber + i) + QStringLiteral("、") + r.stem + CrLf;
    for (int o = 0; o < 4; ++o) p += QString(QStringLiteral("ABCD").at(o)) + QStringLiteral("、") + r.options[o] + CrLf;
    p += QStringLiteral("答案：") + r.answer + CrLf;
  }
  return p;
}

}  // namespace mj::test
