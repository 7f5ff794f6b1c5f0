#include "windows/services/WindowsConnections.h"

#include <algorithm>
#include <cstring>

namespace tarvik {

namespace {

/// By the kind of device that the service names.
bool isTunnel(const RASCONNA& record) {
    constexpr std::size_t withItsEnd = 4;
    return _strnicmp(record.szDeviceType, "vpn", withItsEnd) == 0;
}

} // namespace

template <class... Parameters>
std::uint32_t WindowsConnections::call(const char* function, Parameters... parameters) {
    using Function = std::uint32_t WINAPI(Parameters...);
    Function* const found = library_.function<Function>(function);
    return found == nullptr ? moduleNotFound : found(parameters...);
}

std::uint32_t WindowsConnections::RasEnumEntriesA(const char* reserved, const char* phoneBook,
                                                  void* buffer, std::uint32_t* bytes,
                                                  std::uint32_t* count) {
    const std::uint32_t code = call("RasEnumEntriesA", reserved, phoneBook, buffer, bytes, count);
    if (code == moduleNotFound) {
        // No room needed means no entries, which is no error: the program starts without any.
        *bytes = 0;
        *count = 0;
    }
    return code;
}

std::uint32_t WindowsConnections::RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                                      std::uint32_t* count) {
    *count = 0;
    const std::uint32_t code = call("RasEnumConnectionsA", buffer, bytes, count);
    if (code == ras::success) {
        settle(buffer, bytes, count);
    }
    return code == ras::bufferTooSmall && *count == 0 ? countConnections(bytes, count) : code;
}

bool WindowsConnections::isBeingMade(const RASCONNA& record) {
    RASCONNSTATUSA status{};
    status.dwSize = RASCONNSTATUSA::size;
    // What cannot be asked about stays listed: the program asks again and tells.
    return RasGetConnectStatusA(record.hrasconn, &status) == ras::success &&
           status.rasconnstate != ras::connected;
}

void WindowsConnections::settle(RASCONNA* records, std::uint32_t* bytes, std::uint32_t* count) {
    RASCONNA* const up = std::remove_if(records, records + *count,
                                        [this](const RASCONNA& one) { return isBeingMade(one); });
    *count = static_cast<std::uint32_t>(up - records);
    *bytes = *count * RASCONNA::size;
    RASCONNA* const lines = std::stable_partition(records, up, isTunnel);
    tunnels_.clear();
    for (const RASCONNA* one = records; one != lines; ++one) {
        tunnels_.push_back(one->hrasconn);
    }
    dialledLine_ = lines == up ? 0 : (up - 1)->hrasconn;
}

/// The service does not tell what a tunnel runs through. A line that is dialled takes the default
/// route, so that a tunnel beside it is taken to lie within it.
std::uint32_t WindowsConnections::carrierOf(std::uint32_t handle) {
    const bool tunnel = std::find(tunnels_.begin(), tunnels_.end(), handle) != tunnels_.end();
    return tunnel ? dialledLine_ : 0;
}

std::uint32_t WindowsConnections::countConnections(std::uint32_t* bytes, std::uint32_t* count) {
    std::vector<RASCONNA> room(*bytes / RASCONNA::size + 1);
    room[0].dwSize = RASCONNA::size;
    auto held = static_cast<std::uint32_t>(room.size() * RASCONNA::size);
    const std::uint32_t code = call("RasEnumConnectionsA", room.data(), &held, count);
    if (code != ras::success) {
        return code;
    }
    *bytes = *count * RASCONNA::size;
    return *count == 0 ? ras::success : ras::bufferTooSmall;
}

std::uint32_t WindowsConnections::RasGetConnectStatusA(std::uint32_t handle,
                                                       RASCONNSTATUSA* status) {
    return call("RasGetConnectStatusA", handle, status);
}

std::uint32_t WindowsConnections::RasGetConnectionStatistics(std::uint32_t handle,
                                                             RAS_STATS* statistics) {
    return call("RasGetConnectionStatistics", handle, statistics);
}

std::uint32_t WindowsConnections::RasGetEntryDialParamsA(const char* phoneBook,
                                                         RASDIALPARAMSA* parameters,
                                                         bool* passwordFound) {
    BOOL found = FALSE;
    const std::uint32_t code = call("RasGetEntryDialParamsA", phoneBook, parameters, &found);
    *passwordFound = found != FALSE;
    return code;
}

std::uint32_t WindowsConnections::RasDialA(RASDIALEXTENSIONS* extensions, const char* phoneBook,
                                           RASDIALPARAMSA* parameters, std::uint32_t notifierType,
                                           void* notifier, std::uint32_t* handle) {
    const std::uint32_t before = *handle;
    const std::uint32_t code =
        call("RasDialA", extensions, phoneBook, parameters, notifierType, notifier, handle);
    if (code != ras::success && *handle != before && *handle != 0) {
        // The service keeps the line busy for a failed dial until it is hung up.
        call("RasHangUpA", *handle);
    }
    return code;
}

std::uint32_t WindowsConnections::RasHangUpA(std::uint32_t handle) {
    return call("RasHangUpA", handle);
}

std::uint32_t WindowsConnections::RasGetErrorStringA(std::uint32_t code, char* buffer,
                                                     std::uint32_t size) {
    return call("RasGetErrorStringA", code, buffer, size);
}

} // namespace tarvik
