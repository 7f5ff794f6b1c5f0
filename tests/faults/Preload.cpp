// The same faults for a built program from outside: loaded before its libraries, told by its
// environment.
//
//     TARVIK_FAULT_FOLDER   the folder to watch; beside it FOLDER.shadow, empty
//     TARVIK_FAULT          the fault
//     TARVIK_FAULT_CALLS    a file that gets the names of the calls when the program ends by itself

#include "faults/Interposer.h"

#include <cstdlib>
#include <fstream>

namespace {

struct Preload {
    Preload() {
        const char* const folder = std::getenv("TARVIK_FAULT_FOLDER");
        const char* const fault = std::getenv("TARVIK_FAULT");
        if (folder != nullptr && fault != nullptr) {
            tarvik::faults::arm(folder, std::string(folder) + ".shadow", fault);
        }
    }
    ~Preload() {
        if (const char* const calls = std::getenv("TARVIK_FAULT_CALLS")) {
            const std::string named = tarvik::faults::callsNamed();
            tarvik::faults::disarm();
            std::ofstream(calls) << named << '\n';
        }
    }
};

const Preload preload;

} // namespace
