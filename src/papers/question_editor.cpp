#include "papers/question_editor.h"

#include <QRegularExpression>

#include "bank/bank_text.h"
#include "bank/tables.h"
#include "law/citations.h"
#include "papers/paper_check.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kNoteTag = QStringLiteral("[注释：]");
const QString kNoteDateTag = QStringLiteral("[注于：]");
const QString kPlaceHolder = QStringLiteral("■■■■■");

QString WithoutTrailingCrLf(QString t) {
  while (t.endsWith(kCrLf)) t.chop(2);
  return t;
}

QString WithoutLineEnds(QString t) {
  t.remove(u'\r');
  t.remove(u'\n');
  return t;
}

QString SingleLineEnds(QString t) {
  const QString twice = kCrLf + kCrLf;
  while (t.contains(twice)) t.replace(twice, kCrLf);
  return t;
}

}  // namespace

QString GetTxtWillAlt(const Env& env, const QString& id) {
  const QString fileText = ReadFileAsText(BankFilePath(env, id));
  if (fileText.isEmpty()) return QString();
  const QString block = GetOneShiTi(fileText, ItemSerial(id));
  QString provider;
  const QString stem = WithoutTrailingCrLf(GetField(block, 1, provider));
  const QString answer = GetField(block, 2, provider);
  return stem + kCrLf + answer;
}

QuestionParts SplitQuestion(const QString& text) {
  QuestionParts q;
  const QString a = kCrLf + QStringLiteral("A．");
  const qsizetype k = InStr(text, a);
  // Without options the whole text stays in the stem, so nothing is hidden.
  q.stem = k > 0 ? Left(text, k - 1) : text;
  q.options[0] = TextBetween(text, a, kCrLf + QStringLiteral("B．"));
  q.options[1] = TextBetween(text, kCrLf + QStringLiteral("B．"), kCrLf + QStringLiteral("C．"));
  q.options[2] = TextBetween(text, kCrLf + QStringLiteral("C．"), kCrLf + QStringLiteral("D．"));
  q.options[3] = TextBetween(text, kCrLf + QStringLiteral("D．"), kCrLf + QStringLiteral("答案："));
  const QString answerTag = kCrLf + QStringLiteral("答案：");
  q.answer = OnlyABCD(TextBetween(text, answerTag, QStringLiteral("参见")));
  const qsizetype t = InStr(text, answerTag);
  const qsizetype c = t > 0 ? InStr(t, text, QStringLiteral("参见")) : 0;
  if (c > 0) {
    const QString rest = Mid(text, c + 2);
    const qsizetype n = InStr(rest, kNoteTag);
    if (n > 0) {
      q.citations = Left(rest, n - 1);
      q.note = WithoutTrailingCrLf(CutNoteDate(Mid(rest, n + Len(kNoteTag))));
    } else {
      q.citations = rest;
    }
    q.citations = WithoutLineEnds(q.citations);
  }
  return q;
}

QString CutNoteDate(const QString& note) {
  const qsizetype k = InStr(note, kNoteDateTag);
  return k > 0 ? Left(note, k - 1) : note;
}

QString CheckQuestionParts(const QuestionParts& q) {
  if (Len(Trim(q.stem)) < 10) return QStringLiteral("题干太短。");
  const char* const empty[4] = {"选项A不能为空。", "选项B不能为空。", "选项C不能为空。", "选项D不能为空。"};
  for (int i = 0; i < 4; ++i)
    if (Trim(q.options[i]).isEmpty()) return QString::fromUtf8(empty[i]);
  if (OnlyABCD(q.answer).isEmpty()) return QStringLiteral("不能没有答案。");
  if (!q.citations.contains(u'《')) return QStringLiteral("不能没有参见法条。");
  return QString();
}

QString AddCitation(const QString& citations, const QString& lawName, int article, bool* added) {
  const QString c = Trim(lawName) + u'第' + CStr(article) + u'条';
  const bool add = !citations.contains(c);
  if (added) *added = add;
  return add ? citations + c : citations;
}

QString RemoveLastCitation(const QString& citations) {
  const qsizetype p = LastPos(citations, QStringLiteral("《"));
  if (p == 0) return citations;
  return p == 1 ? QString() : Left(citations, p - 1);
}

ProviderInfo ReadProvider(const Env& env) {
  ProviderInfo p;
  const QString text = ReadText(env.path(kProviderFile));
  // One line of quoted texts separated by commas.
  static const QRegularExpression value(QStringLiteral("\"([^\"]*)\"|([^,\"\r\n]+)"));
  QStringList values;
  const QString line = text.section(QRegularExpression(QStringLiteral("\r\n|\n")), 0, 0);
  auto it = value.globalMatch(line);
  while (it.hasNext() && values.size() < 4) {
    const QRegularExpressionMatch m = it.next();
    values.append(m.captured(1).isNull() ? m.captured(2).trimmed() : m.captured(1));
  }
  while (values.size() < 4) values.append(QString());
  p.name = values[0];
  p.qq = values[1];
  p.email = values[2];
  p.homePage = values[3];
  return p;
}

bool WriteProvider(const Env& env, const ProviderInfo& info) {
  auto q = [](const QString& s) {
    QString t = s;
    t.remove(u'"');
    return u'"' + WithoutLineEnds(t) + u'"';
  };
  return WriteTextAtomic(env.path(kProviderFile),
                         q(info.name) + u',' + q(info.qq) + u',' + q(info.email) + u',' + q(info.homePage) + kCrLf);
}

QString GetItemInfo(const ProviderInfo& info) { return info.name + info.qq + info.email + info.homePage; }

QString ChineseDate(const QDate& date) {
  return CStr(date.year()) + u'年' + CStr(date.month()) + u'月' + CStr(date.day()) + u'日';
}

BuiltQuestion OkItem(const QuestionParts& q, const QString& id, const QDate& today,
                     const std::optional<ProviderInfo>& provider) {
  QString s = q.stem;
  if (!s.endsWith(kCrLf)) s += kCrLf;
  s += QStringLiteral("A．") + q.options[0] + kCrLf + QStringLiteral("B．") + q.options[1] + kCrLf +
       QStringLiteral("C．") + q.options[2] + kCrLf + QStringLiteral("D．") + q.options[3];
  if (provider) s += kPlaceHolder;
  s += QStringLiteral("■答案：") + OnlyABCD(q.answer) + QStringLiteral("参见") + WithoutLineEnds(q.citations);
  // The note stays inside the answer field, on its own line, where the
  // answer window shows it and the editor finds it again.
  if (!q.note.isEmpty())
    s += kCrLf + kNoteTag + q.note + kNoteDateTag + ChineseDate(today) + QStringLiteral("■") + kCrLf;
  if (Len(s) > 10 && s.startsWith(kCrLf)) s = s.mid(2);
  // The next question's marker has to stay at the start of a line.
  if (!s.endsWith(kCrLf)) s += kCrLf;
  s = SingleLineEnds(s);

  BuiltQuestion b;
  if (provider) {
    const QString block = kCrLf + QStringLiteral("[本题ID及提供者有关信息：]") + kCrLf + QStringLiteral("[本题标识ID：]") +
                          u'[' + id + u']' + kCrLf + QStringLiteral("[提供者姓名或昵称：]") + provider->name + kCrLf +
                          QStringLiteral("[提供者QQ号码：]") + provider->qq + kCrLf + QStringLiteral("[提供者E_mail：]") +
                          provider->email + kCrLf + QStringLiteral("[提供者主页：]") + provider->homePage + kCrLf +
                          QStringLiteral("[提供日期：]") + ChineseDate(today);
    b.postText = QString(s).replace(kPlaceHolder, block);
    b.bankText = QString(s).remove(kPlaceHolder);
  } else {
    b.bankText = s;
  }
  return b;
}

std::optional<ItemRow> F9AltDbf(const Env& env, const QString& id, const QString& citations,
                                const QString& answer, bool* tableOk) {
  const QString table = id.startsWith(u'0') ? tables::kCsItems : tables::kItems;
  DbfTable t = DbfTable::open(env.path(QStringLiteral("\\dbf\\") + table), DbfTable::Mode::ReadWrite);
  if (tableOk) *tableOk = t.isOpen();
  if (!t.isOpen()) return std::nullopt;
  const int itemid = t.fieldIndex(QStringLiteral("itemid"));
  for (const int r : t.rows()) {
    if (t.trimmedText(r, itemid) != id) continue;
    const QString letters = OnlyABCD(answer);
    const int oldType = static_cast<int>(t.number(r, QStringLiteral("itemtype")));
    const int type = oldType == 3 ? 3 : (Len(letters) == 1 ? 1 : 2);
    bool ok = t.setText(r, QStringLiteral("story"), QStringLiteral("no"));
    ok = t.setText(r, QStringLiteral("aboutlaw"), LongDaAnForEdit(Trim(citations))) && ok;
    ok = t.setText(r, QStringLiteral("answer"), Left(letters + QStringLiteral("    "), 4)) && ok;
    ok = t.setNumber(r, QStringLiteral("itemtype"), type) && ok;
    ok = t.flush() && ok;
    if (!ok) {
      if (tableOk) *tableOk = false;
      return std::nullopt;
    }
    ItemRow row;
    row.filename = t.trimmedText(r, QStringLiteral("filename"));
    row.story = t.trimmedText(r, QStringLiteral("story"));
    row.answer = t.trimmedText(r, QStringLiteral("answer"));
    row.aboutlaw = t.trimmedText(r, QStringLiteral("aboutlaw"));
    row.itemid = t.trimmedText(r, itemid);
    row.hastest = t.trimmedText(r, QStringLiteral("hastest"));
    row.valid2 = t.logical(r, QStringLiteral("valid2"));
    row.hasselect = t.logical(r, QStringLiteral("hasselect"));
    row.itemtype = static_cast<int>(t.number(r, QStringLiteral("itemtype")));
    t.close();
    return row;
  }
  return std::nullopt;
}

void UpdateIndexRow(ItemIndex& index, const ItemRow& row) {
  if (ItemRow* r = FindItem(index, row.itemid)) *r = row;
}

SaveOutcome SaveEditedQuestion(const Env& env, const QString& id, const QuestionParts& parts,
                               const std::optional<ProviderInfo>& provider) {
  SaveOutcome out;
  const BuiltQuestion b = OkItem(parts, id, env.today(), provider);
  if (!PutItemText(env, id, b.bankText)) {
    out.error = QStringLiteral("题库文件") + BankFilePath(env, id) + QStringLiteral("无法写入，本题没有保存。");
    return out;
  }
  out.saved = true;
  bool tableOk = true;
  out.row = F9AltDbf(env, id, parts.citations, parts.answer, &tableOk);
  const QString table = id.startsWith(u'0') ? tables::kCsItems : tables::kItems;
  if (!tableOk)
    out.error = QStringLiteral("试题表") + env.path(QStringLiteral("\\dbf\\") + table) +
                QStringLiteral("无法写入，本题的答案和参见法条只保存在了题库文件中。");
  if (provider) {
    out.clipboard = b.postText;
    const QString posted = ReplaceAll(QStringLiteral("●") + b.postText, QStringLiteral("●") + kCrLf, QStringLiteral("●"));
    if (!AppendText(env.path(kPostFile), posted)) {
      const QString e = QStringLiteral("文件") + env.path(kPostFile) + QStringLiteral("无法写入。");
      out.error = out.error.isEmpty() ? e : out.error + kCrLf + e;
    }
  }
  return out;
}

}  // namespace mj
