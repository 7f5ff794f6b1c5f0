#pragma once

#include <string>
#include <vector>

namespace tarvik {

/// Splits the command line at blanks outside double quotes. Element 0 is empty, the arguments are
/// elements 1 and up, `MaxArgs` of them at most; the rest of the line is ignored. With `QuoteAware`
/// double quotes group and are dropped.
std::vector<std::string> ParseArgs(bool QuoteAware, int MaxArgs);

/// Sets `ArgRun`, `ArgMinimise` and `ArgHelp` from the command line and warns about any other
/// switch.
void InitArgs();

/// Shows the help if it was asked for.
void OperateArgs();

} // namespace tarvik
