#pragma once

#include <string>

namespace tarvik::faults {

/// The exit status of a process that a fault ended, and of one in which it could not happen.
constexpr int cutStatus = 99;
constexpr int impossibleStatus = 86;

/// From here on the file-system calls of this process that touch the folder (or flush its parent)
/// are counted, and the fault happens. `shadow` is an empty folder beside it. Faults are:
///
///     count                    nothing
///     kill N                   the process ends before call N
///     killhalf N               the same, in the middle of call N, which writes
///     cut N KEPT LOSS          as the power cut that `Disk::cut` describes, before call N
///     cutflush N KEPT LOSS     the same, before call N of those that flush a file's bytes alone
///     fail N ERROR TIMES       call N, and as many as TIMES tells, fails with that error number
///     failkill N ERROR M       call N fails, the process ends before call M
///     short N TIMES            call N, which reads or writes, moves half of what it should
///     full N                   the same, then every call that writes finds the disk full
///     vanish N                 the folder is renamed by ".gone" before call N
void arm(const std::string& folder, const std::string& shadow, const std::string& fault);
/// No more faults, no more counting.
void disarm();
/// Names of the calls counted so far, in order, with a blank after each.
std::string callsNamed();
/// The fault has happened.
bool happened();
/// One call more, which does nothing: a fault may still come after the last that does something.
void finish();

} // namespace tarvik::faults
