#pragma once

namespace tarvik::face {

/// False where the program that holds that selection of the X display ("CLIPBOARD", "PRIMARY") does
/// not say within 100 ms what it has; true where it does, or where nobody holds it. Must not be
/// asked for a selection of this process, which would have to answer itself.
bool selectionOwnerAnswers(const char* selection);

} // namespace tarvik::face
