#include "linux/network/ProfileBook.h"

#include "linux/network/BusReplies.h"

#include <algorithm>
#include <utility>

namespace tarvik {

void ProfileBook::clear() {
    *this = {};
}

void ProfileBook::change(const std::string& path) {
    await(path);
    awaitOdd();
}

void ProfileBook::await(const std::string& path) {
    if (waiting_.insert(path).second) {
        queue_.push_back(path);
    }
}

void ProfileBook::remove(const std::string& path) {
    waiting_.erase(path);
    odd_.erase(path);
    read_.erase(path);
    updated_ = false;
    awaitOdd();
}

/// What was wrong with them may be over when anything has changed.
void ProfileBook::awaitOdd() {
    for (const std::string& path : std::exchange(odd_, {})) {
        await(path);
    }
}

void ProfileBook::readOn(BusReplies& replies, const std::function<bool()>& enough) {
    try {
        readSome(replies, enough);
    } catch (const sdbus::Error&) {
        update();
        throw;
    }
    update();
}

void ProfileBook::readSome(BusReplies& replies, const std::function<bool()>& enough) {
    if (stale_) {
        list(replies);
    }
    while (!waiting_.empty()) {
        readNext(replies);
        if (enough()) {
            return;
        }
    }
}

/// Once for a part: sorting takes as long as reading a few dozen.
void ProfileBook::update() {
    if (!updated_) {
        profiles_ = sortedProfiles(read_);
        updated_ = true;
    }
}

/// Those that wait keep their places, so that listing again and again holds nothing up.
void ProfileBook::list(BusReplies& replies) {
    const auto paths = replies.profilePaths();
    const std::set<std::string> there(paths.begin(), paths.end());
    std::erase_if(read_, [&](const auto& one) { return !there.contains(one.first); });
    std::erase_if(waiting_, [&](const std::string& path) { return !there.contains(path); });
    for (const auto& path : paths) {
        await(path);
    }
    odd_.clear();
    std::stable_partition(queue_.begin(), queue_.end(),
                          [&](const std::string& path) { return !read_.contains(path); });
    updated_ = false;
    listed_ = true;
    stale_ = false;
}

std::string ProfileBook::next() {
    std::string path;
    do {
        path = queue_.front();
        queue_.pop_front();
    } while (waiting_.erase(path) == 0);
    return path;
}

void ProfileBook::readNext(BusReplies& replies) {
    const std::string path = next();
    updated_ = false;
    try {
        read_[path] = readProfile(replies, path);
    } catch (const sdbus::Error& error) {
        if (isNoAnswer(error)) {
            await(path);
            throw;
        }
        if (isGone(error)) {
            read_[path] = std::nullopt; // or not for this user
        } else {
            read_.try_emplace(path);
            odd_.insert(path);
        }
    }
}

} // namespace tarvik
