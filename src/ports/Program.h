#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// The running program itself.
class Program {
public:
    virtual ~Program() = default;

    /// The folder that holds the program's file of settings and records: the program's own folder
    /// where the platform lets the user write there. Full path; ends with the separator only for a
    /// root. It need not exist until something is written there.
    virtual std::string folder() = 0;

    /// What separates folders in a path.
    virtual char pathSeparator() = 0;

    /// Everything after the program's name, as one text.
    virtual std::string commandLine() = 0;

    /// Starts another program without a shell and without waiting for it: its file may lie on a
    /// disk that does not answer. It is given no arguments, no open file of this program, the
    /// user's own environment and the variables in it, names and values, of which the caller checks
    /// the names; what it writes goes nowhere, and its end is told to nobody.
    ///
    /// False where nothing is started as far as is known at once: the path is not a full one, or of
    /// a kind that another program would have to read where the system tells that by the name; a
    /// text holds a NUL; this process has other rights than the user who started it; the system has
    /// no room for one more process. True says that the start is under way: a file that is not
    /// there, or that the user may not run, is found out later, and told to nobody.
    virtual bool launch(const std::string& path,
                        const std::vector<std::pair<std::string, std::string>>& variables) = 0;
};

} // namespace tarvik
