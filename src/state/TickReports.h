#pragma once

#include <string>
#include <vector>

namespace tarvik {

/// What the ticks have reported. A damaged figure fails in every tick, and a box for each would
/// keep the user from everything else: what the tick before reported too is not shown again.
class TickReports {
public:
    void beginTick();
    void endTick();

    /// Whether the text is to be shown: always outside of a tick; within one if the tick before has
    /// not reported it.
    bool isNews(const std::string& text);

    /// Monitoring begins: its first tick follows none.
    void forget();

private:
    bool inTick_ = false;
    std::vector<std::string> before_; ///< in the tick before
    std::vector<std::string> now_;    ///< in the one under way, or the last
};

/// A tick, for as long as this lives.
class TickOfReports {
public:
    explicit TickOfReports(TickReports& reports) : reports_(reports) { reports_.beginTick(); }
    ~TickOfReports() { reports_.endTick(); }
    TickOfReports(const TickOfReports&) = delete;
    TickOfReports& operator=(const TickOfReports&) = delete;

private:
    TickReports& reports_;
};

} // namespace tarvik
