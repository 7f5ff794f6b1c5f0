#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvik::soak {

/// Which notes are to be seen when: one at a time while there are ticks, five seconds apart.
class ReferenceNotes {
public:
    /// Whatever the run before had to tell is gone with it.
    void startAnew() {
        waiting_.clear();
        toldAt_.reset();
    }

    /// Has a note to tell. What is to be seen of it now, or of those before.
    std::optional<std::string> add(std::string text, std::int64_t seconds, bool ticks) {
        waiting_.push_back(std::move(text));
        return waiting_.size() == 1 ? next(seconds, ticks) : std::nullopt;
    }

    /// What is to be seen now of those that wait.
    std::optional<std::string> next(std::int64_t seconds, bool ticks) {
        constexpr std::int64_t between = 5;
        if (waiting_.empty() || (ticks && toldAt_ && seconds - *toldAt_ < between)) {
            return std::nullopt;
        }
        toldAt_ = seconds;
        std::string text = std::move(waiting_.front());
        waiting_.erase(waiting_.begin());
        return text;
    }

private:
    std::vector<std::string> waiting_;
    std::optional<std::int64_t> toldAt_; ///< of this run
};

} // namespace tarvik::soak
