#pragma once

class QFileDialog;

namespace tarvik::face {

/// Lets the dialog tell of each turn of direction in the name of a file or folder, wherever it
/// shows one: no name can be read as another one. The names themselves stay: that of a file while
/// it is changed in its box or in the list, and all that are chosen.
void showNamesPlainly(QFileDialog& dialog);

} // namespace tarvik::face
