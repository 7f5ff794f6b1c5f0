#include "soak/Line.h"

#include <algorithm>
#include <array>

namespace tarvik::soak {

namespace {

struct Kind {
    const char* entry;
    bool wide;
    bool framed;
    bool marked; ///< where the service marks any
};

constexpr std::array<Kind, 4> kinds{{{"Harbour", false, true, true},
                                     {"Quay", false, false, false},
                                     {"Ridge", true, false, false},
                                     {"Tower", true, true, true}}};
constexpr std::int64_t bytesInFrame = 700;
constexpr std::uint32_t droppedLine = 668;

std::uint32_t counter(std::int64_t figure) {
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(figure));
}

} // namespace

std::string Amount::text() const {
    return std::to_string(rcvd) + " received, " + std::to_string(sent) + " sent, " +
           std::to_string(time) + " ms";
}

RAS_STATS Session::counters() const {
    const Amount told = carried - cleared;
    RAS_STATS result{};
    result.dwBytesRcved = counter(told.rcvd);
    result.dwBytesXmited = counter(told.sent);
    result.dwFramesRcved = framed ? counter(told.rcvd / bytesInFrame) : 0;
    result.dwFramesXmited = framed ? counter(told.sent / bytesInFrame) : 0;
    result.dwConnectDuration = counter(carried.time);
    return result;
}

std::string Line::freeEntry() {
    const std::size_t first = chance_.index(kinds.size());
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const std::string entry = kinds.at((first + i) % kinds.size()).entry;
        if (std::none_of(up.begin(), up.end(),
                         [&](const Session& one) { return one.entry == entry; })) {
            return entry;
        }
    }
    return {};
}

Session Line::made(const std::string& entry, std::uint32_t handle) {
    Session result;
    result.id = ++sessions;
    result.entry = entry;
    result.handle = handle;
    const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                   [&](const Kind& one) { return entry == one.entry; });
    result.wide = kind->wide;
    result.framed = kind->framed;
    result.marked = marks && kind->marked;
    return result;
}

std::uint32_t Line::newHandle() {
    return ++lastHandle_;
}

Session& Line::dial(const std::string& entry) {
    return up.emplace_back(made(entry, newHandle()));
}

Session& Line::dialInside(const std::string& entry) {
    Session inner = made(entry, newHandle());
    inner.inside = up.front().id;
    return *up.insert(up.begin(), inner);
}

Session* Line::carrierOf(const Session& session) {
    const auto found = std::find_if(up.begin(), up.end(),
                                    [&](const Session& one) { return one.id == session.inside; });
    return found == up.end() ? nullptr : &*found;
}

bool Line::reverse() {
    const bool carries =
        std::any_of(up.begin(), up.end(), [this](const Session& one) { return carrierOf(one); });
    if (!carries) {
        std::reverse(up.begin(), up.end());
    }
    return !carries;
}

std::int64_t Line::someBytes() {
    // Mostly little, sometimes as much as a counter just cannot lose.
    switch (chance_.below(12)) {
    case 0:
        return static_cast<std::int64_t>(chance_.below(4'294'967'296));
    case 1:
        return static_cast<std::int64_t>(chance_.below(1'000'000'000));
    case 2:
    case 3:
        return 0;
    default:
        return static_cast<std::int64_t>(chance_.below(3'000'000));
    }
}

void Line::carry(std::int64_t milliseconds) {
    for (Session& one : up) {
        if (one.connected) {
            const Amount bytes{.rcvd = someBytes(), .sent = someBytes()};
            one.carried = one.carried + bytes + Amount{.time = milliseconds};
            if (Session* const carrier = carrierOf(one)) {
                carrier->carried = carrier->carried + bytes;
            }
        }
    }
}

void Line::redial(Session& session, bool sameHandle) {
    Session next = made(session.entry, sameHandle ? session.handle : newHandle());
    next.carried = {.rcvd = static_cast<std::int64_t>(chance_.below(100'000)),
                    .sent = static_cast<std::int64_t>(chance_.below(20'000)),
                    .time = static_cast<std::int64_t>(chance_.below(3'000))};
    session = next;
}

int Line::markOf(std::uint32_t handle) const {
    const auto found = std::find_if(up.begin(), up.end(), [&](const Session& one) {
        return one.handle == handle && one.marked && one.connected;
    });
    return found == up.end() ? 0 : found->id;
}

void Line::clear(Session& session) {
    session.cleared = session.carried;
    session.cleared.time = 0;
    ++session.clears;
}

void Line::publish(ScriptedConnections& service) const {
    service.connections.clear();
    service.marks.clear();
    for (const Session& one : up) {
        ScriptedConnections::Connection listed;
        listed.handle = one.handle;
        listed.entryName = one.entry;
        listed.state = one.connected ? ras::connected : 8193;
        listed.statistics = one.counters();
        listed.statusFailure = one.fails == Session::Fails::Status ? droppedLine : 0;
        listed.statisticsFailure = one.fails == Session::Fails::Statistics ? droppedLine : 0;
        if (const int mark = markOf(one.handle)) {
            service.marks[one.handle] = std::to_string(mark);
        }
        const auto carrier = std::find_if(
            up.begin(), up.end(), [&](const Session& other) { return other.id == one.inside; });
        listed.carrier = carrier == up.end() ? 0 : carrier->handle;
        if (one.wide) {
            listed.totals = Traffic{.rcvd = static_cast<std::uint64_t>(one.carried.rcvd),
                                    .sent = static_cast<std::uint64_t>(one.carried.sent),
                                    .milliseconds = static_cast<std::uint64_t>(one.carried.time)};
        }
        service.connections.push_back(listed);
    }
}

void Line::adopt(const ScriptedConnections& service) {
    const auto isUp = [&](std::uint32_t handle) {
        return std::any_of(service.connections.begin(), service.connections.end(),
                           [&](const auto& listed) { return listed.handle == handle; });
    };
    std::erase_if(up, [&](const Session& one) { return !isUp(one.handle); });
    for (const auto& listed : service.connections) {
        if (std::none_of(up.begin(), up.end(),
                         [&](const Session& one) { return one.handle == listed.handle; })) {
            up.push_back(made(listed.entryName, listed.handle));
        }
    }
}

} // namespace tarvik::soak
