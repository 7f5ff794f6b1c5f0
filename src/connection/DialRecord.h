#pragma once

#include "ports/ConnectionProvider.h"

#include <string>

namespace tarvik {

/// The record that an entry is dialled with. The service may put the user's name and password into
/// it: at its end nothing of them stays in memory.
class DialRecord {
public:
    /// For the entry of that name, everything else empty. A name that is too long is cut.
    explicit DialRecord(const std::string& entryName);
    ~DialRecord();
    DialRecord(const DialRecord&) = delete;
    DialRecord& operator=(const DialRecord&) = delete;

    RASDIALPARAMSA& parameters() { return parameters_; }

    /// Overwrites everything; what is shown afterwards may stay open for long.
    void wipe();

private:
    RASDIALPARAMSA parameters_{};
};

} // namespace tarvik
