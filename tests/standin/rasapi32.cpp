#include "StandIn.h"
#include "windows/services/SystemHeader.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace tarvik {
namespace {

/// For a program that is worked from outside: entries named in the environment, separated by
/// semicolons.
void addEntriesOfEnvironment(ScriptedConnections& service) {
    const char* const names = std::getenv("TARVIK_STANDIN_ENTRIES");
    std::string rest = names == nullptr ? "" : names;
    while (!rest.empty()) {
        const std::size_t end = rest.find(';');
        service.entries.push_back({.name = rest.substr(0, end)});
        rest.erase(0, end == std::string::npos ? end : end + 1);
    }
}

StandIn& service() {
    static StandIn* const only = [] {
        auto* made = new StandIn;
        addEntriesOfEnvironment(*made);
        return made;
    }();
    return *only;
}

/// Worked from outside, a line may be up that outlives the program: since that moment on the
/// system's count of milliseconds, with 10 bytes received in each.
void followLineOfEnvironment() {
    static std::uint32_t handle = 0;
    const char* const since = std::getenv("TARVIK_STANDIN_UP_SINCE");
    if (since == nullptr || service().entries.empty()) {
        return;
    }
    handle = handle == 0 ? service().connect(service().entries.front().name) : handle;
    if (auto* const line = service().connection(handle)) {
        const auto lasted = static_cast<std::uint32_t>(GetTickCount64() - std::stoull(since));
        line->statistics.dwConnectDuration = lasted;
        line->statistics.dwBytesRcved = 10 * lasted;
    }
}

/// Worked from outside, a line carries 1,000 bytes in and 100 out between two questions.
void flow(std::uint32_t handle) {
    constexpr std::uint32_t received = 1000;
    constexpr std::uint32_t sent = 100;
    constexpr std::uint32_t milliseconds = 100;
    if (std::getenv("TARVIK_STANDIN_ENTRIES") != nullptr && service().connection(handle)) {
        service().transfer(handle, received, sent, milliseconds);
    }
}

} // namespace

#define STANDIN extern "C" __declspec(dllexport)

STANDIN StandIn* TarvikStandIn() {
    return &service();
}

STANDIN std::uint32_t WINAPI RasEnumEntriesA(const char* reserved, const char* phoneBook,
                                             void* buffer, std::uint32_t* bytes,
                                             std::uint32_t* count) {
    service().reserved = reserved;
    service().phoneBook = phoneBook;
    return service().RasEnumEntriesA(reserved, phoneBook, buffer, bytes, count);
}

STANDIN std::uint32_t WINAPI RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                                 std::uint32_t* count) {
    followLineOfEnvironment();
    const bool roomForOne = *bytes >= RASCONNA::size;
    const std::uint32_t countBefore = *count;
    std::uint32_t code = service().RasEnumConnectionsA(buffer, bytes, count);
    if (service().countsWhatItWrote && (code == ras::bufferTooSmall || !roomForOne)) {
        *bytes = std::max(*bytes, RASCONNA::size);
        *count = countBefore;
        code = ras::bufferTooSmall;
    }
    return code;
}

STANDIN std::uint32_t WINAPI RasGetConnectStatusA(std::uint32_t handle, RASCONNSTATUSA* status) {
    return service().RasGetConnectStatusA(handle, status);
}

STANDIN std::uint32_t WINAPI RasGetConnectionStatistics(std::uint32_t handle,
                                                        RAS_STATS* statistics) {
    if (std::getenv("TARVIK_STANDIN_UP_SINCE") == nullptr) {
        flow(handle);
    }
    return service().RasGetConnectionStatistics(handle, statistics);
}

STANDIN std::uint32_t WINAPI RasGetEntryDialParamsA(const char* phoneBook,
                                                    RASDIALPARAMSA* parameters, BOOL* password) {
    bool found = false;
    service().phoneBook = phoneBook;
    const std::uint32_t code = service().RasGetEntryDialParamsA(phoneBook, parameters, &found);
    *password = found ? TRUE : FALSE;
    return code;
}

STANDIN std::uint32_t WINAPI RasDialA(RASDIALEXTENSIONS* extensions, const char* phoneBook,
                                      RASDIALPARAMSA* parameters, std::uint32_t notifierType,
                                      void* notifier, std::uint32_t* handle) {
    service().phoneBook = phoneBook;
    service().notifierType = notifierType;
    service().notifier = notifier;
    return service().RasDialA(extensions, phoneBook, parameters, notifierType, notifier, handle);
}

STANDIN std::uint32_t WINAPI RasHangUpA(std::uint32_t handle) {
    return service().RasHangUpA(handle);
}

STANDIN std::uint32_t WINAPI RasGetErrorStringA(std::uint32_t code, char* buffer,
                                                std::uint32_t size) {
    return service().RasGetErrorStringA(code, buffer, size);
}

} // namespace tarvik
