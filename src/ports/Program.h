#pragma once

#include <string>

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
};

} // namespace tarvik
