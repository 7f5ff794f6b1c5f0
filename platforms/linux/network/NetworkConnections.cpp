#include "linux/network/NetworkConnections.h"

#include "common/RasErrorText.h"
#include "common/RasRecords.h"
#include "common/SteadyClock.h"
#include "linux/network/LinkAge.h"
#include "linux/network/ReasonCodes.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace tarvik {

namespace {

/// The kind of device as the remote-access service names it.
const char* deviceTypeOf(const std::string& type) {
    if (type == "gsm" || type == "cdma" || type == "bluetooth") {
        return "modem";
    }
    return type == "vpn" || type == "wireguard" ? "vpn" : "pppoe";
}

/// The device as a person would name it.
std::string deviceNameOf(const NetworkLine& line) {
    const std::string kind = line.type == "gsm" || line.type == "cdma" ? "Mobile broadband"
                             : line.type == "bluetooth"                ? "Bluetooth phone"
                             : line.type == "wireguard"                ? "WireGuard"
                             : line.type == "vpn"                      ? "VPN"
                                                                       : "DSL";
    return line.interface.empty() ? kind : kind + " " + line.interface;
}

/// Of what the program is told.
constexpr auto isUp = [](const auto& session) {
    return session.line.state == line_state::activated;
};

/// The record's counters wrap as the service's own do.
std::uint32_t wrapped(std::uint64_t number) {
    return static_cast<std::uint32_t>(number);
}

using Clock = std::chrono::steady_clock;

/// How long profiles are read for whoever waits for the list, or names one that has not been read.
constexpr std::chrono::milliseconds readingForUser{1500};

/// Milliseconds that an address seems older than it is.
constexpr std::uint64_t inexact = 1000;

/// How long a connection may be up before its interface is known. Some never have one.
constexpr std::uint64_t interfaceDelay = 2000; // milliseconds

/// Whether the interface had an address at that moment of the steady time; nothing where it has
/// none now.
std::optional<bool> hadAddressAt(std::uint32_t index, std::uint64_t moment) {
    const auto age = addressAge(index);
    return age ? std::optional(*age + inexact >= steadyMilliseconds() - moment) : std::nullopt;
}

} // namespace

bool NetworkConnections::refresh(std::chrono::milliseconds profilesFor) {
    const bool running = bus_.refresh(profilesFor);
    if (running) {
        takeLines();
    } else {
        std::move(sessions_.begin(), sessions_.end(), std::back_inserter(former_));
        sessions_.clear();
    }
    return running;
}

void NetworkConnections::takeLines() {
    const bool restarted = std::exchange(starts_, bus_.starts()) != bus_.starts();
    std::vector<Session> known = std::exchange(former_, {});
    std::move(sessions_.begin(), sessions_.end(), std::back_inserter(known));
    sessions_.clear();
    for (const NetworkLine& line : bus_.lines()) {
        if (line.state != line_state::activating && line.state != line_state::activated) {
            continue;
        }
        sessions_.push_back(sessionFor(line, known, restarted));
        Session& own = sessions_.back();
        // A tunnel that is made anew may go without being told of; it keeps its name.
        const std::string interface = line.interface.empty() ? own.line.interface : line.interface;
        own.line = line;
        own.line.interface = interface;
        if (line.state == line_state::activated && own.seenActive == 0) {
            own.seenActive = steadyMilliseconds();
        }
        if (awaitsInterface(own)) {
            bus_.doubtLines();
        }
    }
    listCarriersLast();
}

NetworkConnections::Session NetworkConnections::sessionFor(const NetworkLine& line,
                                                           std::vector<Session>& known,
                                                           bool restarted) {
    const auto before = std::find_if(known.begin(), known.end(), [&](const Session& own) {
        return restarted ? goesOn(own, line) : own.line.path == line.path;
    });
    if (before == known.end()) {
        return newSession(line);
    }
    Session own = std::move(*before);
    known.erase(before);
    return own;
}

/// Whether a connection that NetworkManager found up when it was started is the one of before: over
/// the same interface, whose counters have not fallen and whose address is not a later one.
bool NetworkConnections::goesOn(const Session& own, const NetworkLine& line) {
    if (own.link == 0 || own.line.uuid != line.uuid || line.state != line_state::activated) {
        return false;
    }
    const auto now = links_.read(line.interface.empty() ? own.line.interface : line.interface);
    return countedOn(now, own.link, own.counters.last()) &&
           hadAddressAt(own.link, own.readAt).value_or(true);
}

NetworkConnections::Session NetworkConnections::newSession(const NetworkLine& line) {
    Session own;
    own.handle = ++lastHandle_;
    own.line = line;
    // Some interfaces outlive their connections: what they had counted until now is not this one's.
    own.before = line.state == line_state::activating ? links_.readAll() : atListing_;
    return own;
}

const NetworkConnections::Session* NetworkConnections::carrier(const Session& session) const {
    const auto isBelow = [&](const std::string& device) {
        const auto& below = session.line.below;
        return std::find(below.begin(), below.end(), device) != below.end();
    };
    const auto found = std::find_if(sessions_.begin(), sessions_.end(), [&](const Session& other) {
        const auto& devices = other.line.devices;
        return &other != &session && other.line.state == line_state::activated &&
               std::any_of(devices.begin(), devices.end(), isBelow);
    });
    return found == sessions_.end() ? nullptr : &*found;
}

/// How many connections lie one below the other under this one.
std::size_t NetworkConnections::depth(const Session& session) const {
    std::size_t count = 0;
    for (const Session* below = carrier(session); below != nullptr && count < sessions_.size();
         below = carrier(*below)) {
        ++count;
    }
    return count;
}

/// The last of the list is the one whose figures the program shows.
void NetworkConnections::listCarriersLast() {
    std::map<std::uint32_t, std::pair<std::size_t, bool>> places;
    for (const Session& one : sessions_) {
        places[one.handle].first = sessions_.size() - depth(one);
        if (const Session* const below = carrier(one)) {
            places[below->handle].second = true;
        }
    }
    std::stable_sort(sessions_.begin(), sessions_.end(), [&](const Session& a, const Session& b) {
        return places[a.handle] < places[b.handle];
    });
}

bool NetworkConnections::awaitsInterface(const Session& session) {
    return session.seenActive != 0 && session.line.interface.empty() &&
           steadyMilliseconds() - session.seenActive < interfaceDelay;
}

NetworkConnections::Session* NetworkConnections::session(std::uint32_t handle) {
    const auto found = std::find_if(sessions_.begin(), sessions_.end(),
                                    [&](const Session& own) { return own.handle == handle; });
    return found == sessions_.end() ? nullptr : &*found;
}

const NetworkProfile* NetworkConnections::profile(const char* name) const {
    constexpr std::size_t longest = sizeof(RASDIALPARAMSA::szEntryName) - 1;
    const auto& all = bus_.profiles();
    const auto found = std::find_if(all.begin(), all.end(), [&](const NetworkProfile& one) {
        return one.name.substr(0, longest) == name;
    });
    return found == all.end() ? nullptr : &*found;
}

/// The profile of an entry: `wanted`, or else the code that tells why there is none.
std::uint32_t NetworkConnections::find(const char* name, const NetworkProfile*& wanted) {
    if (!refresh(profile(name) == nullptr ? readingForUser : NetworkBus::reading)) {
        return unavailable();
    }
    wanted = profile(name);
    if (wanted != nullptr) {
        return ras::success;
    }
    return bus_.profilesComplete() ? ras::unknownEntry : timedOut;
}

/// Why nothing is known.
std::uint32_t NetworkConnections::unavailable() const {
    return bus_.running() ? timedOut : notRunning;
}

std::uint32_t NetworkConnections::RasEnumEntriesA(const char*, const char*, void* buffer,
                                                  std::uint32_t* bytes, std::uint32_t* count) {
    const std::uint32_t size = sizeFieldOf(buffer);
    if (size != RASENTRYNAMEA::size && size != RASENTRYNAMEA_264::size) {
        return ras::invalidSize;
    }
    // Whoever brings the very room that was asked for is answered as then: profiles that have been
    // read since would not fit it.
    const std::vector<RasEntry> asked = std::exchange(asked_, {});
    if (!asked.empty() && *bytes == asked.size() * size) {
        return listEntries(asked, buffer, bytes, count);
    }
    const bool running = refresh(readingForUser);
    std::vector<RasEntry> entries;
    for (const NetworkProfile& one : bus_.profiles()) {
        entries.push_back({.name = one.name});
    }
    const std::uint32_t code = listEntries(entries, buffer, bytes, count);
    if (!running || !bus_.profilesListed()) {
        return unavailable();
    }
    asked_ = std::move(entries);
    return code;
}

std::uint32_t NetworkConnections::RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                                      std::uint32_t* count) {
    if (buffer->dwSize != RASCONNA::size) {
        return ras::invalidSize;
    }
    *count = 0;
    if (!refresh()) {
        return unavailable();
    }
    const std::uint32_t held = *bytes;
    *count = static_cast<std::uint32_t>(std::count_if(sessions_.begin(), sessions_.end(), isUp));
    *bytes = *count * RASCONNA::size;
    if (held < *bytes) {
        return ras::bufferTooSmall;
    }
    for (const Session& own : sessions_) {
        if (isUp(own)) {
            buffer->dwSize = RASCONNA::size;
            buffer->hrasconn = own.handle;
            putText(buffer->szEntryName, own.line.name);
            putText(buffer->szDeviceType, deviceTypeOf(own.line.type));
            putText(buffer->szDeviceName, deviceNameOf(own.line));
            ++buffer;
        }
    }
    atListing_ = links_.readAll();
    return ras::success;
}

std::uint32_t NetworkConnections::RasGetConnectStatusA(std::uint32_t handle,
                                                       RASCONNSTATUSA* status) {
    if (status->dwSize != RASCONNSTATUSA::size) {
        return ras::invalidSize;
    }
    const Session* own = session(handle);
    if (own == nullptr) {
        return ras::invalidHandle;
    }
    status->rasconnstate = own->line.state == line_state::activated ? ras::connected : 0;
    status->dwError = ras::success;
    putText(status->szDeviceType, deviceTypeOf(own->line.type));
    putText(status->szDeviceName, deviceNameOf(own->line));
    return ras::success;
}

void NetworkConnections::sample(Session& own) {
    if (own.line.interface.empty()) {
        return;
    }
    const auto reading = links_.read(own.line.interface);
    if (!reading) {
        bus_.doubtLines(); // gone or being made anew: what was counted stays
        return;
    }
    if (own.link == 0) {
        beginOn(own, *reading);
    }
    if (own.link != reading->index) {
        own.link = reading->index;
        own.bitRate = links_.bitRate(own.line.interface);
    }
    own.counters.sample(*reading);
    own.readAt = steadyMilliseconds();
}

void NetworkConnections::beginOn(Session& own, const LinkReading& reading) {
    const auto before = own.before.find(reading.index);
    if (before != own.before.end()) {
        own.counters.beginAt(before->second);
    }
    own.before.clear();
    const std::uint64_t linked = steadyMilliseconds() - addressAge(reading.index).value_or(0);
    // An address may come after the word that the line is up; its time never falls.
    own.activeSince = own.seenActive != 0 ? std::min(own.seenActive, linked) : linked;
}

std::uint32_t NetworkConnections::RasGetConnectionStatistics(std::uint32_t handle,
                                                             RAS_STATS* statistics) {
    if (statistics->dwSize != RAS_STATS::size) {
        return ras::invalidSize;
    }
    Session* own = session(handle);
    if (own == nullptr) {
        return ras::invalidHandle;
    }
    sample(*own);
    const LinkReading& total = own->counters.total();
    *statistics = {};
    statistics->dwSize = RAS_STATS::size;
    statistics->dwBytesXmited = wrapped(total.sent);
    statistics->dwBytesRcved = wrapped(total.received);
    statistics->dwFramesXmited = wrapped(total.packetsSent);
    statistics->dwFramesRcved = wrapped(total.packetsReceived);
    statistics->dwCrcErr = wrapped(total.checksumErrors);
    statistics->dwTimeoutErr = wrapped(total.aborted);
    statistics->dwAlignmentErr = wrapped(total.alignmentErrors);
    statistics->dwHardwareOverrunErr = wrapped(total.overrunErrors);
    statistics->dwFramingErr = wrapped(total.lengthErrors);
    statistics->dwBufferOverrunErr = wrapped(total.missed);
    statistics->dwBps = own->bitRate;
    const std::uint64_t since = own->activeSince != 0 ? own->activeSince : own->seenActive;
    own->duration = since == 0 ? 0 : steadyMilliseconds() - since;
    statistics->dwConnectDuration = wrapped(own->duration);
    return ras::success;
}

std::optional<Traffic> NetworkConnections::lineTotals(std::uint32_t handle) {
    const Session* own = session(handle);
    if (own == nullptr) {
        return std::nullopt;
    }
    const LinkReading& total = own->counters.total();
    return Traffic{.rcvd = total.received, .sent = total.sent, .milliseconds = own->duration};
}

std::uint32_t NetworkConnections::carrierOf(std::uint32_t handle) {
    const Session* const own = session(handle);
    const Session* const below = own == nullptr ? nullptr : carrier(*own);
    return below == nullptr ? 0 : below->handle;
}

std::string NetworkConnections::sessionMark(std::uint32_t handle) {
    const Session* own = session(handle);
    if (own == nullptr || own->link == 0 || own->counters.last().index != own->link ||
        boot_.empty()) {
        return {};
    }
    return textOf({.boot = boot_,
                   .uuid = own->line.uuid,
                   .path = own->line.path,
                   .activeSince = own->activeSince != 0 ? own->activeSince : own->seenActive,
                   .readAt = own->readAt,
                   .last = own->counters.last(),
                   .total = own->counters.total()});
}

/// The same profile over the same interface, which has counted on. Its address is no later one;
/// where it has none, NetworkManager's object must be the same.
bool NetworkConnections::isSame(const LinkMark& mark, const Session& own) {
    if (mark.boot != boot_ || own.link != 0 || own.line.uuid != mark.uuid || !isUp(own)) {
        return false;
    }
    const auto now = links_.read(own.line.interface);
    if (!countedOn(now, mark.last.index, mark.last) || mark.readAt > steadyMilliseconds()) {
        return false;
    }
    return hadAddressAt(mark.last.index, mark.readAt).value_or(own.line.path == mark.path);
}

bool NetworkConnections::resume(std::uint32_t handle, const std::string& mark) {
    Session* own = session(handle);
    const auto before = markOf(mark);
    if (own == nullptr || !before || !isSame(*before, *own)) {
        return false;
    }
    own->before.clear();
    own->counters.goOnFrom(before->last, before->total);
    own->link = before->last.index;
    own->bitRate = links_.bitRate(own->line.interface);
    own->activeSince = before->activeSince;
    own->readAt = before->readAt;
    return true;
}

std::uint32_t NetworkConnections::RasGetEntryDialParamsA(const char*, RASDIALPARAMSA* parameters,
                                                         bool* passwordFound) {
    if (parameters->dwSize != RASDIALPARAMSA::size) {
        return ras::invalidSize;
    }
    *passwordFound = false; // NetworkManager and its agents keep the passwords
    const NetworkProfile* wanted = nullptr;
    if (const std::uint32_t code = find(parameters->szEntryName, wanted); code != ras::success) {
        return code;
    }
    putText(parameters->szUserName, wanted->userName);
    return ras::success;
}

std::uint32_t NetworkConnections::RasDialA(RASDIALEXTENSIONS* extensions, const char*,
                                           RASDIALPARAMSA* parameters, std::uint32_t, void*,
                                           std::uint32_t* handle) {
    if (extensions->dwSize != RASDIALEXTENSIONS::size ||
        parameters->dwSize != RASDIALPARAMSA::size) {
        return ras::invalidSize;
    }
    const NetworkProfile* wanted = nullptr;
    if (const std::uint32_t code = find(parameters->szEntryName, wanted); code != ras::success) {
        return code;
    }
    try {
        return waitForLine(bus_.activate(*wanted), handle);
    } catch (const BusFailure& failure) {
        return codeOfBusError(failure.name);
    }
}

std::uint32_t NetworkConnections::waitForLine(const std::string& path, std::uint32_t* handle) {
    constexpr int turn = 250; // milliseconds
    constexpr std::chrono::seconds longestSilence{20};
    const auto end = Clock::now() + patience_.making;
    const std::uint64_t starts = bus_.starts();
    auto listed = Clock::now();
    auto heard = listed;
    // A turn ends early when anything comes, from whomever: only the clock tells how long it was.
    while (Clock::now() - heard < longestSilence) {
        if (!refresh()) {
            return unavailable();
        }
        heard = bus_.silent() ? heard : Clock::now();
        const auto own = std::find_if(sessions_.begin(), sessions_.end(),
                                      [&](const Session& one) { return one.line.path == path; });
        if (own != sessions_.end()) {
            if (own->line.state == line_state::activated && !awaitsInterface(*own)) {
                *handle = own->handle;
                return ras::success;
            }
            listed = Clock::now();
        } else if (const auto reason = bus_.reasonOf(path)) {
            // It may come a moment before or after the connection is gone from the list.
            return codeOfDeviceReason(bus_.deviceReason(), codeOfActiveReason(*reason));
        }
        if (bus_.starts() != starts || Clock::now() - listed > patience_.reason) {
            return dropped;
        }
        if (Clock::now() > end) {
            return giveUp(path);
        }
        bus_.wait(turn);
    }
    return timedOut;
}

/// What is told to have failed is not to come up afterwards.
std::uint32_t NetworkConnections::giveUp(const std::string& path) {
    try {
        bus_.deactivate(path);
    } catch (const BusFailure&) {
        // It has ended by itself, or goes on: the dial has failed for the user all the same.
    }
    return timedOut;
}

std::uint32_t NetworkConnections::RasHangUpA(std::uint32_t handle) {
    const Session* own = session(handle);
    if (own == nullptr) {
        return ras::invalidHandle;
    }
    try {
        bus_.deactivate(own->line.path);
        return ras::success;
    } catch (const BusFailure& failure) {
        return codeOfBusError(failure.name);
    }
}

std::uint32_t NetworkConnections::RasGetErrorStringA(std::uint32_t code, char* buffer,
                                                     std::uint32_t size) {
    return answerErrorText(rasErrorText(code), buffer, size);
}

} // namespace tarvik
