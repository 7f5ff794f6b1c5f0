#pragma once

#include "linux/services/FileDescriptor.h"

#include <string>
#include <string_view>

namespace tarvik {

/// A connection to the socket of that path, or of that name where it begins with a NUL; an empty
/// one where nobody listens.
FileDescriptor connectTo(const std::string& path);

/// Sends it all; false when whoever listened has gone, which is no signal to this program.
bool sendTo(const FileDescriptor& file, std::string_view bytes);

} // namespace tarvik
