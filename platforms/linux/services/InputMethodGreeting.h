#pragma once

namespace tarvik {

/// False where the input method IBus is wanted and one that runs does not say a word when it is
/// greeted: waits for that without end. True where another or none is wanted, or none runs.
bool inputMethodGreets();

} // namespace tarvik
