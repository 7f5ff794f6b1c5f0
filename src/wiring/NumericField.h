#pragma once

#include "controls/Controls.h"
#include "types/Currency.h"
#include "types/Long.h"

#include <string>

namespace tarvik {

/// What every numeric field of a dialog does: coming to it selects its whole text, and a key that
/// leaves no number in it is undone. What is undone to is the number that stood there when the key
/// went down.
///
/// `remembered` keeps that number; it is `standard` where the field held none.
void connectNumericField(TextBox& field, Long& remembered, Long standard);
/// The same for a field whose number is an amount; it is remembered as a whole one.
void connectNumericField(TextBox& field, Currency& remembered, Long standard);

/// True for a text that, without the blanks around it, is a number of the user's locale. A text
/// that is none makes the system beep; an empty one does not.
bool ValidValue(const TextBox& Field);

} // namespace tarvik
