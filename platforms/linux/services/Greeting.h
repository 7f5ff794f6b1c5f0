#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <istream>
#include <memory>
#include <sys/types.h>
#include <utility>

namespace tarvik {

/// More wants to run than there are processors, or waits for the disk.
bool machineIsBusy();

/// Whether a thread waits for a service, not for the processor or the disk, after its record in
/// /proc; also true where the record cannot be read, the thread being over.
bool tellsOfWaiting(std::istream& stat);

/// The time in which all greetings together are waited for, in turns of 10 ms: ten of them, or as
/// many as are told. Turns in which a service may not have had its chance do not count, up to one
/// second together with those that do: none is to be left out because everything starts at once.
class Patience {
public:
    static constexpr std::chrono::milliseconds turn{10};

    explicit Patience(std::function<bool()> isBusy = machineIsBusy, int turns = 10)
        : isBusy_(std::move(isBusy)), turns_(turns) {}

    /// One more turn has passed, in which the greeting waited for its service, or did something
    /// itself; false when it was the last one.
    bool lasts(bool greetingWaits);

private:
    std::function<bool()> isBusy_;
    int turns_;
    int busyTurns_ = 85;
};

/// A greeting that may be waited for, or be left behind: it touches nothing of the program. It
/// begins at once, in a thread of its own.
class Greeting {
public:
    /// What `call` may set while it asks something for which the toolkit does not wait: silence is
    /// no fault then.
    using MayBeSilent = std::atomic<bool>;

    explicit Greeting(std::function<bool(MayBeSilent&)> call);

    /// Whether it went well, or nothing can be said against it when the time is over.
    bool wentWell(Patience& patience);

private:
    struct State {
        std::atomic<pid_t> thread{0}; ///< 0 until it has begun
        MayBeSilent mayBeSilent{false};
    };

    bool isWaiting() const;

    std::shared_ptr<State> state_ = std::make_shared<State>();
    std::future<bool> answer_;
};

} // namespace tarvik
