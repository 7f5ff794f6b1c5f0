#pragma once

#include <functional>
#include <memory>
#include <thread>

namespace tarvik {

/// Learns from the login manager that the machine is about to sleep or to be shut down, and has
/// that wait for a moment. Without a login manager, or a bus, nothing is learned and nothing
/// delayed. Works on a thread of its own: whatever the bus does, the program does not wait for it.
class LoginWatch {
public:
    /// Releases the machine; may be called on any thread, and need not be: dropping it does, too.
    using Release = std::function<void()>;

    /// `pausing` is called on the watch's own thread, each time.
    explicit LoginWatch(std::function<void(Release)> pausing);
    ~LoginWatch();
    LoginWatch(const LoginWatch&) = delete;
    LoginWatch& operator=(const LoginWatch&) = delete;

private:
    class Shared;

    std::shared_ptr<Shared> shared_;
    std::thread thread_;
};

} // namespace tarvik
