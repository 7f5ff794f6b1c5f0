#pragma once

#include <string>

namespace sdbus {
class Message;
} // namespace sdbus

namespace tarvik {

/// A text from a message's header, as `headerOf(message, &sdbus::Message::getSender)`; "" where
/// there is none. The library would make a text of nothing, and its exception would pass through
/// what calls back and knows of none.
std::string headerOf(const sdbus::Message& message, std::string (sdbus::Message::*read)() const);

} // namespace tarvik
