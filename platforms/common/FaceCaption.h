#pragma once

#include <string>

namespace tarvik::face {

/// A caption whose mnemonic letter is marked by `&` before it, as toolkits want it; marks in the
/// caption itself are doubled, so that they are shown as they are. 0 marks nothing.
std::string markedCaption(const std::string& caption, char mnemonic);

} // namespace tarvik::face
