#pragma once

#include <string>
#include <vector>

namespace tarvik::faults {

/// The exit status of a process that a fault ended.
constexpr unsigned cutStatus = 99;

/// From here on the file calls of this program to the system are counted, and the fault happens.
/// Faults are:
///
///     count                   nothing
///     kill N                  the process ends before call N
///     killhalf N              the same, in the middle of call N, if it writes
///     cut N                   as the power cut that loses all data not flushed, before call N
///     fail N ERROR TIMES      call N, and as many as TIMES tells, fails with that error number
///     short N TIMES           call N, if it writes or reads, moves half of what it should
void arm(const std::string& fault);
void disarm();
/// Names of the calls counted since the last `arm`, in order.
std::vector<std::string> callsNamed();
/// The name of the call that the fault struck first; empty when it struck none.
std::string callStruck();
/// One call more, which does nothing: a cut may still come after the last that does something.
void finish();

} // namespace tarvik::faults
