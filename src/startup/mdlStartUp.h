#pragma once

namespace tarvik {

/// The program's start: asks about another instance, locks the file, loads the windows, reads the
/// command line and initialises everything. On return the program runs for as long as its main
/// window is loaded; if it is not, there is nothing to run.
void Main();

/// Fills the windows, the state and the notification area and looks for connections. True to go on
/// running; false when that was done before, or when the user chose to end after a failure.
bool InitApplication();

/// Writes every default, then loads what was stored.
void InitApplicationStatus();

} // namespace tarvik
