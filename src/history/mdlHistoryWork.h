#pragma once

#include "types/Long.h"

#include <vector>

namespace tarvik {

class Control;

/// A piece of long work of the history window, one at a time. While it lives the window shows how
/// far it is and takes no other order than to stop or to close. Short work shows nothing.
class HistoryWork {
public:
    /// Records to deal with from one call of `goOn` to the next: about a millisecond.
    static constexpr std::int32_t stride = 1000;

    /// So many records are to be dealt with.
    explicit HistoryWork(Long total);
    ~HistoryWork();
    HistoryWork(const HistoryWork&) = delete;
    HistoryWork& operator=(const HistoryWork&) = delete;

    /// So many are done: shows it and lets waiting events be handled. False when the work is to end
    /// here.
    bool goOn(Long done);

    /// Asks the work that is under way, if any, to end.
    static void stop();
    /// The last work was asked to end.
    static bool wasStopped();

private:
    void showProgress(bool shown);

    const Long total_;
    std::vector<Control*> disabled_;
};

} // namespace tarvik
