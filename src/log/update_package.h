#pragma once
// Question update packages: taking a corrected or new question into the
// question tables.

#include <QString>

#include "platform/env.h"

namespace mj {

// Adds or refreshes the row of question `id` in \dbf\items.mmd (in
// \dbf\csitems.mmd for an ID that begins with "0") from the question's text:
// a new row gets the fixed values of a new question; then the practice
// record is reset to "no" and the citation, the answer key and the type are
// taken from the text. `type` 0 takes the type from the text's type tag.
// False when the table cannot be opened or written.
bool AltItemRow(const Env& env, const QString& id, const QString& text, int type = 0);

}  // namespace mj
