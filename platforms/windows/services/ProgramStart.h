#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// Full path of a program of its own, by its form: neither a script, which another program would
/// read, nor a name that would be searched for.
bool isProgramPath(const std::wstring& path);

/// What a process is given as its environment: that of this one with the variables in it, in the
/// order that the system wants, with a NUL behind each and one more at the end. Names are the same
/// in capitals and in small letters.
std::wstring
environmentBlockWith(const std::vector<std::pair<std::wstring, std::wstring>>& variables);

/// Starts the program of that path, which lies in a folder that may answer late or never, without
/// waiting for it: a thread of its own does. True when that is under way; whether it finds the
/// program is told to nobody. One that has only just begun ends with this process.
bool startProgram(const std::wstring& path, std::wstring environment);

} // namespace tarvik
