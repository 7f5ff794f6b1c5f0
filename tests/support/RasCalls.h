#pragma once

#include "ports/ConnectionProvider.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvik {

/// What a dial of that entry is asked with.
inline RASDIALPARAMSA parametersFor(const std::string& entry) {
    RASDIALPARAMSA parameters{};
    parameters.dwSize = RASDIALPARAMSA::size;
    entry.copy(parameters.szEntryName, sizeof parameters.szEntryName - 1);
    return parameters;
}

/// Dials an entry and waits; the error number, and the connection's handle.
inline std::uint32_t dialEntry(ConnectionProvider& by, const std::string& entry,
                               std::uint32_t& handle) {
    RASDIALEXTENSIONS extensions{};
    extensions.dwSize = RASDIALEXTENSIONS::size;
    RASDIALPARAMSA parameters = parametersFor(entry);
    return by.RasDialA(&extensions, nullptr, &parameters, 0, nullptr, &handle);
}

/// The counters of a connection that is up.
inline RAS_STATS statisticsOf(ConnectionProvider& line, std::uint32_t handle) {
    RAS_STATS statistics{};
    statistics.dwSize = RAS_STATS::size;
    EXPECT_EQ(line.RasGetConnectionStatistics(handle, &statistics), ras::success);
    return statistics;
}

} // namespace tarvik
