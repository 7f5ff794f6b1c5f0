#pragma once

#include "linux/network/LinkReading.h"

namespace tarvik {

/// The counters of one connection, which may outlive the interface that it runs over: a tunnel that
/// is made anew begins at 0, and what the one before it counted is added.
class LinkSession {
public:
    /// What an interface had counted before the connection began, where it was there before.
    void beginAt(const LinkReading& reading) { begin_ = reading; }

    /// The connection has counted `total` by the time the interface stood at `last`.
    void goOnFrom(const LinkReading& last, const LinkReading& total) {
        begin_ = last_ = last;
        before_ = total_ = total;
    }

    /// Takes over a reading of the connection's interface.
    void sample(const LinkReading& reading);

    /// The newest reading as it was.
    const LinkReading& last() const { return last_; }

    /// Everything since the connection's start, as far as it was read.
    const LinkReading& total() const { return total_; }

private:
    LinkReading begin_;
    LinkReading before_; ///< sum of the interfaces that are gone
    LinkReading last_;
    LinkReading total_;
};

} // namespace tarvik
