#include "windows/services/WindowsConnections.h"

namespace tarvik {

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
        *bytes = 0;
        *count = 0;
    }
    return code;
}

std::uint32_t WindowsConnections::RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                                      std::uint32_t* count) {
    const std::uint32_t code = call("RasEnumConnectionsA", buffer, bytes, count);
    if (code == moduleNotFound) {
        *count = 0;
    }
    return code;
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
