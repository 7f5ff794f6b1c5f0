#pragma once

#include "linux/network/NetworkObjects.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvik {

/// The saved profiles of the kinds that are dialled, read a part at a time: NetworkManager answers
/// for one after the other, and there may be thousands. What was read is kept and offered; only
/// what changes is read again.
class ProfileBook {
public:
    /// What NetworkManager told before is of another start of it.
    void clear();
    /// Anything may have changed unseen: all are listed and read again, those first that never
    /// were.
    void doubt() { stale_ = true; }
    /// That one has come or has changed, or has gone.
    void change(const std::string& path);
    void remove(const std::string& path);

    /// Lists the profiles if need be and reads on, one at least, until `enough` answers true or
    /// there is nothing left. Throws sdbus::Error, and then goes on with another one next time. One
    /// profile that NetworkManager does answer for, but with an error or with what cannot be read,
    /// stays as it was known, or is left out, until any of them changes.
    void readOn(BusReplies& replies, const std::function<bool()>& enough);

    /// The profiles have been listed, and all of them read as far as they can be.
    bool listed() const { return listed_; }
    bool complete() const { return listed_ && !stale_ && waiting_.empty(); }
    /// Those that have been read; no two of one name.
    const std::vector<NetworkProfile>& profiles() const { return profiles_; }

private:
    void readSome(BusReplies& replies, const std::function<bool()>& enough);
    void list(BusReplies& replies);
    void await(const std::string& path);
    void awaitOdd();
    std::string next();
    void readNext(BusReplies& replies);
    void update();

    bool listed_ = false;
    bool stale_ = true; ///< what was listed, if anything was
    std::map<std::string, std::optional<NetworkProfile>> read_; ///< nothing for other kinds
    std::deque<std::string> queue_; ///< to be read; some of them are not waiting any more
    std::set<std::string> waiting_; ///< likewise, each once
    std::set<std::string> odd_;     ///< those that could not be read
    std::vector<NetworkProfile> profiles_;
    bool updated_ = true; ///< as `read_` is
};

} // namespace tarvik
