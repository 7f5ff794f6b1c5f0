#pragma once

#include <string>

namespace tarvik {

/// Lets the user pick a file of settings and records; its full path, or "" for none.
std::string ShowIniFileDialog();

} // namespace tarvik
