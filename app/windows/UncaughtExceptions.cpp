// An exception that nobody catches ends the program. The library's own way of that names its type
// first, where nobody reads it, and brings along a translator of such names, of 46 KB.

#include <cstdlib>
#include <exception>

namespace __cxxabiv1 { // NOLINT(bugprone-reserved-identifier): the library's, which this replaces

extern std::terminate_handler __terminate_handler;       // NOLINT(bugprone-reserved-identifier)
std::terminate_handler __terminate_handler = std::abort; // NOLINT(bugprone-reserved-identifier)

} // namespace __cxxabiv1
