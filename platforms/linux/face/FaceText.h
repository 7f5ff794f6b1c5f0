#pragma once

#include <QString>

#include <string>

class QWidget;

namespace tarvik::face {

/// The program's texts are bytes; what is no valid UTF-8 is shown with replacement characters, and
/// what is not seen, as what turns the direction of writing, by its number: names from outside
/// stand in many texts. The text itself remains in the model, and nothing takes it back from what
/// is shown.
QString shown(const std::string& text);

/// The same for a text that the user may change, and that is taken back: as it stands.
QString changeable(const std::string& text);

/// The name of a file that the toolkit shows by itself, in one line: what is not seen, or breaks
/// the line, by its number.
QString shownName(const QString& name);

/// As `shown`, for texts of messages: a carriage return, alone or with a line feed, breaks the
/// line.
QString shownLines(const std::string& text);

/// The same for a text that the user may change.
QString changeableLines(const std::string& text);

/// What the user entered, as the program's bytes.
std::string entered(const QString& text);

/// A caption whose mnemonic letter is marked; marks in the caption itself are shown as they are.
QString withMnemonic(const std::string& caption, char mnemonic);

/// A tool tip broken into lines of a comfortable length.
QString wrappedTip(const std::string& tip);

/// Object name for style and tests; with TARVIK_TEST_IDS=1 in the environment also an accessible
/// description by which a program outside finds the widget.
void identify(QWidget& widget, const std::string& name);

/// True when widgets carry the description for tests.
bool testIdsWanted();

} // namespace tarvik::face
