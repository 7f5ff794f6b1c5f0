#pragma once

#include "linux/services/FileDescriptor.h"

#include <string>

namespace tarvik {

/// A connection to the socket of that path, or of that name where it begins with a NUL; an empty
/// one where nobody listens.
FileDescriptor connectTo(const std::string& path);

} // namespace tarvik
