#pragma once

#include <string>

namespace tarvik {

/// False where a session manager takes the connection and then says nothing it should; true where
/// it greets and answers a first request, several times, or where none takes the connection. Waits
/// for its answers without end. `addresses` is what SESSION_MANAGER holds; only those of this
/// machine are tried.
bool sessionManagerGreets(const std::string& addresses);

} // namespace tarvik
