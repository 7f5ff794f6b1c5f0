// The same faults for a built program from outside: loaded before its libraries, told by its
// environment.
//
//     TARVIK_FAULT_FOLDER   the folder to watch; beside it FOLDER.shadow, empty
//     TARVIK_FAULT          the fault

#include "faults/Interposer.h"

#include <cstdlib>
#include <string>

namespace {

struct Preload {
    Preload() {
        const char* const folder = std::getenv("TARVIK_FAULT_FOLDER");
        const char* const fault = std::getenv("TARVIK_FAULT");
        if (folder != nullptr && fault != nullptr) {
            tarvik::faults::arm(folder, std::string(folder) + ".shadow", fault);
        }
    }
};

const Preload preload;

} // namespace
