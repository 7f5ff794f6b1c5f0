#pragma once

#include <cstdint>
#include <string>

namespace tarvik {

/// What reading a log with another parser came to: times in milliseconds.
struct LogReading {
    double load = 0;
    double values = 0;    ///< of all records, after that
    std::int64_t sum = 0; ///< of their bytes and milliseconds; tells whether all were read
};

/// Reads all values of all records with GLib's parser of key files.
LogReading readByKeyFile(const std::string& file, int records);

/// The same with Python's configparser, in a process of its own. The script is put into `folder`.
LogReading readByConfigParser(const std::string& file, const std::string& folder);

} // namespace tarvik
