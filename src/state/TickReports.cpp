#include "state/TickReports.h"

#include <algorithm>
#include <utility>

namespace tarvik {

void TickReports::beginTick() {
    inTick_ = true;
    before_ = std::exchange(now_, {});
}

void TickReports::endTick() {
    inTick_ = false;
}

void TickReports::forget() {
    before_.clear();
    now_.clear();
}

bool TickReports::isNews(const std::string& text) {
    if (!inTick_) {
        return true;
    }
    now_.push_back(text);
    return std::find(before_.begin(), before_.end(), text) == before_.end();
}

} // namespace tarvik
