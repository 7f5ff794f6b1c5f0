#pragma once

#include <string>
#include <vector>

namespace tarvik {

/// The program's start: asks about another instance, locks the file, loads the windows, reads the
/// command line and initialises everything. On return the program runs for as long as its main
/// window is loaded; if it is not, there is nothing to run.
void Main();

/// Splits the command line at blanks outside double quotes. Element 0 is empty, the arguments are
/// elements 1 and up, `MaxArgs` of them at most; the rest of the line is ignored. With `QuoteAware`
/// double quotes group and are dropped.
std::vector<std::string> ParseArgs(bool QuoteAware, int MaxArgs);

/// Sets `ArgRun`, `ArgMinimise` and `ArgHelp` from the command line and warns about any other
/// switch.
void InitArgs();

/// Shows the help if it was asked for.
void OperateArgs();

/// Fills the windows, the state and the notification area and looks for connections. True to go on
/// running; false when that was done before, or when the user chose to end after a failure.
bool InitApplication();

/// Writes every default, then loads what was stored.
void InitApplicationStatus();

} // namespace tarvik
