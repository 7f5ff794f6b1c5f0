#include "scripted/ScriptedConnections.h"

#include "common/RasErrorText.h"
#include "common/RasRecords.h"

#include <algorithm>
#include <cstring>

namespace tarvik {

namespace {

/// The text in a field of a record; without a NUL the whole field is filled.
template <std::size_t size>
void fill(char (&field)[size], std::string_view text, bool withNul) {
    putText(field, text);
    if (!withNul) {
        std::memset(field, 'x', size);
        text.copy(field, size);
    }
}

} // namespace

void ScriptedConnections::failNext(const std::string& operation, std::uint32_t code) {
    failures_[operation].push_back(code);
}

std::uint32_t ScriptedConnections::called(const std::string& operation) {
    calls.push_back(operation);
    std::deque<std::uint32_t>& codes = failures_[operation];
    if (codes.empty()) {
        return ras::success;
    }
    const std::uint32_t code = codes.front();
    codes.pop_front();
    return code;
}

int ScriptedConnections::countOf(const std::string& operation) const {
    return static_cast<int>(std::count(calls.begin(), calls.end(), operation));
}

std::uint32_t ScriptedConnections::connect(const std::string& entryName) {
    Connection made;
    made.handle = ++lastHandle_;
    made.entryName = entryName;
    connections.push_back(made);
    return made.handle;
}

void ScriptedConnections::disconnect(std::uint32_t handle) {
    std::erase_if(connections, [&](const Connection& line) { return line.handle == handle; });
    marks.erase(handle);
}

ScriptedConnections::Connection* ScriptedConnections::connection(std::uint32_t handle) {
    const auto found = std::find_if(connections.begin(), connections.end(),
                                    [&](const Connection& line) { return line.handle == handle; });
    return found == connections.end() ? nullptr : &*found;
}

void ScriptedConnections::transfer(std::uint32_t handle, std::uint32_t rcvd, std::uint32_t sent,
                                   std::uint32_t milliseconds) {
    RAS_STATS& statistics = connection(handle)->statistics;
    statistics.dwBytesRcved += rcvd;
    statistics.dwBytesXmited += sent;
    statistics.dwConnectDuration += milliseconds;
}

std::uint32_t ScriptedConnections::RasEnumEntriesA(const char*, const char*, void* buffer,
                                                   std::uint32_t* bytes, std::uint32_t* count) {
    if (const std::uint32_t code = called("RasEnumEntriesA")) {
        return code;
    }
    if (!entrySizes.contains(sizeFieldOf(buffer))) {
        return ras::invalidSize;
    }
    return listEntries(entries, buffer, bytes, count);
}

std::uint32_t ScriptedConnections::RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                                       std::uint32_t* count) {
    if (const std::uint32_t code = called("RasEnumConnectionsA")) {
        return code;
    }
    readSinceListed_.clear();
    if (buffer->dwSize != RASCONNA::size) {
        return ras::invalidSize;
    }
    const std::uint32_t held = *bytes;
    sizesOffered.push_back(held);
    *count = static_cast<std::uint32_t>(connections.size());
    *bytes = *count * RASCONNA::size;
    if (held < *bytes || neverSatisfied) {
        if (asksForOneMore) {
            *bytes = std::min(*bytes, held + RASCONNA::size);
        }
        return ras::bufferTooSmall;
    }
    for (const Connection& line : connections) {
        buffer->dwSize = RASCONNA::size;
        buffer->hrasconn = line.handle;
        fill(buffer->szEntryName, line.entryName, !namesWithoutNul);
        fill(buffer->szDeviceType, line.deviceType, !namesWithoutNul);
        fill(buffer->szDeviceName, line.deviceName, !namesWithoutNul);
        ++buffer;
    }
    return ras::success;
}

std::uint32_t ScriptedConnections::RasGetConnectStatusA(std::uint32_t handle,
                                                        RASCONNSTATUSA* status) {
    if (const std::uint32_t code = called("RasGetConnectStatusA")) {
        return code;
    }
    if (status->dwSize != RASCONNSTATUSA::size) {
        return ras::invalidSize;
    }
    const Connection* line = connection(handle);
    if (line == nullptr) {
        return ras::invalidHandle;
    }
    if (line->statusFailure != 0) {
        return line->statusFailure;
    }
    status->rasconnstate = line->state;
    status->dwError = ras::success;
    fill(status->szDeviceType, line->deviceType, !namesWithoutNul);
    fill(status->szDeviceName, line->deviceName, !namesWithoutNul);
    return ras::success;
}

std::uint32_t ScriptedConnections::RasGetConnectionStatistics(std::uint32_t handle,
                                                              RAS_STATS* statistics) {
    if (const std::uint32_t code = called("RasGetConnectionStatistics")) {
        return code;
    }
    if (statistics->dwSize != RAS_STATS::size) {
        return ras::invalidSize;
    }
    const Connection* line = connection(handle);
    if (line == nullptr) {
        return ras::invalidHandle;
    }
    if (line->statisticsFailure != 0) {
        return line->statisticsFailure;
    }
    readSinceListed_.insert(handle);
    *statistics = line->statistics;
    statistics->dwSize = RAS_STATS::size;
    return ras::success;
}

bool ScriptedConnections::hasEntry(const char* name) const {
    constexpr std::size_t longest = sizeof(RASDIALPARAMSA::szEntryName) - 1;
    return std::any_of(entries.begin(), entries.end(),
                       [&](const Entry& entry) { return entry.name.substr(0, longest) == name; });
}

std::optional<Traffic> ScriptedConnections::lineTotals(std::uint32_t handle) {
    const Connection* line = connection(handle);
    return line == nullptr ? std::nullopt : line->totals;
}

std::uint32_t ScriptedConnections::carrierOf(std::uint32_t handle) {
    const Connection* line = connection(handle);
    return line == nullptr || connection(line->carrier) == nullptr ? 0 : line->carrier;
}

std::uint32_t ScriptedConnections::RasGetEntryDialParamsA(const char*, RASDIALPARAMSA* parameters,
                                                          bool* passwordFound) {
    parametersAsked.push_back(*parameters);
    recordOfDial = parameters;
    if (const std::uint32_t code = called("RasGetEntryDialParamsA")) {
        putText(parameters->szPassword, "secret"); // as one does that fails late
        return code;
    }
    if (parameters->dwSize != RASDIALPARAMSA::size) {
        return ras::invalidSize;
    }
    if (!hasEntry(parameters->szEntryName)) {
        return ras::unknownEntry;
    }
    putText(parameters->szUserName, "user");
    putText(parameters->szPassword, "secret");
    *passwordFound = true;
    return ras::success;
}

std::uint32_t ScriptedConnections::RasDialA(RASDIALEXTENSIONS* extensions, const char*,
                                            RASDIALPARAMSA* parameters, std::uint32_t, void*,
                                            std::uint32_t* handle) {
    dialled.push_back(*parameters);
    extensionsSeen.push_back(*extensions);
    if (whileDialling) {
        whileDialling();
    }
    if (const std::uint32_t code = called("RasDialA")) {
        if (handleOfFailedDial != 0) {
            *handle = handleOfFailedDial;
        }
        return code;
    }
    if (extensions->dwSize != RASDIALEXTENSIONS::size ||
        parameters->dwSize != RASDIALPARAMSA::size) {
        return ras::invalidSize;
    }
    if (!hasEntry(parameters->szEntryName)) {
        return ras::unknownEntry;
    }
    const auto running =
        std::find_if(connections.begin(), connections.end(), [&](const Connection& line) {
            return joinsRunning && line.entryName == parameters->szEntryName;
        });
    *handle = running == connections.end() ? connect(parameters->szEntryName) : running->handle;
    return ras::success;
}

std::uint32_t ScriptedConnections::RasHangUpA(std::uint32_t handle) {
    if (const std::uint32_t code = called("RasHangUpA")) {
        return code;
    }
    if (connection(handle) == nullptr) {
        return ras::invalidHandle;
    }
    disconnect(handle);
    return ras::success;
}

std::uint32_t ScriptedConnections::RasGetErrorStringA(std::uint32_t code, char* buffer,
                                                      std::uint32_t size) {
    const auto own = errorTexts.find(code);
    return answerErrorText(own != errorTexts.end() ? own->second.c_str() : rasErrorText(code),
                           buffer, size);
}

} // namespace tarvik
