#pragma once

#include "linux/network/NetworkNews.h"
#include "linux/network/NetworkObjects.h"
#include "linux/network/ProfileBook.h"
#include "linux/services/Greeting.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sdbus {
class Error;
class IConnection;
class Message;
} // namespace sdbus

namespace tarvik {

/// An error that NetworkManager or the bus answered with, by its name.
struct BusFailure {
    std::string name;
};

/// NetworkManager as a client sees it: its profiles and active connections, kept up to date by
/// signals. Not for more than one thread at a time.
///
/// An operation blocks for two seconds at most, whatever comes in meanwhile. The bus itself gets a
/// tenth of a second to greet, and as much for each answer, or a whole one on a busy machine; it is
/// taken for none as long as it does not greet. Where NetworkManager runs but does not answer in
/// its time, what it said before stays, and it is left alone for a few seconds. Where it answers
/// slowly and tells of a change meanwhile, that is read after a rest of as long, half a second at
/// most.
///
/// Others on the bus may flood this program with signals. A look then takes 90 ms at most, and the
/// next one is due a second later. It goes on under another name; the connection that it has is
/// kept until the next one has been greeted, for others may keep the bus from that, too.
class NetworkBus {
public:
    explicit NetworkBus(std::function<bool()> machineIsBusy = tarvik::machineIsBusy);
    ~NetworkBus();
    NetworkBus(const NetworkBus&) = delete;
    NetworkBus& operator=(const NetworkBus&) = delete;

    /// How long profiles are read on for in a refresh, unless told otherwise: the window lives.
    static constexpr std::chrono::milliseconds reading{400};

    /// Handles the signals that have come, connects to the bus if need be, and reads what changed:
    /// profiles for about that time, and on at the next refresh. False when NetworkManager does not
    /// run, or has never answered.
    bool refresh(std::chrono::milliseconds profilesFor = reading);
    /// Reads the active connections again at the next refresh: there is reason to think that they
    /// changed without a signal.
    void doubtLines() { news_.linesStale = true; }
    /// The bus, or NetworkManager, did not answer lately.
    bool silent() const { return Clock::now() < quietUntil_; }
    /// Others sent too much at the last look.
    bool flooded() const { return flooded_; }
    /// NetworkManager is there.
    bool running() const { return news_.running(); }
    /// It is, but did not answer lately.
    bool late() const { return running() && silent(); }
    /// NetworkManager has told which profiles there are, and what all of them are.
    bool profilesListed() const { return book_.listed(); }
    bool profilesComplete() const { return book_.complete(); }
    /// Waits for signals, at most that many milliseconds, and handles them.
    void wait(int milliseconds);

    /// How often NetworkManager has been found started or gone: the paths of its objects mean
    /// nothing after that.
    std::uint64_t starts() const { return news_.starts(); }

    /// Those that have been read.
    const std::vector<NetworkProfile>& profiles() const { return book_.profiles(); }
    const std::vector<NetworkLine>& lines() const { return lines_; }
    const NetworkState& state() const { return state_; }

    /// Activates a profile; the path of the active connection. Throws BusFailure.
    std::string activate(const NetworkProfile& profile);
    /// Throws BusFailure.
    void deactivate(const std::string& line);

    /// Why a connection was deactivated since `activate`; nothing when it is not known.
    std::optional<std::uint32_t> reasonOf(const std::string& line) const {
        return news_.reasonOf(line);
    }
    /// The reason of the device that failed last since `activate`; 0 when none did.
    std::uint32_t deviceReason() const { return news_.deviceReason(); }

private:
    using Clock = std::chrono::steady_clock;

    bool known() const { return news_.running() && knownSince_ == news_.starts(); }
    bool resting() const { return flooded_ && Clock::now() < restUntil_; }
    bool due() const;
    bool mayWait(std::chrono::milliseconds profilesFor) const;
    void restAfter(Clock::duration taken);
    bool connect(Clock::time_point end, std::chrono::milliseconds inFlood);
    void learnOwner(Clock::time_point end);
    bool greeted() const;
    void greet();
    std::unique_ptr<sdbus::IConnection> greetedBus();
    std::unique_ptr<sdbus::IConnection> openBus(std::chrono::milliseconds inFlood);
    void onSignal(sdbus::Message& message);
    bool pump();
    void catchUp();
    void readStale(Clock::time_point end, std::chrono::milliseconds profilesFor);
    void readProfiles(BusReplies& replies, std::chrono::milliseconds longest);
    void failed(const sdbus::Error& error);
    void forget();
    template <class Order>
    auto order(const Order& order);

    std::function<bool()> machineIsBusy_;
    std::unique_ptr<sdbus::IConnection> bus_;
    std::future<std::unique_ptr<sdbus::IConnection>> connecting_;
    NetworkNews news_;
    std::uint64_t knownSince_ = 0; ///< the start since which the connections were read
    std::uint64_t bookSince_ = 0;  ///< the one that the profiles are of
    bool believed_ = false;        ///< what was handled last is a signal that may be believed
    int ofStrangers_ = 0;          ///< signals of others, since the last look
    bool flooded_ = false;         ///< there were too many of them at the last look
    bool ownerStale_ = true;       ///< a change of owner may have been missed
    Clock::time_point restUntil_;  ///< no look before, in a flood
    Clock::time_point readAgain_;  ///< no reading before, after a slow one
    Clock::time_point quietUntil_; ///< no call before, after one that was not answered
    ProfileBook book_;
    std::vector<NetworkLine> lines_;
    NetworkState state_;
};

} // namespace tarvik
