#pragma once

class QFileDialog;

namespace tarvik::face {

/// Lets the dialog tell what is not seen in the name of a file or folder, or breaks its line, by
/// its number, wherever it shows one: no name can be read as another one. The names themselves
/// stay: that of a file while it is changed in its box or in the list, and all that are chosen.
void showNamesPlainly(QFileDialog& dialog);

} // namespace tarvik::face
