#pragma once

#include <functional>
#include <utility>

namespace tarvik {

/// Something that happens to a control or form. One handler may be connected; without one, raising
/// it does nothing.
template <class... Args>
class Event {
public:
    void connect(std::function<void(Args...)> handler) { handler_ = std::move(handler); }

    void raise(Args... args) const {
        // A handler may disconnect or destroy what raised it: run a copy.
        if (const auto handler = handler_) {
            handler(std::forward<Args>(args)...);
        }
    }

private:
    std::function<void(Args...)> handler_;
};

} // namespace tarvik
