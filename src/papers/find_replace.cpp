#include "papers/find_replace.h"

#include <algorithm>

#include "papers/pair_list.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

FindOutcome EmptyFind() {
  FindOutcome r;
  r.kind = FindOutcome::Empty;
  r.message = kFindEmpty;
  return r;
}

}  // namespace

FindOutcome FindReplace::searchFrom(const QString& target, const QString& find, qsizetype from) {
  FindOutcome r;
  const qsizetype hit = InStr(std::max<qsizetype>(from, 1), target, find);
  if (hit == 0) {
    p = 0;
    r.kind = FindOutcome::AtEnd;
    r.message = kFindAtEnd;
    return r;
  }
  p = hit;
  r.kind = FindOutcome::Selected;
  r.selStart = p - 1;
  r.selLength = Len(find);
  return r;
}

FindOutcome FindReplace::findNext(const QString& target, const QString& find) {
  if (find.isEmpty()) return EmptyFind();
  return searchFrom(target, find, p + 1);
}

FindOutcome FindReplace::replace(const QString& target, const QString& find, const QString& repl) {
  if (find.isEmpty()) return EmptyFind();
  // The current hit is replaced as it stands; with no hit yet (p 0) the
  // replacement goes in at the very front.
  const QString insert = ExpandLineEnds(repl);
  const qsizetype start = p >= 1 ? p - 1 : 0;
  const qsizetype length = p >= 1 ? std::min(Len(find), Len(target) - start) : 0;
  QString after = target;
  after.replace(std::min(start, Len(target)), std::max<qsizetype>(length, 0), insert);
  FindOutcome r = searchFrom(after, find, p + Len(insert));
  r.edited = true;
  r.editStart = std::min(start, Len(target));
  r.editLength = std::max<qsizetype>(length, 0);
  r.editText = insert;
  return r;
}

FindOutcome FindReplace::replaceAll(const QString& target, const QString& find, const QString& repl) const {
  if (find.isEmpty()) return EmptyFind();
  FindOutcome r;
  const QString what = ExpandLineEnds(find);
  const qsizetype count = CountOf(target, what);
  if (count == 0) {
    r.kind = FindOutcome::NotFound;
    r.message = QStringLiteral("未搜索到“") + find + QStringLiteral("”。");
    return r;
  }
  r.kind = FindOutcome::Replaced;
  r.wholeText = true;
  r.text = ReplaceAll(target, what, ExpandLineEnds(repl));
  r.message = QStringLiteral("已完成全部替换，共替换") + CStr(count) + QStringLiteral("处。");
  return r;
}

QString SpecialCharText(const QString& entry) {
  if (entry == QStringLiteral("回车符")) return QStringLiteral("^p");
  if (entry == QStringLiteral("全角空格")) return QStringLiteral("\u3000");
  return Trim(entry);
}

}  // namespace mj
