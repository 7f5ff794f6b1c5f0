#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// Whether this process may do what the user who started it may not, or the other way round: its
/// file gives it another user, another group or more rights.
bool hasOtherRightsThanItsUser();

/// Starts the program of that path, which lies in a folder that may answer late or never, without
/// waiting for more than two forks: a process of nobody's, in a session of its own, with no open
/// file, no signal blocked or ignored, and nothing to read from or write to. It has the environment
/// of this process with the variables in it, but for what told this process how it was started.
/// True when such a process is there; whether it finds the program is told to nobody.
bool startProgram(const std::string& path,
                  const std::vector<std::pair<std::string, std::string>>& variables);

} // namespace tarvik
