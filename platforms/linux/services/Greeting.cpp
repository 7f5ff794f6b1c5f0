#include "linux/services/Greeting.h"

#include <fstream>
#include <string>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tarvik {

bool machineIsBusy() {
    std::ifstream file("/proc/stat");
    unsigned running = 0;
    unsigned blocked = 0;
    for (std::string word; file >> word;) {
        if (word == "procs_running") {
            file >> running;
        } else if (word == "procs_blocked") {
            file >> blocked;
        }
    }
    return running > std::thread::hardware_concurrency() || blocked > 0;
}

bool tellsOfWaiting(std::istream& stat) {
    // A thread that has ended since the file was opened cannot be read. The stream takes that as an
    // end only where it reads itself; an iterator over its buffer would let the error through.
    std::string text;
    std::getline(stat, text);
    const std::size_t name = text.rfind(')');
    return name == std::string::npos || text.substr(name).starts_with(") S");
}

bool Patience::lasts(bool greetingWaits) {
    return greetingWaits && !isBusy_() ? --turns_ > 0 : --busyTurns_ > 0;
}

Greeting::Greeting(std::function<bool(MayBeSilent&)> call) {
    std::packaged_task<bool()> task([state = state_, greet = std::move(call)] {
        state->thread = gettid();
        return greet(state->mayBeSilent);
    });
    answer_ = task.get_future();
    try {
        std::thread(std::move(task)).detach();
    } catch (const std::system_error&) {
        // There is no room for a thread: nothing is known of the service.
        std::promise<bool> unknown;
        unknown.set_value(false);
        answer_ = unknown.get_future();
    }
}

bool Greeting::wentWell(Patience& patience) {
    while (answer_.wait_for(Patience::turn) != std::future_status::ready) {
        if (!patience.lasts(isWaiting())) {
            return state_->mayBeSilent;
        }
    }
    return answer_.get();
}

/// It waits for the service, not for the processor or the disk.
bool Greeting::isWaiting() const {
    if (state_->thread == 0) {
        return false;
    }
    std::ifstream file("/proc/self/task/" + std::to_string(state_->thread) + "/stat");
    return tellsOfWaiting(file);
}

} // namespace tarvik
