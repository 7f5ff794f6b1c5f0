#pragma once

namespace tarvik {

/// Within a tick, after its lines have been read: what the thresholds of the plans ask for, each
/// once in a period, and the end of what comes up after the last one. Then shows how the plans
/// stand.
void CheckPlans();

} // namespace tarvik
