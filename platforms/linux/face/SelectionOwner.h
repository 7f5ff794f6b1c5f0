#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace tarvik::face {

/// How long the holder of a selection may keep silent on a display that takes so long for one
/// question and its answer: 100 ms, and the ways of the questions and the answers through a display
/// that is far away; at most a second.
std::chrono::milliseconds longestSilence(std::chrono::microseconds roundTrip);

/// The text (UTF-8) that is in that selection of the X display ("CLIPBOARD", "PRIMARY"), "" for
/// none; nothing where the program that holds it has not said within `longestSilence` what it has,
/// and given it, all at once. A text of more than some hundred thousand bytes, which would come in
/// pieces, is taken for one that does not come. Must not be asked for a selection of this process,
/// which would have to answer itself.
std::optional<std::string> textOfSelection(const char* selection);

} // namespace tarvik::face
