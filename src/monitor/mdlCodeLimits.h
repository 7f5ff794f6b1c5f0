#pragma once

namespace tarvik {

/// Tells of each further step of transfer in a balloon, and warns or hangs up when the transfer or
/// the time that was counted exceeds its limit. Once for every tick with a connection that is up.
void CheckLimits();

} // namespace tarvik
