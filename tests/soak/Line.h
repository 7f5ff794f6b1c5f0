#pragma once

#include "scripted/ScriptedConnections.h"
#include "soak/Chance.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvik::soak {

/// Bytes, bytes and milliseconds.
struct Amount {
    std::int64_t rcvd = 0;
    std::int64_t sent = 0;
    std::int64_t time = 0;

    friend Amount operator+(Amount a, Amount b) {
        return {.rcvd = a.rcvd + b.rcvd, .sent = a.sent + b.sent, .time = a.time + b.time};
    }
    friend Amount operator-(Amount a, Amount b) {
        return {.rcvd = a.rcvd - b.rcvd, .sent = a.sent - b.sent, .time = a.time - b.time};
    }
    friend bool operator==(const Amount&, const Amount&) = default;
    std::string text() const;
};

/// A session as it really is, whatever handle the service gives it and whatever its counters tell.
struct Session {
    int id = 0;
    std::string entry;
    std::uint32_t handle = 0;
    bool connected = true; ///< else it is listed in another state
    bool wide = false;     ///< its service counts beyond 32 bits
    bool framed = false;   ///< its service counts frames
    Amount carried;        ///< since it was established
    Amount cleared;        ///< of it, what the service has forgotten
    int clears = 0;
    bool hungUp = false;
    int inside = 0;      ///< the session that carries it, 0 for none
    bool marked = false; ///< its service knows it from every other one

    /// What the service cannot read of it now.
    enum class Fails { Nothing, Status, Statistics };
    Fails fails = Fails::Nothing;

    /// What the service tells as counters.
    RAS_STATS counters() const;
};

/// The connections that are up, in the order in which the service lists them.
class Line {
public:
    explicit Line(Chance& chance) : chance_(chance) {}

    std::vector<Session> up;
    int sessions = 0;   ///< ever begun
    bool marks = false; ///< the service knows sessions of some entries from every other one

    /// An entry that is not up; empty when all are.
    std::string freeEntry();
    /// Another program dials.
    Session& dial(const std::string& entry);
    /// Another program dials through the one that is up; the carrier is listed after it.
    Session& dialInside(const std::string& entry);
    /// They are listed the other way round, if none carries another.
    bool reverse();
    /// Lets time pass on every session that is connected, and bytes flow.
    void carry(std::int64_t milliseconds);
    /// The session ends and another of the same entry follows at once: under the same handle or a
    /// new one.
    void redial(Session& session, bool sameHandle);
    /// The session ends and one of another entry follows at once.
    void follow(Session& session, const std::string& entry) { session = made(entry, newHandle()); }
    /// The service was started again: the same session under another handle.
    void renumber(Session& session) { session.handle = newHandle(); }
    /// What the service knows the session under that handle by, as long as it is up; 0 for
    /// nothing.
    int markOf(std::uint32_t handle) const;
    /// Another program clears the counters.
    static void clear(Session& session);

    /// Puts the sessions into the service.
    void publish(ScriptedConnections& service) const;
    /// Takes over what the program dialled or hung up there.
    void adopt(const ScriptedConnections& service);

private:
    Session* carrierOf(const Session& session);
    Session made(const std::string& entry, std::uint32_t handle);
    std::uint32_t newHandle();
    std::int64_t someBytes();

    Chance& chance_;
    std::uint32_t lastHandle_ = 1'000'000;
};

} // namespace tarvik::soak
