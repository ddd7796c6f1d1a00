#include "generator.h"

#include <QDateTime>
#include <QDir>
#include <QtEndian>

#include "bank/eligibility.h"
#include "bank/tables.h"
#include "folder_writing.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "platform/dbftable.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"

namespace mj::gen {

namespace {

using mjtools::kClasses;
using mjtools::kPaperGroups;
using mjtools::kTypeWords;

const int kArticlesPerChapter = 20;

// A wrong answer of the same kind as the key.
QString WrongAnswer(const QString& key) {
  for (const QString& a : {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("CD"), QStringLiteral("ABD")})
    if (a != key) return a;
  return QStringLiteral("C");
}

QString KeyOf(int type, int i) {
  static const QStringList multi = {QStringLiteral("AB"), QStringLiteral("ACD"), QStringLiteral("BD"),
                                    QStringLiteral("ABCD"), QStringLiteral("BC")};
  static const QStringList any = {QStringLiteral("A"), QStringLiteral("BC"), QStringLiteral("ABD"),
                                  QStringLiteral("ABCD"), QStringLiteral("CD")};
  if (type == 1) return QString(QChar(u'A' + i % 4));
  return (type == 2 ? multi : any)[i % 5];
}

// The heading of article n; 第N条 has a blank behind it, as in real texts.
QString ArticleHead(int type, int n) {
  return mjtools::ArticleHead(type, n) + (type == 1 ? QStringLiteral(" ") : QString());
}

struct Cited {
  int law = 0;
  QList<int> numbers;
};

// The citations of question i: one to three articles in one or two laws,
// now and then a range.
QList<Cited> CitationsOf(int i, const Sizes& s) {
  QList<Cited> out;
  const int laws = (i % 4 == 3 && s.laws > 1) ? 2 : 1;
  for (int j = 0; j < laws; ++j) {
    Cited c;
    c.law = (i + j * 7) % s.laws;
    const int first = 1 + int((qint64(i) * 37 + j * 101) % s.articles);
    c.numbers.append(first);
    if (i % 3 == 1) c.numbers.append(1 + int((qint64(i) * 53 + 11) % s.articles));
    if (i % 7 == 0 && first + 2 <= s.articles) c.numbers = {first, first + 1, first + 2};
    out.append(c);
  }
  return out;
}

QString CitationText(const QList<Cited>& cites, int i) {
  QString text;
  for (const Cited& c : cites) {
    text += LawTitle(c.law);
    const bool range = c.numbers.size() == 3 && i % 7 == 0;
    if (range) {
      text += QStringLiteral("第%1-%2条").arg(c.numbers.first()).arg(c.numbers.last());
      continue;
    }
    for (int k = 0; k < c.numbers.size(); ++k)
      text += (k ? QStringLiteral("、第") : QStringLiteral("第")) + QString::number(c.numbers[k]) + u'条';
  }
  return text;
}

QString FlatList(const QList<Cited>& cites, int* count) {
  QString flat;
  for (const Cited& c : cites)
    for (int n : c.numbers) {
      flat += LawTitle(c.law) + QString::number(n) + u'．';
      ++*count;
    }
  return flat;
}

struct Question {
  QString id, key, story, aboutlaw, block;
  int type = 0;
  bool forum = false;
};

// The text of one question block in a bank file, behind its marker.
QString Block(const Question& q, int serial, int i, const QString& citation) {
  QStringList options;
  for (int k = 0; k < 4; ++k) options.append(QStringLiteral("生成选项%1%2").arg(QChar(u'A' + k)).arg(i + 1));
  QStringList provider;
  if (i % 10 == 5)
    provider = {QStringLiteral("生成用户"), QStringLiteral("10000"), QStringLiteral("gen@example.org"),
                QStringLiteral("https://mingjing.example.org/"), QStringLiteral("2026年1月1日")};
  const QString note = i % 4 == 2 ? QStringLiteral("生成的注释。") : QString();
  return mjtools::QuestionBlock(
      serial, q.id, QStringLiteral("生成试题%1：根据生成法律，下列说法正确的是(      )").arg(i + 1), options, provider,
      mjtools::AnswerField(q.key, citation, note, QStringLiteral("2026年1月1日")));
}

class Writer {
 public:
  Writer(const QString& root, const Sizes& s, QString* error, Result* r) : root_(root), s_(s), error_(error), r_(r) {}

  bool run() {
    if (!checkSizes()) return false;
    QString failed;
    if (!mjtools::MakeProgramFolders(root_, &failed)) return fail(QStringLiteral("文件夹 %1 无法建立").arg(failed));
    return writeLaws() && writeInternal() && writePapers() && writeLawTables() && writeTrees() && writeOutline() &&
           writeSmallFiles();
  }

 private:
  bool fail(const QString& msg) {
    *error_ = msg;
    return false;
  }

  bool checkSizes() {
    if (s_.questions < 0 || s_.banks < 0 || s_.laws < 0 || s_.articles < 0 || s_.papers < 0 || s_.paperQuestions < 0 ||
        s_.codesPerGroup < 1)
      return fail(QStringLiteral("大小不能为负数"));
    if ((s_.questions > 0 || s_.papers > 0) && (s_.laws < 1 || s_.articles < 1))
      return fail(QStringLiteral("试题要引用法条：至少要有一部法律和一条条文"));
    if (s_.questions > 0 && s_.banks < 1) return fail(QStringLiteral("试题要放进题库：至少要有一个题库"));
    if (s_.articles > 99999 || s_.laws > 89999 || (s_.banks + 2) / 3 > 89999 || s_.papers > 9999)
      return fail(QStringLiteral("数目超出编号的范围"));
    if (s_.banks > 0 && (s_.questions + s_.banks - 1) / s_.banks > 99999)
      return fail(QStringLiteral("一个题库最多99999道题"));
    if (s_.paperQuestions > 99999) return fail(QStringLiteral("一份试卷最多99999道题"));
    if (!s_.today.isValid()) return fail(QStringLiteral("日期无效"));
    return true;
  }

  bool writeText(const QString& rel, const QString& text) {
    if (!WriteTextAtomic(root_ + u'/' + rel, text)) return fail(QStringLiteral("%1 无法写入").arg(rel));
    return true;
  }

  bool writeLaws() {
    for (int k = 0; k < s_.laws; ++k) {
      const int type = LawType(k);
      QString text =
          LawName(k) + kCrLf + kLawIndent + QStringLiteral("（生成数据：测试用的虚构条文，没有法律意义）") + kCrLf;
      for (int n = 1; n <= s_.articles; ++n) {
        if ((n - 1) % kArticlesPerChapter == 0) {
          const int chapter = (n - 1) / kArticlesPerChapter + 1;
          text += kLawIndent + u'第' + DaXie(chapter) + QStringLiteral("章 生成的章") + kCrLf;
        }
        text += kLawIndent + ArticleHead(type, n) +
                QStringLiteral("这是%1的一条生成条文，用于测试程序的速度，没有法律意义。").arg(LawName(k)) + kCrLf;
        if (n % 3 == 0)
          text += kLawIndent + QStringLiteral("（一）生成的项；") + kCrLf + kLawIndent +
                  QStringLiteral("（二）生成的项。") + kCrLf;
      }
      if (type == 2)
        text += kLawIndent + QStringLiteral("附件：生成的附件") + kCrLf + kLawIndent + QStringLiteral("附件的内容。") +
                kCrLf;
      const QString rel = QStringLiteral("lawtxt/") + LawName(k) + QStringLiteral(".mmd");
      if (!writeText(rel, text)) return false;
      if (r_) r_->lawFiles.append(rel);
    }
    return true;
  }

  // Questions of one bank file, in the item table's order.
  Question makeQuestion(const QString& id, int type, int i) {
    Question q;
    q.id = id;
    q.type = type;
    q.key = KeyOf(type, i);
    q.story = s_.fullRecords ? FullStoryText(i, q.key, s_.today) : StoryText(StoryShapeOf(i), i, q.key, s_.today);
    const QList<Cited> cites = CitationsOf(i, s_);
    int count = 0;
    q.aboutlaw = FlatList(cites, &count);
    if (r_) r_->citations += count;
    q.forum = i % 10 == 7;
    q.block = Block(q, int(id.mid(6).toInt()), i, CitationText(cites, i));
    return q;
  }

  struct LeafCount {
    int total = 0, ok = 0, done = 0, right = 0;
  };

  static LeafCount Count(const QList<Question>& qs, const QDate& today) {
    LeafCount c;
    for (const Question& q : qs) {
      ++c.total;
      if (DueWithDefaults(q.story, q.key, today)) ++c.ok;
      // Each entry ends with the answer given, right-aligned in 4.
      for (int e = 0; e + kEntryLength <= q.story.size(); e += kEntryLength) {
        ++c.done;
        if (q.story.mid(e + kEntryLength - 4, 4).trimmed() == q.key) ++c.right;
      }
    }
    return c;
  }

  bool appendItem(DbfTable& t, const Question& q, bool forumFields) {
    mjtools::ItemRecord item{q.id, q.story, q.key, q.aboutlaw, q.type};
    if (forumFields && q.forum) {
      item.board = 6 + q.id.mid(6).toInt() % 14;
      item.topic = q.id.mid(6).toInt();
    }
    if (mjtools::AppendItemRecord(t, item)) return true;
    return fail(QStringLiteral("试题 %1 无法写入").arg(q.id));
  }

  struct Row {
    QString a, b, c;
    LeafCount n;
    bool heading = false;
  };

  bool writeDirectory(const QString& rel, const QList<Row>& rows) {
    DbfTable t = DbfTable::create(root_ + u'/' + rel, tables::DirectoryFields());
    if (!t.isOpen()) return fail(t.error());
    for (int i = 0; i < rows.size(); ++i) {
      const Row& row = rows[i];
      if (!mjtools::AppendDirectoryRecord(t, {row.a, row.b, row.c, row.n.total, row.n.done, row.n.right, row.n.ok}))
        return fail(QStringLiteral("%1 第%2行无法写入").arg(rel).arg(i + 1));
    }
    return true;
  }

  // Heading rows get their range and the sums of the leaves below them.
  static void CloseHeading(QList<Row>* rows, int at) {
    Row& h = (*rows)[at];
    h.c = QStringLiteral("%1-%2").arg(at + 2).arg(rows->size());
    h.n = LeafCount();
    for (int k = at + 1; k < rows->size(); ++k) {
      if ((*rows)[k].heading) continue;
      h.n.total += (*rows)[k].n.total;
      h.n.ok += (*rows)[k].n.ok;
      h.n.done += (*rows)[k].n.done;
      h.n.right += (*rows)[k].n.right;
    }
  }

  bool writeInternal() {
    DbfTable items = DbfTable::create(root_ + QStringLiteral("/dbf/items.mmd"), tables::ItemFields(true));
    if (!items.isOpen()) return fail(items.error());
    QList<Row> rows;
    const int codes = (s_.banks + 2) / 3;
    int i = 0;  // running question number, table order
    for (int c = 0; c < codes; ++c) {
      if (c % s_.codesPerGroup == 0) {
        if (!rows.isEmpty()) CloseHeading(&rows, groupAt_);
        groupAt_ = int(rows.size());
        rows.append({QStringLiteral("第%1组题库（生成数据）").arg(c / s_.codesPerGroup + 1), {}, {}, {}, true});
      }
      const int codeAt = int(rows.size());
      const QString title = c < s_.laws ? LawTitle(c) : QStringLiteral("《生成题库%1》").arg(c + 1);
      rows.append({title + QStringLiteral("（生成数据）"), {}, {}, {}, true});
      for (int b = c * 3; b < std::min(s_.banks, c * 3 + 3); ++b) {
        const int type = b % 3 + 1;
        const int count = s_.questions / s_.banks + (b < s_.questions % s_.banks ? 1 : 0);
        QList<Question> qs;
        QString file = QStringLiteral("生成数据：") + title + kTypeWords[type];
        for (int n = 1; n <= count; ++n, ++i) {
          const QString id = BankName(b) + QStringLiteral("%1").arg(n, 5, 10, QChar(u'0'));
          qs.append(makeQuestion(id, type, i));
          file += kCrLf + qs.last().block;
          if (!appendItem(items, qs.last(), true)) return false;
        }
        if (!writeText(QStringLiteral("yibanti/") + BankName(b) + QStringLiteral(".mmd"), file + kCrLf)) return false;
        rows.append({title + kTypeWords[type],
                     QStringLiteral("\\yibanti\\") + BankName(b) + QStringLiteral(".mmd"),
                     {},
                     Count(qs, s_.today),
                     false});
      }
      CloseHeading(&rows, codeAt);
      // The code's heading range ends at its last leaf, not the group's.
    }
    if (!rows.isEmpty()) CloseHeading(&rows, groupAt_);
    items.close();
    if (r_) {
      r_->questions = i;
      r_->directoryRows = int(rows.size());
      for (const Row& r : rows) r_->headings += r.heading;
    }
    return writeDirectory(QStringLiteral("dbf/33ok.mmd"), rows);
  }

  bool writePapers() {
    DbfTable items = DbfTable::create(root_ + QStringLiteral("/dbf/csitems.mmd"), tables::ItemFields(false));
    if (!items.isOpen()) return fail(items.error());
    QList<Row> rows;
    int total = 0;
    for (int p = 0; p < s_.papers; ++p) {
      const int at = int(rows.size());
      rows.append({QStringLiteral("生成模拟试卷%1（生成数据）").arg(p + 1), {}, {}, {}, true});
      QString file = QStringLiteral("生成数据：生成模拟试卷%1").arg(p + 1);
      int serial = 0;
      for (int type = 1; type <= 3; ++type) {
        const int count = s_.paperQuestions / 3 + (type - 1 < s_.paperQuestions % 3 ? 1 : 0);
        QList<Question> qs;
        for (int n = 0; n < count; ++n, ++total) {
          const QString id =
              PaperCode(p) + QString::number(type) + QStringLiteral("%1").arg(++serial, 5, 10, QChar(u'0'));
          qs.append(makeQuestion(id, type, total));
          file += kCrLf + qs.last().block;
          if (!appendItem(items, qs.last(), false)) return false;
        }
        rows.append({QStringLiteral("试卷%1 ").arg(p + 1) + kTypeWords[type],
                     QStringLiteral("\\moniti\\") + PaperCode(p) + QString::number(type) + QStringLiteral(".mmd"),
                     {},
                     Count(qs, s_.today),
                     false});
      }
      CloseHeading(&rows, at);
      if (!writeText(QStringLiteral("moniti/") + PaperCode(p) + QStringLiteral(".mmd"), file + kCrLf)) return false;
    }
    items.close();
    if (r_) r_->paperQuestions = total;
    return writeDirectory(QStringLiteral("dbf/csface.mmd"), rows);
  }

  bool writeLawTables() {
    DbfTable names = DbfTable::create(root_ + QStringLiteral("/dbf/33.mmd"), tables::LawNameFields());
    DbfTable list = DbfTable::create(root_ + QStringLiteral("/dbf/listbox.mmd"), tables::LawListFields());
    if (!names.isOpen() || !list.isOpen()) return fail(names.isOpen() ? list.error() : names.error());
    for (int k = 0; k < s_.laws; ++k) {
      int r = names.appendRow();
      if (r < 0 || !names.setText(r, QStringLiteral("lawname"), LawTitle(k)) ||
          !names.setText(r, QStringLiteral("filename"), QStringLiteral("\\yibanti\\") + LawCode(k)))
        return fail(QStringLiteral("33.mmd 无法写入"));
      r = list.appendRow();
      if (r < 0 || !list.setText(r, QStringLiteral("lawname"), LawTitle(k)) ||
          !list.setNumber(r, QStringLiteral("f"), k % 3 + 1) ||
          !list.setText(r, QStringLiteral("c"), QStringLiteral("S")) ||
          !list.setNumber(r, QStringLiteral("lei"), k % kClasses.size() + 1))
        return fail(QStringLiteral("listbox.mmd 无法写入"));
    }
    return true;
  }

  static QString FileLine(int k) { return mjtools::TreeFileLine(LawName(k)); }

  bool writeTrees() {
    QString byPaper, byLetter, byClass;
    for (int p = 0; p < 3 && p < s_.laws; ++p) {
      byPaper += FileLine(p) + kPaperGroups[p] + kCrLf;
      for (int k = p; k < s_.laws; k += 3) byPaper += FileLine(k) + QStringLiteral("    ") + LawTitle(k) + kCrLf;
    }
    for (int k = 0; k < s_.laws; ++k) byLetter += FileLine(k) + QStringLiteral("S ") + LawTitle(k) + kCrLf;
    for (int c = 0; c < kClasses.size() && c < s_.laws; ++c) {
      byClass += FileLine(c) + kClasses[c] + kCrLf;
      for (int k = c; k < s_.laws; k += int(kClasses.size()))
        byClass += FileLine(k) + QStringLiteral("    ") + LawTitle(k) + kCrLf;
    }
    return writeText(QStringLiteral("ini/shijuan.mmd"), byPaper) &&
           writeText(QStringLiteral("ini/zimu.mmd"), byLetter) && writeText(QStringLiteral("ini/leibie.mmd"), byClass);
  }

  bool writeOutline() {
    DbfTable t = DbfTable::create(root_ + QStringLiteral("/dbf/dagang.mmd"), tables::OutlineFields());
    if (!t.isOpen()) return fail(t.error());
    int recn = 0;
    const auto add = [&](const QString& a, const QString& d) {
      const int r = t.appendRow();
      return r >= 0 && t.setText(r, QStringLiteral("a"), a) && (d.isEmpty() || t.setText(r, QStringLiteral("d"), d)) &&
             t.setNumber(r, QStringLiteral("therecn"), ++recn);
    };
    for (int k = 0; k < s_.laws; ++k) {
      if (!add(LawName(k) + QStringLiteral("（生成数据）"), QString()))
        return fail(QStringLiteral("dagang.mmd 无法写入"));
      for (int n = 1; n <= std::min(5, s_.articles); ++n)
        if (!add(QStringLiteral("  生成知识点%1").arg(n), LawTitle(k) + QString::number(n) + u'.'))
          return fail(QStringLiteral("dagang.mmd 无法写入"));
    }
    return true;
  }

  bool writeSmallFiles() {
    const int exam = int(QDate(2003, 1, 1).daysTo(s_.today.addDays(200)));
    const QString news = QStringLiteral("[信息]") + kCrLf + QStringLiteral("信息号=gen-1") + kCrLf +
                         QStringLiteral("考试时间=") + QString::number(exam) + kCrLf +
                         QStringLiteral("法条详解=https://mingjing.example.org/bbs/dispbbs.asp") + kCrLf +
                         QStringLiteral("做下一题=https://mingjing.example.org/bbs/nextitem.asp") + kCrLf +
                         QStringLiteral("保留链接1=") + kCrLf + QStringLiteral("保留链接2=") + kCrLf +
                         QStringLiteral("知识点文件个数=0") + kCrLf;
    if (!writeText(QStringLiteral("ini/newlumen.txt"), news)) return false;
    if (!writeText(
            QStringLiteral("readme/autonewer.htm"),
            QStringLiteral("<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=gbk\"></head>"
                           "<body>生成数据</body></html>") +
                kCrLf))
      return false;
    if (!writeText(QStringLiteral("法律文书/生成文书.txt"), QStringLiteral("生成数据") + kCrLf)) return false;
    // A 16 x 16 icon of one colour, written by hand: the program needs one
    // to start.
    QByteArray ico(6 + 16, '\0');
    qToLittleEndian<quint16>(1, ico.data() + 2);
    qToLittleEndian<quint16>(1, ico.data() + 4);
    ico[6] = 16;
    ico[7] = 16;
    qToLittleEndian<quint16>(1, ico.data() + 10);
    qToLittleEndian<quint16>(32, ico.data() + 12);
    QByteArray bmp(40, '\0');
    qToLittleEndian<quint32>(40, bmp.data());
    qToLittleEndian<qint32>(16, bmp.data() + 4);
    qToLittleEndian<qint32>(32, bmp.data() + 8);  // colour and mask rows
    qToLittleEndian<quint16>(1, bmp.data() + 12);
    qToLittleEndian<quint16>(32, bmp.data() + 14);
    for (int p = 0; p < 16 * 16; ++p) bmp.append(QByteArray::fromRawData("\x90\x50\x20\xff", 4));
    bmp.append(QByteArray(16 * 4, '\0'));  // AND mask: 16 rows of 4 bytes
    qToLittleEndian<quint32>(quint32(bmp.size()), ico.data() + 14);
    qToLittleEndian<quint32>(22, ico.data() + 18);
    if (!WriteBytesAtomic(root_ + QStringLiteral("/ini/fa.ico"), ico + bmp))
      return fail(QStringLiteral("fa.ico 无法写入"));
    return true;
  }

  QString root_;
  Sizes s_;
  QString* error_;
  Result* r_;
  int groupAt_ = 0;
};

}  // namespace

Story StoryShapeOf(int i) { return static_cast<Story>(i % kStoryShapes); }

QString StoryText(Story shape, int i, const QString& key, const QDate& today) {
  const QTime at(8 + i % 12, (i * 7) % 60);
  const auto day = [&](int offset) { return QDateTime(today.addDays(offset), at); };
  switch (shape) {
    case Story::Never:
      return QStringLiteral("no");
    case Story::OneRight:
      return RecordEntry(day(-(1 + i % 60)), key);
    case Story::WrongThenRight: {
      const int rights = 1 + i % 3;
      QString s;
      for (int k = 0; k < rights; ++k) s += RecordEntry(day(-(1 + k * 31 + i % 5)), key);  // newest first
      return s + RecordEntry(day(-(1 + rights * 31 + i % 5)), WrongAnswer(key));
    }
    case Story::Eight: {
      QString s;
      for (int k = 0; k < 8; ++k) s += RecordEntry(day(-(2 + k * 35 + i % 3)), key);
      return s;
    }
    case Story::Future:
      return RecordEntry(day(2 + i % 9), key) + RecordEntry(day(1 + i % 9), key);
  }
  return QString();
}

QString FullStoryText(int i, const QString& key, const QDate& today) {
  const QTime at(8 + i % 12, (i * 7) % 60);
  QString s;
  int offset = i % 9;
  for (int k = 0; k < 10; ++k) {
    const bool wrong = k == 9 && i % 2 == 1;
    s += RecordEntry(QDateTime(today.addDays(-offset), at), wrong ? WrongAnswer(key) : key);
    offset += 8 + (i + k) % 3;
  }
  return s;
}

int LongRecords(ItemIndex& index, const QDateTime& newest, int entries, int every, int at) {
  int wrong = 0;
  for (qsizetype i = 0; i < index.size(); ++i) {
    ItemRow& r = index[i];
    if (!r.valid2 || r.itemid.isEmpty()) continue;
    const bool isWrong = every > 0 && i % every == at;
    QString story;
    story.reserve(entries * kEntryLength);
    for (int e = 0; e < entries; ++e)
      story += RecordEntry(newest.addSecs(-3600LL * (e + i % 24)), e == 0 && isWrong ? WrongAnswer(r.answer) : r.answer);
    r.story = story;
    if (isWrong) ++wrong;
  }
  return wrong;
}

bool DueWithDefaults(const QString& story, const QString& key, const QDate& today) {
  Schedule defaults;  // done right once, one more after a wrong answer, 30 days apart
  defaults.today = today;
  QString s = story;
  return IsOkItem(s, defaults, key);
}

QString LawName(int k) { return QStringLiteral("生成法律%1").arg(k + 1); }
QString LawTitle(int k) { return u'《' + LawName(k) + u'》'; }
QString LawCode(int k) { return QString::number(10001 + k); }
int LawType(int k) { return k % 3 + 1; }
QString BankName(int b) { return QString::number(10001 + b / 3) + QString::number(b % 3 + 1); }
QString PaperCode(int p) { return QStringLiteral("%1").arg(p + 1, 5, 10, QChar(u'0')); }

QString UpdatePackage(const Sizes& s, int items, QStringList* ids) {
  static const QStringList kTags = {QString(), QStringLiteral("[单选题]"), QStringLiteral("[多选题]"),
                                    QStringLiteral("[任选题]")};
  static const QStringList kKeys = {QString(), QStringLiteral("C"), QStringLiteral("BD"), QStringLiteral("ACD")};
  QString text = QStringLiteral("生成数据：更新包，%1题（生成数据）").arg(items) + kCrLf;
  const int perBank = std::max(1, s.questions / std::max(1, s.banks));
  for (int k = 0; k < items; ++k) {
    const int b = k % s.banks;
    const int n = 1 + (k / s.banks) % perBank;
    const QString id = BankName(b) + QStringLiteral("%1").arg(n, 5, 10, QChar(u'0'));
    const int type = b % 3 + 1;
    // One law, or two for every third item.
    QList<Cited> cites;
    Cited first;
    first.law = (b / 3) % s.laws;
    first.numbers = {1 + k % s.articles};
    cites.append(first);
    if (k % 3 == 0 && s.laws > 1) {
      Cited second;
      second.law = (first.law + 1) % s.laws;
      second.numbers = {1 + (k * 7) % s.articles};
      cites.append(second);
    }
    text += kCrLf + QStringLiteral("●") + kTags[type] +
            QStringLiteral("生成更新试题%1：根据生成法律，下列说法正确的是(      )").arg(k + 1);
    for (int o = 0; o < 4; ++o)
      text += kCrLf + QChar(u'A' + o) + QStringLiteral("．更新选项%1%2").arg(QChar(u'A' + o)).arg(k + 1);
    text += kCrLf + QStringLiteral("■答案：") + kKeys[type] + QStringLiteral("参见") + CitationText(cites, 1) + kCrLf +
            QStringLiteral("[注释：]生成的更新说明%1。").arg(k + 1) + kCrLf + QStringLiteral("[本题标识ID：][") + id +
            u']' + kCrLf;
    if (ids) ids->append(id);
  }
  return text;
}

bool Generate(const QString& root, const Sizes& sizes, QString* error, Result* result) {
  QString ignored;
  if (!error) error = &ignored;
  if (result) *result = Result();
  if (!QDir().mkpath(root)) {
    *error = QStringLiteral("文件夹 %1 无法建立").arg(root);
    return false;
  }
  Writer w(root, sizes, error, result);
  return w.run();
}

}  // namespace mj::gen
