#include "startup/TickReports.h"

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

bool has(const std::vector<std::string>& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

} // namespace

void TickReports::beginTick() {
    inTick_ = true;
    before_ = std::exchange(now_, {});
}

void TickReports::endTick() {
    inTick_ = false;
}

bool TickReports::isNews(const std::string& text) {
    if (!inTick_) {
        return true;
    }
    const bool news = !has(before_, text) && !has(now_, text);
    now_.push_back(text);
    return news;
}

} // namespace tarvik
