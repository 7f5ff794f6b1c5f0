#pragma once

#include <string>
#include <vector>

namespace tarvik {

/// Where the toolkit will look for the input method IBus.
struct InputMethodPlaces {
    bool wanted = false;              ///< no other method is to be used, and not none
    std::string file;                 ///< the file with its address, "" where it is to be found
    std::string folder;               ///< in which it is found
    std::vector<std::string> endings; ///< one of these ends its name
};

/// As the environment tells; to be asked while no other thread changes that.
InputMethodPlaces inputMethodPlaces();

/// False where the input method is wanted and one that runs there does not greet as a bus should
/// and answer a question on it: waits for that without end. True where another or none is wanted,
/// or none runs.
bool inputMethodGreets(const InputMethodPlaces& places);

} // namespace tarvik
