#pragma once

#include "windows/services/SystemHeader.h"

#include <functional>
#include <utility>

namespace tarvik {

/// Does something again and again while messages are handled, also in the loops of boxes and menus,
/// until it says that it is done; one at a time.
class Later {
public:
    explicit Later(std::function<bool()> action) : action_(std::move(action)) {
        current = this;
        timer_ = SetTimer(nullptr, 0, 10, onTimer);
    }
    ~Later() {
        stop();
        current = nullptr;
    }
    Later(const Later&) = delete;
    Later& operator=(const Later&) = delete;

    bool done() const { return timer_ == 0; }

private:
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (current != nullptr && !current->done() && current->action_()) {
            current->stop();
        }
    }

    void stop() {
        if (timer_ != 0) {
            KillTimer(nullptr, std::exchange(timer_, 0));
        }
    }

    static inline Later* current = nullptr;
    std::function<bool()> action_;
    UINT_PTR timer_ = 0;
};

} // namespace tarvik
