#pragma once

#include <cstddef>

namespace tarvik {

/// What the program holds by `new`, in bytes as they were asked for.
std::size_t bytesHeld();

/// The most that was held at any time since `forgetMostBytes`.
std::size_t mostBytesHeld();
void forgetMostBytes();

} // namespace tarvik
