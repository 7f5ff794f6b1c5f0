#pragma once

namespace tarvik {

/// The orderly end: stops the timer, saves the state (if the defaults were ever written), clears
/// the lock flag, unloads the other windows, removes the icon from the notification area and lets
/// the single-instance object go.
void ShutDown();

} // namespace tarvik
