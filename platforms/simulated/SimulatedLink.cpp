#include "simulated/SimulatedLink.h"

#include "common/RasErrorText.h"
#include "common/RasRecords.h"
#include "common/SteadyClock.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <thread>

namespace tarvik {

namespace {

constexpr std::uint32_t frameBytes = 1460;

void sleepMilliseconds(std::uint64_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

const SimulatedEntry* entryNamed(const char* name) {
    const auto& entries = simulatedPhoneBook();
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const SimulatedEntry& entry) {
            return std::string_view(entry.name) == name;
        });
    return found == entries.end() ? nullptr : &*found;
}

std::vector<RasEntry> entriesOfPhoneBook() {
    std::vector<RasEntry> entries;
    for (const SimulatedEntry& entry : simulatedPhoneBook()) {
        entries.push_back({.name = entry.name});
    }
    return entries;
}

std::uint32_t frames(std::uint64_t bytes) {
    return static_cast<std::uint32_t>((bytes + frameBytes - 1) / frameBytes);
}

} // namespace

SimulatedLink::SimulatedLink(std::uint64_t seed)
    : SimulatedLink(seed, steadyMilliseconds, sleepMilliseconds) {}

SimulatedLink::SimulatedLink(std::uint64_t seed, Now now, Sleep sleep)
    : seed_(seed), now_(std::move(now)), sleep_(std::move(sleep)) {}

std::uint32_t SimulatedLink::RasEnumEntriesA(const char*, const char*, void* buffer,
                                             std::uint32_t* bytes, std::uint32_t* count) {
    const std::uint32_t recordSize = sizeFieldOf(buffer);
    if (recordSize != RASENTRYNAMEA::size && recordSize != RASENTRYNAMEA_264::size) {
        return ras::invalidSize;
    }
    return listEntries(entriesOfPhoneBook(), buffer, bytes, count);
}

std::uint32_t SimulatedLink::RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                                 std::uint32_t* count) {
    if (buffer->dwSize != RASCONNA::size) {
        return ras::invalidSize;
    }
    const std::uint32_t held = *bytes;
    *count = static_cast<std::uint32_t>(lines_.size());
    *bytes = *count * RASCONNA::size;
    if (held < *bytes) {
        return ras::bufferTooSmall;
    }
    for (const Line& line : lines_) {
        buffer->dwSize = RASCONNA::size;
        buffer->hrasconn = line.handle;
        putText(buffer->szEntryName, line.entry->name);
        putText(buffer->szDeviceType, line.entry->deviceType);
        putText(buffer->szDeviceName, line.entry->deviceName);
        ++buffer;
    }
    return ras::success;
}

std::uint32_t SimulatedLink::RasGetConnectStatusA(std::uint32_t handle, RASCONNSTATUSA* status) {
    if (status->dwSize != RASCONNSTATUSA::size) {
        return ras::invalidSize;
    }
    const Line* line = lineOf(handle);
    if (line == nullptr) {
        return ras::invalidHandle;
    }
    status->rasconnstate = ras::connected;
    status->dwError = 0;
    putText(status->szDeviceType, line->entry->deviceType);
    putText(status->szDeviceName, line->entry->deviceName);
    return ras::success;
}

std::uint32_t SimulatedLink::RasGetConnectionStatistics(std::uint32_t handle,
                                                        RAS_STATS* statistics) {
    if (statistics->dwSize != RAS_STATS::size) {
        return ras::invalidSize;
    }
    Line* line = lineOf(handle);
    if (line == nullptr) {
        return ras::invalidHandle;
    }
    const std::uint64_t age = stillAge_.value_or(now_() - line->connectedAt);
    const TrafficBytes bytes = line->traffic.at(age);
    *statistics = {};
    statistics->dwSize = RAS_STATS::size;
    // The counters of the interface have 32 bits and wrap.
    statistics->dwBytesRcved = static_cast<std::uint32_t>(bytes.rcvd);
    statistics->dwBytesXmited = static_cast<std::uint32_t>(bytes.sent);
    statistics->dwFramesRcved = frames(bytes.rcvd);
    statistics->dwFramesXmited = frames(bytes.sent);
    statistics->dwCompressionRatioIn = 100;
    statistics->dwCompressionRatioOut = 100;
    statistics->dwBps = line->entry->bitsPerSecond;
    statistics->dwConnectDuration = static_cast<std::uint32_t>(age);
    return ras::success;
}

std::uint32_t SimulatedLink::RasGetEntryDialParamsA(const char*, RASDIALPARAMSA* parameters,
                                                    bool* passwordFound) {
    if (parameters->dwSize != RASDIALPARAMSA::size) {
        return ras::invalidSize;
    }
    const SimulatedEntry* entry = entryNamed(parameters->szEntryName);
    if (entry == nullptr) {
        return ras::unknownEntry;
    }
    putText(parameters->szUserName, entry->userName);
    putText(parameters->szPassword, "simulated");
    *passwordFound = true;
    return ras::success;
}

std::uint32_t SimulatedLink::RasDialA(RASDIALEXTENSIONS* extensions, const char*,
                                      RASDIALPARAMSA* parameters, std::uint32_t, void*,
                                      std::uint32_t* handle) {
    if (extensions->dwSize != RASDIALEXTENSIONS::size ||
        parameters->dwSize != RASDIALPARAMSA::size) {
        return ras::invalidSize;
    }
    const SimulatedEntry* entry = entryNamed(parameters->szEntryName);
    if (entry == nullptr) {
        return ras::unknownEntry;
    }
    const auto running = std::find_if(lines_.begin(), lines_.end(),
                                      [&](const Line& line) { return line.entry == entry; });
    if (running != lines_.end()) {
        *handle = running->handle;
        return ras::success;
    }
    sleep_(entry->dialMilliseconds);
    if (entry->dialCode == ras::success) {
        *handle = connect(*entry);
    }
    return entry->dialCode;
}

std::uint32_t SimulatedLink::RasHangUpA(std::uint32_t handle) {
    const Line* line = lineOf(handle);
    if (line == nullptr) {
        return ras::invalidHandle;
    }
    lines_.erase(lines_.begin() + (line - lines_.data()));
    return ras::success;
}

std::uint32_t SimulatedLink::RasGetErrorStringA(std::uint32_t code, char* buffer,
                                                std::uint32_t size) {
    return answerErrorText(rasErrorText(code), buffer, size);
}

SimulatedLink::Line* SimulatedLink::lineOf(std::uint32_t handle) {
    const auto found = std::find_if(lines_.begin(), lines_.end(),
                                    [&](const Line& line) { return line.handle == handle; });
    return found == lines_.end() ? nullptr : &*found;
}

std::uint32_t SimulatedLink::connect(const SimulatedEntry& entry) {
    ++sessions_;
    lines_.push_back({.handle = sessions_,
                      .entry = &entry,
                      .connectedAt = now_(),
                      .traffic = SimulatedTraffic(entry.traffic, seed_ + sessions_)});
    return sessions_;
}

} // namespace tarvik
