#pragma once
// Puts the text style of the settings on a text box: font name, italic,
// bold, size, then text colour and background colour. The main window uses
// it for its question box, the settings window for its sample text.

#include "settings/settings.h"

class QWidget;

namespace mj {

void ApplyTextStyle(QWidget* box, const TextStyle& style);

}  // namespace mj
