#pragma once

#include <chrono>

namespace tarvik::face {

/// How long the holder of a selection may keep silent on a display that takes so long for one
/// question and its answer: 100 ms, and the ways of the question and the answer through a display
/// that is far away; at most a second.
std::chrono::milliseconds longestSilence(std::chrono::microseconds roundTrip);

/// False where the program that holds that selection of the X display ("CLIPBOARD", "PRIMARY") does
/// not say within `longestSilence` what it has; true where it does, or where nobody holds it. Must
/// not be asked for a selection of this process, which would have to answer itself.
bool selectionOwnerAnswers(const char* selection);

} // namespace tarvik::face
