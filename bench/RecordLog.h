#pragma once

#include <string>

namespace tarvik {

/// The name of that record's section, one minute after the record before it.
std::string recordName(int number);

/// A file as the program leaves it after so many saves, with a new address at every twentieth.
std::string logOf(int records);

} // namespace tarvik
