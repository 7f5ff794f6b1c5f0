// An exception that nobody catches ends the program. The library's own way of that names its type
// first, where nobody reads it, and brings along a translator of such names and all that prints
// them, of 70 KB.

#include <cstdlib>

namespace __gnu_cxx {

void __verbose_terminate_handler(); // NOLINT(bugprone-reserved-identifier): the library's

void __verbose_terminate_handler() { // NOLINT(bugprone-reserved-identifier)
    std::abort();
}

} // namespace __gnu_cxx
