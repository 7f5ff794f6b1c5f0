#pragma once

#include <string>

namespace tarvik {

/// The INI file that the program leaves after so many days of use from 1 January 2024 on: one
/// session a day, its addresses logged, the totals reset at the end of each month.
std::string iniAfterDays(int days);

} // namespace tarvik
