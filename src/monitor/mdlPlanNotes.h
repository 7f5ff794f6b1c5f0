#pragma once

#include "plan/Plan.h"

#include <vector>

namespace tarvik {

// What is said of a plan, as its thresholds ask for it.

/// Thresholds that are reached at the same time, the lowest first: starts the program of each, and
/// shows one note and one window, of the highest that has one.
void SayThresholds(int Number, const std::vector<Threshold>& Said);

/// What the plan's warning window tells is done with: it tells what came meanwhile, or is closed.
void CloseWarning();

/// A new connection was hung up, as the plan is used up.
void SayBlocked(int Number);

} // namespace tarvik
