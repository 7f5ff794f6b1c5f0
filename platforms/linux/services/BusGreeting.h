#pragma once

#include <string>

namespace tarvik {

/// False where something takes the connection at that D-Bus address and does not greet as a bus
/// should; waits for it without end. True where the toolkit finds out at once that none is there,
/// and for everything that is no socket of this machine.
bool busGreets(const std::string& address);

} // namespace tarvik
