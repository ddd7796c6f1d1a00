#include "demo_builder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>

#include "bank/tables.h"
#include "folder_writing.h"
#include "knowledge/forum_data.h"
#include "law/citations.h"
#include "law/law_text.h"
#include "law/new_law.h"
#include "law/numerals.h"
#include "law_rules.h"
#include "pictures.h"
#include "platform/dbftable.h"
#include "platform/messagebox.h"
#include "platform/sql_database.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mkdata {

namespace {

using mj::kCrLf;
using mjtools::ArticleHead;
using mjtools::kClasses;
using mjtools::kPaperGroups;
using mjtools::kTypeWords;

const QString kGap = QStringLiteral("(      )");
const QStringList kPaperMarkers = {QString(), QStringLiteral("== 单选题 =="), QStringLiteral("== 多选题 =="),
                                   QStringLiteral("== 任选题 ==")};
const QString kBankMarker = QStringLiteral("== 题 ==");
const QString kNumeralChars = QStringLiteral("零一二三四五六七八九十百千万");

struct Law {
  QString code, title, name, klass;
  int type = 0, paper = 0;
  QChar letter;
  int articles = 0;
  QString text;  // the program's file: CR LF lines, indented
  // A real statute: its Markdown files below the real data folder, in order.
  // It has no bank (code "-") and comes in through the program's own
  // clean-up and adding of a new law.
  QStringList sources;
  bool real() const { return !sources.isEmpty(); }
};

struct Question {
  QString file;
  int line = 0;
  int type = 0;
  QStringList stem;
  QStringList options = QStringList(4);  // A to D
  QString key, cite, note, noteDate;
  QStringList provider;
  bool forum = false;
  int board = 0, topic = 0;
  // Filled when the bank is laid out.
  int serial = 0;
  QString id, aboutlaw, block;
};

// One bank file of the program: an internal bank (six-character name) or a
// simulated paper (five-character code beginning with 0).
struct BankFile {
  QString name;
  bool paper = false;
  int type = 0;  // internal banks: their one type
  QString source;
  QStringList head;
  QList<Question> questions;
};

struct DirRow {
  QString file;
  int line = 0;
  int depth = 0;
  bool heading = false;
  QString label, bank;
  QString b, c;
  int total = 0;
};

struct OutlineRow {
  QString a, d, r, k;
};

bool GbkSafe(const QString& s) { return mj::FromGbk(mj::ToGbk(s)) == s; }

class Builder {
 public:
  Builder(const QString& data, const QString& out, const QString& real, QStringList* errors, QStringList* notes)
      : data_(data), out_(out), real_(real), errors_(errors), notes_(notes) {}

  bool run() {
    if (QDir(out_).exists() && !QDir(out_).isEmpty()) {
      fault(out_, 0, QStringLiteral("输出文件夹不是空的"));
      return false;
    }
    loadLaws();
    loadQuestionFiles();
    layOutBanks();
    loadDirectory(QStringLiteral("directory-banks.txt"), false, &dirBanks_);
    loadDirectory(QStringLiteral("directory-papers.txt"), true, &dirPapers_);
    checkBanksListed();
    loadOutline();
    checkExplanations();
    if (!errors_->isEmpty()) return false;
    writeFolders();
    writeLaws();
    writeBankFiles();
    writeTables();
    writeTrees();
    addRealLaws();
    copyTexts(QStringLiteral("ini"), QStringLiteral("ini"));
    copyTexts(QStringLiteral("readme"), QStringLiteral("readme"));
    copyTexts(QStringLiteral("法律文书"), QStringLiteral("法律文书"));
    copyTexts(QStringLiteral("更新的题"), QStringLiteral("更新的题"));
    copySamples();
    copyTexts(QStringLiteral("知识点"), QStringLiteral("知识点"));
    copyTexts(QStringLiteral("新知识点"), QStringLiteral("新知识点"));
    writeForumDatabase();
    writePictures();
    return errors_->isEmpty();
  }

 private:
  void fault(const QString& file, int line, const QString& msg) {
    errors_->append(line > 0 ? QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(msg)
                             : QStringLiteral("%1: %2").arg(file, msg));
  }

  // A source file as lines without their line ends (UTF-8).
  bool readSource(const QString& rel, QStringList* lines) {
    QFile f(data_ + u'/' + rel);
    if (!f.open(QIODevice::ReadOnly)) {
      fault(rel, 0, QStringLiteral("无法读取"));
      return false;
    }
    const QByteArray bytes = f.readAll();
    const QString text = QString::fromUtf8(bytes);
    if (text.toUtf8() != bytes || text.contains(QChar::ReplacementCharacter)) {
      fault(rel, 0, QStringLiteral("不是有效的 UTF-8 文本"));
      return false;
    }
    *lines = text.split(u'\n');
    for (QString& l : *lines)
      if (l.endsWith(u'\r')) l.chop(1);
    if (!lines->isEmpty() && lines->last().isEmpty()) lines->removeLast();
    return true;
  }

  static bool isCommentOrBlank(const QString& line) { return line.trimmed().isEmpty() || line.startsWith(u'#'); }

  bool writeText(const QString& rel, const QString& text) {
    if (!GbkSafe(text)) {
      fault(rel, 0, QStringLiteral("含有 GBK 不能表示的字符"));
      return false;
    }
    const QString path = out_ + u'/' + rel;
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (!mj::WriteTextAtomic(path, text)) {
      fault(path, 0, QStringLiteral("无法写入"));
      return false;
    }
    return true;
  }

  // ---- laws -------------------------------------------------------------

  void loadLaws() {
    const QString src = QStringLiteral("laws.txt");
    QStringList lines;
    if (!readSource(src, &lines)) return;
    const bool haveReal = !real_.isEmpty() && QDir(real_).exists();
    int skipped = 0;
    for (int i = 0; i < lines.size(); ++i) {
      if (isCommentOrBlank(lines[i])) continue;
      const QStringList f = lines[i].split(u'|');
      if (f.size() != 6 && f.size() != 7) {
        fault(src, i + 1, QStringLiteral("应有6个（真实法律7个）以“|”分隔的字段"));
        continue;
      }
      Law law;
      law.code = f[0].trimmed();
      law.title = f[1].trimmed();
      law.type = f[2].trimmed().toInt();
      law.paper = f[3].trimmed().toInt();
      law.letter = f[4].trimmed().isEmpty() ? QChar() : f[4].trimmed()[0];
      law.klass = f[5].trimmed();
      if (f.size() == 7) law.sources = f[6].trimmed().split(u'+', Qt::SkipEmptyParts);
      static const QRegularExpression code(QStringLiteral("^[1-9][0-9]{4}$"));
      static const QRegularExpression title(QStringLiteral("^《[^《》]+》$"));
      if (law.real() ? law.code != u"-" : !code.match(law.code).hasMatch())
        fault(src, i + 1,
              law.real() ? QStringLiteral("真实法律没有题库，代码应为“-”")
                         : QStringLiteral("题库代码应为不以0开头的五位数字"));
      if (!title.match(law.title).hasMatch()) fault(src, i + 1, QStringLiteral("标题应带书名号"));
      if (law.type < 1 || law.type > 3) fault(src, i + 1, QStringLiteral("条文类型应为1、2或3"));
      if (law.paper < 1 || law.paper > 3) fault(src, i + 1, QStringLiteral("试卷应为1、2或3"));
      if (f[4].trimmed().size() != 1 || law.letter < u'A' || law.letter > u'Z')
        fault(src, i + 1, QStringLiteral("拼音首字母应为一个大写字母"));
      if (!kClasses.contains(law.klass)) fault(src, i + 1, QStringLiteral("未知的类别"));
      law.name = law.title.mid(1, law.title.size() - 2);
      for (const Law& other : laws_)
        if ((!law.real() && other.code == law.code) || other.title == law.title)
          fault(src, i + 1, QStringLiteral("题库代码或标题重复"));
      if (law.real()) {
        // Without the real data the real statutes are left out.
        if (!haveReal) {
          ++skipped;
          continue;
        }
        for (const QString& md : law.sources)
          if (!QFileInfo::exists(real_ + u'/' + md)) fault(src, i + 1, QStringLiteral("没有文件%1").arg(real_ + u'/' + md));
      } else {
        loadLawText(&law);
      }
      laws_.append(law);
    }
    if (laws_.isEmpty()) fault(src, 0, QStringLiteral("没有法律"));
    if (skipped > 0)
      notes_->append(QStringLiteral("没有真实数据文件夹%1，%2部真实法律没有放入示例数据。")
                         .arg(real_.isEmpty() ? QStringLiteral("（未指定）") : real_)
                         .arg(skipped));
  }

  void loadLawText(Law* law) {
    const QString src = QStringLiteral("laws/") + law->name + QStringLiteral(".txt");
    QStringList raw;
    if (!readSource(src, &raw)) return;
    static const QRegularExpression heading(QStringLiteral("^第([零一二三四五六七八九十百千万]+)(编|章|节)(.*)$"));
    static const QRegularExpression article1(QStringLiteral("^第([零一二三四五六七八九十百千万]+)条(.*)$"));
    static const QRegularExpression article3(QStringLiteral("^([0-9]+)．(.*)$"));
    static const QRegularExpression numeralComma(QStringLiteral("^([零一二三四五六七八九十百千万]+)、(.*)$"));
    QString text;
    int expected = 1;
    bool first = true, appendix = false;
    for (int i = 0; i < raw.size(); ++i) {
      const QString line = raw[i];
      const int no = i + 1;
      if (line.trimmed().isEmpty()) continue;
      if (line.contains(u'●') || line.contains(u'■')) fault(src, no, QStringLiteral("不得含有“●”或“■”"));
      if (line != line.trimmed() || line.startsWith(u'　') || line.endsWith(u'　'))
        fault(src, no, QStringLiteral("行首行尾不得有空白"));
      if (first) {
        if (line != law->name) fault(src, no, QStringLiteral("第一行应为标题“%1”").arg(law->name));
        text = line + kCrLf;
        first = false;
        continue;
      }
      text += mj::kLawIndent + line + kCrLf;
      if (appendix) continue;
      if (line.startsWith(QStringLiteral("附件"))) {
        appendix = true;
        continue;
      }
      const auto blankBehind = [&](const QString& rest) {
        if (!rest.startsWith(u' ') || rest.size() < 2 || rest[1] == u' ')
          fault(src, no, QStringLiteral("标题或条号后应恰有一个半角空格"));
      };
      if (auto m = heading.match(line); m.hasMatch()) {
        blankBehind(m.captured(3));
        continue;
      }
      if (auto m = article1.match(line); m.hasMatch()) {
        if (law->type != 1) {
          fault(src, no, QStringLiteral("本法不是第N条形式的条文"));
          continue;
        }
        if (m.captured(1) != mj::DaXie(expected))
          fault(src, no, QStringLiteral("应为%1").arg(ArticleHead(1, expected)));
        blankBehind(m.captured(2));
        ++expected;
        continue;
      }
      if (line.startsWith(u'第') && line.size() > 1 && kNumeralChars.contains(line[1])) {
        fault(src, no, QStringLiteral("以“第”加数字开头的行只能是编、章、节或条"));
        continue;
      }
      if (kNumeralChars.contains(line[0])) {
        const auto m = numeralComma.match(line);
        if (law->type == 2 && m.hasMatch()) {
          if (m.captured(1) != mj::DaXie(expected))
            fault(src, no, QStringLiteral("应为%1").arg(ArticleHead(2, expected)));
          ++expected;
        } else if (law->type == 3 && m.hasMatch()) {
          // a section heading such as 二、合同的订立
        } else if (law->type == 2) {
          // Any line led by numerals ends the program's backward search for
          // the last article of such a text.
          fault(src, no, QStringLiteral("本法中汉字数字开头的行只能是条文"));
        } else if (m.hasMatch()) {
          fault(src, no, QStringLiteral("本法中不能有“二、”这样开头的行"));
        }
        if (m.hasMatch() && m.captured(2).startsWith(u' ')) fault(src, no, QStringLiteral("“、”后不应有空格"));
        continue;
      }
      if (line[0].isDigit()) {
        const auto m = article3.match(line);
        if (law->type != 3 || !m.hasMatch()) {
          fault(src, no, QStringLiteral("数字开头的行只能是“n．”形式的条文"));
          continue;
        }
        if (m.captured(1) != QString::number(expected))
          fault(src, no, QStringLiteral("应为%1").arg(ArticleHead(3, expected)));
        if (m.captured(2).startsWith(u' ') || m.captured(2).isEmpty())
          fault(src, no, QStringLiteral("“．”后应直接是条文"));
        ++expected;
        continue;
      }
    }
    law->articles = expected - 1;
    law->text = text;
    if (law->articles < 2) fault(src, 0, QStringLiteral("条文少于两条"));
    // The program's own reading of the text must agree.
    const int detected = mj::GetLawTextType(text);
    if (detected != law->type)
      fault(src, 0, QStringLiteral("程序会把本文本识别为类型%1，而法律表中写的是%2").arg(detected).arg(law->type));
    else if (mj::LastItemNum(text) != law->articles)
      fault(src, 0,
            QStringLiteral("程序读出的最后一条是第%1条，而本文本有%2条").arg(mj::LastItemNum(text)).arg(law->articles));
  }

  const Law* lawByTitle(const QString& title) const {
    for (const Law& l : laws_)
      if (l.title == title) return &l;
    return nullptr;
  }
  const Law* lawByCode(const QString& code) const {
    for (const Law& l : laws_)
      if (l.code == code) return &l;
    return nullptr;
  }

  // ---- questions --------------------------------------------------------

  void loadQuestionFiles() {
    static const QRegularExpression bankName(QStringLiteral("^([1-9][0-9]{4})([123])$"));
    static const QRegularExpression paperName(QStringLiteral("^0[0-9]{4}$"));
    const QStringList banks =
        QDir(data_ + QStringLiteral("/banks")).entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name);
    for (const QString& f : banks) {
      BankFile bank;
      bank.name = QFileInfo(f).completeBaseName();
      bank.source = QStringLiteral("banks/") + f;
      const auto m = bankName.match(bank.name);
      if (!m.hasMatch()) {
        fault(bank.source, 0, QStringLiteral("题库文件名应为五位题库代码加题型"));
        continue;
      }
      if (!lawByCode(m.captured(1))) fault(bank.source, 0, QStringLiteral("法律表中没有题库代码%1").arg(m.captured(1)));
      bank.type = m.captured(2).toInt();
      parseQuestions(&bank);
      banks_.append(bank);
    }
    const QStringList papers =
        QDir(data_ + QStringLiteral("/papers")).entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name);
    for (const QString& f : papers) {
      BankFile bank;
      bank.name = QFileInfo(f).completeBaseName();
      bank.source = QStringLiteral("papers/") + f;
      bank.paper = true;
      if (!paperName.match(bank.name).hasMatch()) {
        fault(bank.source, 0, QStringLiteral("模拟试卷文件名应为以0开头的五位代码"));
        continue;
      }
      parseQuestions(&bank);
      banks_.append(bank);
    }
  }

  void parseQuestions(BankFile* bank) {
    QStringList lines;
    if (!readSource(bank->source, &lines)) return;
    enum class State { Head, Stem, Options, Keys } state = State::Head;
    Question q;
    int option = 0;
    auto finish = [&]() {
      if (state != State::Head) {
        checkQuestion(q, option);
        bank->questions.append(q);
      }
    };
    for (int i = 0; i < lines.size(); ++i) {
      const QString& line = lines[i];
      const int no = i + 1;
      if (isCommentOrBlank(line)) continue;
      if (line.startsWith(QStringLiteral("== "))) {
        int type = 0;
        if (line == kBankMarker && !bank->paper) type = bank->type;
        for (int t = 1; t <= 3; ++t)
          if (line == kPaperMarkers[t] && (bank->paper || t == bank->type)) type = t;
        if (type == 0) fault(bank->source, no, QStringLiteral("无效的试题开始行"));
        finish();
        q = Question();
        q.file = bank->source;
        q.line = no;
        q.type = type;
        option = 0;
        state = State::Stem;
        continue;
      }
      switch (state) {
        case State::Head:
          bank->head.append(line);
          break;
        case State::Stem:
          if (line.startsWith(QStringLiteral("A．"))) {
            q.options[0] = line.mid(2);
            option = 1;
            state = State::Options;
          } else {
            q.stem.append(line);
          }
          break;
        case State::Options:
          if (line.startsWith(QString(QChar(u'A' + option)) + u'．')) {
            q.options[option] = line.mid(2);
            if (++option == 4) state = State::Keys;
          } else {
            fault(bank->source, no, QStringLiteral("应为选项%1").arg(QChar(u'A' + option)));
          }
          break;
        case State::Keys:
          readKey(bank->source, no, line, &q);
          break;
      }
    }
    finish();
    if (bank->head.isEmpty()) fault(bank->source, 0, QStringLiteral("第一道题之前应有至少一行文字"));
    if (bank->questions.isEmpty()) fault(bank->source, 0, QStringLiteral("没有试题"));
  }

  void readKey(const QString& src, int no, const QString& line, Question* q) {
    const auto value = [&](const QString& key) { return line.mid(key.size()).trimmed(); };
    if (line.startsWith(QStringLiteral("答案："))) {
      q->key = value(QStringLiteral("答案："));
    } else if (line.startsWith(QStringLiteral("参见："))) {
      q->cite = value(QStringLiteral("参见："));
    } else if (line.startsWith(QStringLiteral("注释："))) {
      q->note = value(QStringLiteral("注释："));
    } else if (line.startsWith(QStringLiteral("注于："))) {
      q->noteDate = value(QStringLiteral("注于："));
    } else if (line.startsWith(QStringLiteral("提供者："))) {
      q->provider = value(QStringLiteral("提供者：")).split(u'|');
      if (q->provider.size() != 5) fault(src, no, QStringLiteral("提供者应有5个以“|”分隔的字段"));
    } else if (line.startsWith(QStringLiteral("论坛："))) {
      const QStringList f = value(QStringLiteral("论坛：")).split(u'|');
      q->forum = true;
      q->board = f.size() == 2 ? f[0].toInt() : 0;
      q->topic = f.size() == 2 ? f[1].toInt() : 0;
      if (q->board <= 0 || q->topic <= 0) fault(src, no, QStringLiteral("论坛应为“版块号|主题号”"));
    } else {
      fault(src, no, QStringLiteral("选项之后只能是答案、参见、注释、注于、提供者、论坛"));
    }
  }

  void checkQuestion(const Question& q, int options) {
    const auto bad = [&](const QString& msg) { fault(q.file, q.line, msg); };
    if (q.type == 0) return;
    if (q.stem.isEmpty()) bad(QStringLiteral("没有题干"));
    if (!q.stem.join(QString()).contains(kGap)) bad(QStringLiteral("题干中应有答题括号“(      )”"));
    if (options != 4) bad(QStringLiteral("应有A至D四个选项"));
    for (int k = 0; k < 4; ++k)
      if (q.options[k].trimmed().isEmpty()) bad(QStringLiteral("选项%1为空").arg(QChar(u'A' + k)));
    static const QRegularExpression key(QStringLiteral("^A?B?C?D?$"));
    if (q.key.isEmpty() || !key.match(q.key).hasMatch()) bad(QStringLiteral("答案应为按字母顺序排列的A至D"));
    if (q.type == 1 && q.key.size() != 1) bad(QStringLiteral("单选题的答案只能是一个字母"));
    if (q.type == 2 && q.key.size() < 2) bad(QStringLiteral("多选题的答案至少两个字母"));
    if (!q.cite.startsWith(u'《')) bad(QStringLiteral("参见应以《法律标题》开头"));
    if (q.note.isEmpty() != q.noteDate.isEmpty()) bad(QStringLiteral("注释和注于应同时出现"));
    static const QRegularExpression date(QStringLiteral("^[0-9]{4}年[1-9][0-9]?月[1-9][0-9]?日$"));
    if (!q.noteDate.isEmpty() && !date.match(q.noteDate).hasMatch()) bad(QStringLiteral("注于应为“2026年10月8日”形式"));
    if (!q.provider.isEmpty() && q.provider.size() == 5 && !date.match(q.provider[4]).hasMatch())
      bad(QStringLiteral("提供日期应为“2026年10月8日”形式"));
    static const QRegularExpression digitAfterComma(QStringLiteral("、[0-9第]"));
    if (q.note.contains(u'-') || q.note.contains(u'《') || q.note.contains(u'》') ||
        digitAfterComma.match(q.note).hasMatch())
      bad(QStringLiteral("注释中不得有“-”、书名号或“、”后紧跟数字"));
    QString all = q.stem.join(QString()) + q.key + q.cite + q.note + q.noteDate + q.provider.join(QString());
    for (const QString& o : q.options) all += o;
    if (all.contains(u'●') || all.contains(u'■')) bad(QStringLiteral("不得含有“●”或“■”"));
    if (all.contains(QStringLiteral("?("))) bad(QStringLiteral("不要用“?(”"));
  }

  // Serial numbers, IDs, the bank file's blocks and the flat citation lists.
  void layOutBanks() {
    for (BankFile& bank : banks_) {
      for (int i = 0; i < bank.questions.size(); ++i) {
        Question& q = bank.questions[i];
        q.serial = i + 1;
        const QString code = bank.paper ? bank.name : bank.name.left(5);
        q.id = code + QString::number(q.type) + QStringLiteral("%1").arg(q.serial, 5, 10, QChar(u'0'));
        if (bank.paper && q.forum) fault(q.file, q.line, QStringLiteral("模拟试卷的试题不带论坛字段"));
        const QString field2 = mjtools::AnswerField(q.key, q.cite, q.note, q.noteDate);
        q.block = mjtools::QuestionBlock(q.serial, q.id, q.stem.join(kCrLf), q.options, q.provider, field2);
        q.aboutlaw = mj::LongDaAn(field2);
        checkCitations(q, mj::LongDaAn(QStringLiteral("参见") + q.cite));
      }
    }
  }

  void checkCitations(const Question& q, const QString& citeOnly) {
    const auto bad = [&](const QString& msg) { fault(q.file, q.line, msg); };
    if (q.aboutlaw != citeOnly)
      bad(QStringLiteral("答案栏读出的参见法条与参见行不同：%1 / %2").arg(q.aboutlaw, citeOnly));
    QList<CitationEntry> entries;
    if (q.aboutlaw.isEmpty() || !SplitFlatList(q.aboutlaw, &entries)) {
      bad(QStringLiteral("参见法条无法读出"));
      return;
    }
    for (const CitationEntry& e : entries) {
      const Law* law = lawByTitle(e.title);
      if (!law)
        bad(QStringLiteral("法律表中没有%1").arg(e.title));
      else if (e.number < 1 || e.number > law->articles)
        bad(QStringLiteral("%1共%2条，没有第%3条").arg(e.title).arg(law->articles).arg(e.number));
    }
    if (mj::GbkLength(q.aboutlaw) > 254) bad(QStringLiteral("参见法条太长，超过254字节"));
  }

  const BankFile* bankFile(const QString& name) const {
    for (const BankFile& b : banks_)
      if (b.name == name) return &b;
    return nullptr;
  }

  // Questions of one six-character filename.
  int countOf(const QString& filename) const {
    int n = 0;
    for (const BankFile& b : banks_)
      for (const Question& q : b.questions)
        if (q.id.left(6) == filename) ++n;
    return n;
  }

  // ---- directories ------------------------------------------------------

  void loadDirectory(const QString& src, bool papers, QList<DirRow>* rows) {
    QStringList lines;
    if (!readSource(src, &lines)) return;
    static const QRegularExpression leaf(QStringLiteral("^@([0-9]{6})(?: +(.*))?$"));
    for (int i = 0; i < lines.size(); ++i) {
      if (isCommentOrBlank(lines[i])) continue;
      DirRow row;
      row.file = src;
      row.line = i + 1;
      qsizetype indent = 0;
      while (indent < lines[i].size() && lines[i][indent] == u' ') ++indent;
      const QString text = lines[i].mid(indent).trimmed();
      if (indent % 2 != 0) fault(src, row.line, QStringLiteral("缩进应为两个空格的倍数"));
      row.depth = int(indent / 2);
      const int prevDepth = rows->isEmpty() ? -1 : rows->last().depth;
      if (row.depth > prevDepth + 1) fault(src, row.line, QStringLiteral("缩进跳级"));
      if (!rows->isEmpty() && row.depth > prevDepth && !rows->last().heading)
        fault(src, row.line, QStringLiteral("题库行下面不能再有行"));
      if (const auto m = leaf.match(text); m.hasMatch()) {
        row.bank = m.captured(1);
        row.label = m.captured(2).trimmed();
        if (papers) {
          if (!row.bank.startsWith(u'0')) fault(src, row.line, QStringLiteral("模拟试卷的文件名以0开头"));
          if (!bankFile(row.bank.left(5))) fault(src, row.line, QStringLiteral("没有模拟试卷%1").arg(row.bank.left(5)));
          if (!row.label.contains(QStringLiteral("试卷")))
            fault(src, row.line, QStringLiteral("试卷行的显示名要有“试卷”"));
          row.b = QStringLiteral("\\moniti\\") + row.bank + QStringLiteral(".mmd");
        } else {
          if (!bankFile(row.bank)) fault(src, row.line, QStringLiteral("没有题库%1").arg(row.bank));
          const Law* law = lawByCode(row.bank.left(5));
          if (row.label.isEmpty() && law) row.label = law->title + kTypeWords[row.bank.right(1).toInt()];
          row.b = QStringLiteral("\\yibanti\\") + row.bank + QStringLiteral(".mmd");
        }
        row.total = countOf(row.bank);
        if (row.total == 0) fault(src, row.line, QStringLiteral("%1没有试题").arg(row.bank));
      } else {
        if (text.startsWith(u'@')) fault(src, row.line, QStringLiteral("题库行应为“@”加六位文件名"));
        row.heading = true;
        row.label = text;
      }
      if (row.label.isEmpty()) fault(src, row.line, QStringLiteral("显示名为空"));
      rows->append(row);
    }
    if (rows->isEmpty()) fault(src, 0, QStringLiteral("目录为空"));
    // Heading ranges (grid rows are table rows, from 1) and their sums.
    for (int r = 0; r < rows->size(); ++r) {
      DirRow& row = (*rows)[r];
      if (!row.heading) continue;
      int last = r;
      while (last + 1 < rows->size() && (*rows)[last + 1].depth > row.depth) ++last;
      if (last == r) {
        fault(src, row.line, QStringLiteral("标题下面没有行"));
        continue;
      }
      row.c = QStringLiteral("%1-%2").arg(r + 2).arg(last + 1);
      for (int k = r + 1; k <= last; ++k)
        if (!(*rows)[k].heading) row.total += (*rows)[k].total;
    }
  }

  void checkBanksListed() {
    QHash<QString, int> listed;
    for (const DirRow& r : dirBanks_) listed[r.bank] += r.heading ? 0 : 1;
    for (const DirRow& r : dirPapers_) listed[r.bank] += r.heading ? 0 : 1;
    for (const BankFile& b : banks_) {
      QSet<QString> names;
      for (const Question& q : b.questions) names.insert(q.id.left(6));
      for (const QString& n : names)
        if (listed.value(n) != 1) fault(b.source, 0, QStringLiteral("%1 在目录中应恰好出现一次").arg(n));
    }
  }

  // ---- outline ----------------------------------------------------------

  void loadOutline() {
    const QString src = QStringLiteral("outline.txt");
    QStringList lines;
    if (!readSource(src, &lines)) return;
    for (int i = 0; i < lines.size(); ++i) {
      if (isCommentOrBlank(lines[i])) continue;
      const QStringList f = lines[i].split(u'|');
      if (f.size() != 1 && f.size() != 4) {
        fault(src, i + 1, QStringLiteral("应为“条目”或“条目|参见法条|来源备注|新旧标记”"));
        continue;
      }
      OutlineRow row;
      row.a = f[0];
      while (row.a.endsWith(u' ')) row.a.chop(1);
      if (f.size() == 4) {
        row.d = f[1].trimmed();
        row.r = f[2].trimmed();
        row.k = f[3].trimmed();
      }
      static const QRegularExpression shortCite(QStringLiteral("^(《[^《》]+》)([0-9]+)\\.$"));
      if (!row.d.isEmpty()) {
        const auto m = shortCite.match(row.d);
        const Law* law = m.hasMatch() ? lawByTitle(m.captured(1)) : nullptr;
        if (!law || m.captured(2).toInt() < 1 || m.captured(2).toInt() > law->articles)
          fault(src, i + 1, QStringLiteral("参见法条应为已有法条的短式《标题》n."));
      }
      if (!row.k.isEmpty() && row.k != u"1" && row.k != u"3") fault(src, i + 1, QStringLiteral("新旧标记应为1或3"));
      outline_.append(row);
    }
  }

  // The explanation files of data/知识点 are the default files of their
  // points, \知识点\<therecn>.txt: each must name a leaf of the outline.
  void checkExplanations() {
    const QStringList files = QDir(data_ + QStringLiteral("/知识点")).entryList(QDir::Files, QDir::Name);
    for (const QString& f : files) {
      static const QRegularExpression name(QStringLiteral("^([0-9]+)\\.txt$"));
      const auto m = name.match(f);
      const int n = m.hasMatch() ? m.captured(1).toInt() : 0;
      auto depth = [this](int row) {
        const QString& a = outline_[row - 1].a;
        return a.size() - QString(a).remove(QRegularExpression(QStringLiteral("^ +"))).size();
      };
      const bool leaf = n >= 1 && n <= outline_.size() && (n == outline_.size() || depth(n + 1) <= depth(n));
      if (!leaf) fault(QStringLiteral("知识点/") + f, 0, QStringLiteral("应为大纲中一个知识点（叶子）的记录号.txt"));
    }
  }

  // ---- output -----------------------------------------------------------

  void writeFolders() {
    // A folder that cannot be made shows when the files in it are written.
    mjtools::MakeProgramFolders(out_);
  }

  void writeLaws() {
    for (const Law& law : laws_)
      if (!law.real()) writeText(QStringLiteral("lawtxt/") + law.name + QStringLiteral(".mmd"), law.text);
  }

  // The real statutes come in as a user adds a law: their Markdown through
  // the clean-up and the check, then the law file and the three trees, under
  // their paper, letter and class. They are added last first, as each new law
  // goes to the top of its group, so that the groups list them in list order.
  void addRealLaws() {
    for (qsizetype i = laws_.size() - 1; i >= 0; --i) {
      const Law& law = laws_[i];
      if (law.real()) addRealLaw(law);
    }
  }

  void addRealLaw(const Law& law) {
    const QString src = QStringLiteral("laws.txt: ") + law.title;
    QStringList parts;
    for (const QString& md : law.sources) {
      QFile f(real_ + u'/' + md);
      if (!f.open(QIODevice::ReadOnly)) {
        fault(src, 0, QStringLiteral("无法读取%1").arg(f.fileName()));
        return;
      }
      parts << QString::fromUtf8(f.readAll());
    }
    mj::ScriptedBoxes boxes;
    mj::Env env;
    env.root = out_;
    env.boxes = &boxes;
    mj::NewLawWizard wizard(env);
    const QString text = mj::JoinMarkdownParts(parts);
    wizard.view = text;
    wizard.clean();
    if (!wizard.checked) {
      // The check names an article spelled the textbook way (民法典 第一千零一十条);
      // the heading is respelled as a user would respell it, and cleaned again.
      boxes.clear();
      wizard.view = mj::RespellArticleHeads(text);
      wizard.clean();
    }
    const QList<mj::BoxRecord> cleaned = boxes.take();
    if (!wizard.checked || cleaned.size() != 2 || cleaned[0].text != mj::DetectedTypeText(law.type)) {
      fault(src, 0,
            QStringLiteral("整理没有通过：%1").arg(cleaned.isEmpty() ? QString() : cleaned.last().text));
      return;
    }
    wizard.classify();
    wizard.setCombo(1, mj::PaperChoices()[law.paper - 1]);
    wizard.setCombo(2, mj::LetterChoices()[law.letter.unicode() - u'A']);
    wizard.setCombo(3, mj::ClassChoices()[kClasses.indexOf(law.klass)]);
    wizard.setTitle(law.title);
    boxes.answer(mj::box::Yes);
    if (!wizard.enabled[3] || !wizard.add()) {
      const QList<mj::BoxRecord> shown = boxes.take();
      fault(src, 0, QStringLiteral("没有加入：%1").arg(shown.isEmpty() ? QString() : shown.last().text));
      return;
    }
    const int detected = mj::GetLawTextType(wizard.view);
    if (detected != law.type)
      fault(src, 0, QStringLiteral("程序会把本文本识别为类型%1，而法律表中写的是%2").arg(detected).arg(law.type));
  }

  void writeBankFiles() {
    for (const BankFile& b : banks_) {
      QString text = b.head.join(kCrLf);
      for (const Question& q : b.questions) text += kCrLf + q.block;
      text += kCrLf;
      const QString rel =
          (b.paper ? QStringLiteral("moniti/") : QStringLiteral("yibanti/")) + b.name + QStringLiteral(".mmd");
      writeText(rel, text);
    }
  }

  bool checkTable(const mj::DbfTable& t) {
    if (!t.isOpen()) fault(t.path(), 0, t.error());
    return t.isOpen();
  }

  void writeItems(const QString& rel, bool papers) {
    mj::DbfTable t = mj::DbfTable::create(out_ + u'/' + rel, mj::tables::ItemFields(!papers));
    if (!checkTable(t)) return;
    for (const BankFile& b : banks_) {
      if (b.paper != papers) continue;
      for (const Question& q : b.questions) {
        // Paper questions never carry forum fields (checked when laid out).
        const mjtools::ItemRecord item{q.id, QStringLiteral("no"), q.key, q.aboutlaw, q.type, q.board, q.topic};
        if (!mjtools::AppendItemRecord(t, item)) fault(rel, 0, QStringLiteral("无法写入试题%1").arg(q.id));
      }
    }
    t.close();
  }

  void writeDirectory(const QString& rel, const QList<DirRow>& rows) {
    mj::DbfTable t = mj::DbfTable::create(out_ + u'/' + rel, mj::tables::DirectoryFields());
    if (!checkTable(t)) return;
    for (int i = 0; i < rows.size(); ++i) {
      const DirRow& row = rows[i];
      // Nothing done yet: every question is due.
      if (!mjtools::AppendDirectoryRecord(t, {row.label, row.b, row.c, row.total, 0, 0, row.total}))
        fault(rel, 0, QStringLiteral("无法写入第%1行").arg(i + 1));
    }
    t.close();
  }

  void writeTables() {
    writeItems(QStringLiteral("dbf/items.mmd"), false);
    writeItems(QStringLiteral("dbf/csitems.mmd"), true);
    writeDirectory(QStringLiteral("dbf/33ok.mmd"), dirBanks_);
    writeDirectory(QStringLiteral("dbf/csface.mmd"), dirPapers_);
    {
      mj::DbfTable t = mj::DbfTable::create(out_ + QStringLiteral("/dbf/33.mmd"), mj::tables::LawNameFields());
      if (checkTable(t))
        for (const Law& law : laws_) {
          if (law.real()) continue;  // no bank, no row: as a law the user adds
          const int r = t.appendRow();
          if (r < 0 || !t.setText(r, QStringLiteral("lawname"), law.title) ||
              !t.setText(r, QStringLiteral("filename"), QStringLiteral("\\yibanti\\") + law.code))
            fault(QStringLiteral("dbf/33.mmd"), 0, QStringLiteral("无法写入"));
        }
    }
    {
      mj::DbfTable t = mj::DbfTable::create(out_ + QStringLiteral("/dbf/listbox.mmd"), mj::tables::LawListFields());
      if (checkTable(t))
        for (const Law& law : laws_) {
          const int r = t.appendRow();
          if (r < 0 || !t.setText(r, QStringLiteral("lawname"), law.title) ||
              !t.setNumber(r, QStringLiteral("f"), law.paper) ||
              !t.setText(r, QStringLiteral("c"), QString(law.letter)) ||
              !t.setNumber(r, QStringLiteral("lei"), kClasses.indexOf(law.klass) + 1))
            fault(QStringLiteral("dbf/listbox.mmd"), 0, QStringLiteral("无法写入"));
        }
    }
    {
      mj::DbfTable t = mj::DbfTable::create(out_ + QStringLiteral("/dbf/dagang.mmd"), mj::tables::OutlineFields());
      if (checkTable(t))
        for (int i = 0; i < outline_.size(); ++i) {
          const OutlineRow& o = outline_[i];
          const int r = t.appendRow();
          bool ok = r >= 0 && t.setText(r, QStringLiteral("a"), o.a);
          ok = ok && (o.d.isEmpty() || t.setText(r, QStringLiteral("d"), o.d));
          ok = ok && (o.r.isEmpty() || t.setText(r, QStringLiteral("r"), o.r));
          ok = ok && t.setNumber(r, QStringLiteral("therecn"), i + 1);
          ok = ok && (o.k.isEmpty() || t.setText(r, QStringLiteral("k"), o.k));
          if (!ok) fault(QStringLiteral("dbf/dagang.mmd"), 0, QStringLiteral("无法写入第%1行").arg(i + 1));
        }
    }
  }

  // The forum database \dbf\db6.db with the laws' rows in lawinfo (board
  // by the law's class) and the boards 5 to 19 in board, all counters 0.
  void writeForumDatabase() {
    static const QHash<QString, int> boardOfClass = {
        {QStringLiteral("宪法"), 8},   {QStringLiteral("民法"), 17},         {QStringLiteral("行政法"), 16},
        {QStringLiteral("刑法"), 14},  {QStringLiteral("商法"), 18},         {QStringLiteral("经济法"), 9},
        {QStringLiteral("国际（经济）法"), 12}, {QStringLiteral("律师法"), 13}};
    const QString rel = QStringLiteral("dbf/db6.db");
    mj::SqlConnection c;
    mj::SqlTarget target;
    target.database = out_ + u'/' + rel;
    QString error;
    if (!c.open(target, &error)) {
      fault(rel, 0, error);
      return;
    }
    QSqlDatabase db = c.db();
    QSqlQuery q(db);
    for (const QString& table : mj::ForumTableNames())
      if (!q.exec(mj::CreateTableSql(table, db.driverName()))) fault(rel, 0, q.lastError().text());
    db.transaction();
    q.prepare(QStringLiteral("INSERT INTO lawinfo (a, a1, c, firsttid) VALUES (?, ?, ?, 0)"));
    for (const Law& law : laws_) {
      q.bindValue(0, law.title);
      q.bindValue(1, law.code);
      q.bindValue(2, QString::number(boardOfClass.value(law.klass, 6)));
      if (!q.exec()) fault(rel, 0, q.lastError().text());
    }
    q.prepare(QStringLiteral("INSERT INTO board (boardid, lastbbsnum, lasttopicnum, todaynum) VALUES (?, 0, 0, 0)"));
    for (int board = mj::kTotalsBoard; board <= mj::kLastBoard; ++board) {
      q.bindValue(0, board);
      if (!q.exec()) fault(rel, 0, q.lastError().text());
    }
    if (!db.commit()) fault(rel, 0, db.lastError().text());
  }

  static QString fileLine(const Law& law) { return mjtools::TreeFileLine(law.name); }

  // The law tree files. A group heading gets the file line of its first law
  // in front, so that even the heading's tag names a law that exists. The
  // groups are those of every law; the real statutes are entered into them
  // afterwards (addRealLaws), as the program enters a new law.
  void writeTrees() {
    QString byPaper;
    for (int p = 1; p <= 3; ++p) {
      QList<const Law*> group;
      for (const Law& l : laws_)
        if (l.paper == p) group.append(&l);
      if (group.isEmpty()) continue;
      byPaper += fileLine(*group[0]) + kPaperGroups[p - 1] + kCrLf;
      for (const Law* l : group)
        if (!l->real()) byPaper += fileLine(*l) + QStringLiteral("    ") + l->title + kCrLf;
    }
    writeText(QStringLiteral("ini/shijuan.mmd"), byPaper);

    QList<const Law*> sorted;
    for (const Law& l : laws_)
      if (!l.real()) sorted.append(&l);
    std::stable_sort(sorted.begin(), sorted.end(), [](const Law* a, const Law* b) { return a->letter < b->letter; });
    QString byLetter;
    for (const Law* l : sorted) byLetter += fileLine(*l) + l->letter + u' ' + l->title + kCrLf;
    writeText(QStringLiteral("ini/zimu.mmd"), byLetter);

    QString byClass;
    for (const QString& k : kClasses) {
      QList<const Law*> group;
      for (const Law& l : laws_)
        if (l.klass == k) group.append(&l);
      if (group.isEmpty()) continue;
      byClass += fileLine(*group[0]) + k + kCrLf;
      for (const Law* l : group)
        if (!l->real()) byClass += fileLine(*l) + QStringLiteral("    ") + l->title + kCrLf;
    }
    writeText(QStringLiteral("ini/leibie.mmd"), byClass);
  }

  // A text source as the program's file: GBK, CR LF.
  bool copyText(const QString& fromRel, const QString& toRel) {
    QStringList lines;
    if (!readSource(fromRel, &lines)) return false;
    for (const QString& l : lines)
      if (l.contains(u'\r')) return false;
    return writeText(toRel, lines.join(kCrLf) + kCrLf);
  }

  void copyTexts(const QString& from, const QString& to) {
    const QStringList files = QDir(data_ + u'/' + from).entryList(QDir::Files, QDir::Name);
    if (files.isEmpty()) fault(from, 0, QStringLiteral("文件夹为空"));
    for (const QString& f : files) copyText(from + u'/' + f, to + u'/' + f);
  }

  // The program copies the samples into the paper folder when it makes that
  // folder; the folder ships made, so the copies ship with it.
  void copySamples() {
    copyText(QStringLiteral("ini/sample1.ini"), QStringLiteral("外部题库/外部题库试样1.txt"));
    copyText(QStringLiteral("ini/sample2.ini"), QStringLiteral("外部题库/外部题库试样2.txt"));
    // Further sample papers of the team, such as one with typical faults.
    copyTexts(QStringLiteral("外部题库"), QStringLiteral("外部题库"));
  }

  void writePictures() {
    QString error;
    if (!WritePictures(out_ + QStringLiteral("/ini"), &error)) fault(QStringLiteral("ini"), 0, error);
  }

  QString data_, out_, real_;
  QStringList* errors_;
  QStringList* notes_;
  QList<Law> laws_;
  QList<BankFile> banks_;
  QList<DirRow> dirBanks_, dirPapers_;
  QList<OutlineRow> outline_;
};

}  // namespace

bool BuildDemo(const QString& dataDir, const QString& outDir, const QString& realDataDir, QStringList* errors,
               QStringList* notes) {
  errors->clear();
  QStringList dropped;
  Builder b(dataDir, outDir, realDataDir, errors, notes ? notes : &dropped);
  return b.run();
}

}  // namespace mkdata
