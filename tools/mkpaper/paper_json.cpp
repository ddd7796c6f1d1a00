#include "paper_json.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QRegularExpression>

#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj::tools {

namespace {

// Characters of the data that GBK, the program's code page, does not have,
// and what stands for them.
QString GbkStandIn(QChar c) {
  if (c == QChar(0x2022)) return QStringLiteral("·");  // bullet between a foreign name's parts
  if (c == QChar(0x201E)) return QStringLiteral("。");  // a low quotation mark where a full stop belongs
  return QStringLiteral("□");
}

// A text of the data made safe for the layout: its own line breaks become a
// break plus an ideographic blank (so no line of it begins like a question
// number or an option), option markers and answer tags inside it lose their
// meaning, and characters outside GBK get a stand-in. What changed is noted.
QString Fitted(const QString& raw, const QString& where, QStringList* warnings) {
  QString s = raw;
  s.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  s.replace(u'\r', u'\n');
  s = s.trimmed();
  if (s.contains(u'\n')) s.replace(QStringLiteral("\n"), kCrLf + QChar(0x3000));
  for (const QChar letter : {u'A', u'B', u'C', u'D'}) {
    const QString marker = QString(letter) + QStringLiteral("．");
    if (s.contains(marker)) {
      s.replace(marker, QString(letter) + u'.');
      warnings->append(where + QStringLiteral("：“") + marker + QStringLiteral("”改为“") + letter + QStringLiteral(".”"));
    }
  }
  for (const QString& tag : {QStringLiteral("[答案：]"), QStringLiteral("[本卷参考答案]")}) {
    if (s.contains(tag)) {
      QString full = tag;
      full.replace(u'[', QStringLiteral("［")).replace(u']', QStringLiteral("］"));
      s.replace(tag, full);
      warnings->append(where + QStringLiteral("：") + tag + QStringLiteral("改为全角括号"));
    }
  }
  QString out;
  out.reserve(s.size());
  for (qsizetype i = 0; i < s.size(); ++i) {
    // A surrogate pair is one character.
    const qsizetype n = (s[i].isHighSurrogate() && i + 1 < s.size()) ? 2 : 1;
    const QString c = s.mid(i, n);
    if (FromGbk(ToGbk(c)) == c) {
      out += c;
    } else {
      const QString stand = GbkStandIn(n == 1 ? s[i] : QChar());
      warnings->append(where + QStringLiteral("：字符U+") +
                       QString::number(c.toUcs4().value(0), 16).toUpper() + QStringLiteral("改为“") + stand +
                       QStringLiteral("”"));
      out += stand;
    }
    i += n - 1;
  }
  return out;
}

}  // namespace

JsonPaper PaperFromJson(const QByteArray& json, const QStringList& header) {
  JsonPaper r;
  QJsonParseError parse;
  const QJsonDocument doc = QJsonDocument::fromJson(json, &parse);
  if (parse.error != QJsonParseError::NoError) {
    r.error = QStringLiteral("JSON 格式错误（第") + QString::number(parse.offset) + QStringLiteral("字节）：") +
              parse.errorString();
    return r;
  }
  if (!doc.isArray()) {
    r.error = QStringLiteral("JSON 文件应当是一个数组，每项一道题");
    return r;
  }
  const QJsonArray items = doc.array();
  if (items.isEmpty()) {
    r.error = QStringLiteral("JSON 文件里没有题目");
    return r;
  }
  QStringList lines = header;
  lines.append(QStringLiteral("一、单项选择题"));
  int n = 0;
  for (const QJsonValue& v : items) {
    ++n;
    const QString where = QStringLiteral("第") + QString::number(n) + QStringLiteral("题");
    const QJsonObject o = v.toObject();
    if (!v.isObject() || !o.value(QStringLiteral("question")).isString() || !o.value(QStringLiteral("answer")).isString()) {
      r.error = where + QStringLiteral("：缺少文字字段 question 或 answer");
      return r;
    }
    const QString q = o.value(QStringLiteral("question")).toString();
    // The options are the last "A:", ";B:", ";C:", ";D:" in this order.
    const qsizetype d = q.lastIndexOf(QStringLiteral(";D:"));
    const qsizetype c = d > 0 ? q.lastIndexOf(QStringLiteral(";C:"), d - 1) : -1;
    const qsizetype b = c > 0 ? q.lastIndexOf(QStringLiteral(";B:"), c - 1) : -1;
    const qsizetype a = b > 0 ? q.lastIndexOf(QStringLiteral("A:"), b - 1) : -1;
    if (a < 0) {
      r.error = where + QStringLiteral("：题目中找不到按顺序排列的选项“A:”“;B:”“;C:”“;D:”");
      return r;
    }
    QString optionD = q.mid(d + 3).trimmed();
    while (optionD.endsWith(QStringLiteral("。"))) optionD.chop(1);
    const QString stem = Fitted(q.left(a), where, &r.warnings);
    if (stem.isEmpty()) {
      r.error = where + QStringLiteral("：没有题干");
      return r;
    }
    QString key;
    for (const QChar ch : o.value(QStringLiteral("answer")).toString())
      if (ch >= u'A' && ch <= u'D' && !key.contains(ch)) key += ch;
    if (key.size() != 1) {
      r.error = where + QStringLiteral("：答案“") + o.value(QStringLiteral("answer")).toString() +
                QStringLiteral("”不是A到D中的一个字母");
      return r;
    }
    lines.append(QString::number(n) + QStringLiteral("．") + stem);
    lines.append(QStringLiteral("A．") + Fitted(q.mid(a + 2, b - a - 2), where, &r.warnings));
    lines.append(QStringLiteral("B．") + Fitted(q.mid(b + 3, c - b - 3), where, &r.warnings));
    lines.append(QStringLiteral("C．") + Fitted(q.mid(c + 3, d - c - 3), where, &r.warnings));
    lines.append(QStringLiteral("D．") + Fitted(optionD, where, &r.warnings));
    lines.append(QStringLiteral("[答案：]") + key);
  }
  r.questions = n;
  r.text = lines.join(kCrLf) + kCrLf;
  return r;
}

QStringList LawBenchHeader(int questions) {
  return {QStringLiteral("国家司法考试真题·单项选择题（共") + QString::number(questions) + QStringLiteral("道）"),
          QStringLiteral("来源：LawBench 法律评测集的任务3-6（案例分析单选题），原文件 lawbench-3-6.json，按 Apache License "
                         "2.0 许可使用（许可全文见 https://www.apache.org/licenses/LICENSE-2.0）。"),
          QStringLiteral("本卷由本程序的工具 mkpaper 转换而成：题干和选项的文字照录原文，只把每题的四个选项分行排列，把“正确答案”"
                         "改成本程序的答案行。原题不带参见法条，所以做题时答案下面没有法条原文。")};
}

}  // namespace mj::tools
