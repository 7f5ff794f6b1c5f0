#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <pthread.h>

namespace tarvik {

/// While it lives the system starts no thread: each would need more memory than there are
/// addresses.
class NoRoomForThreads {
public:
    NoRoomForThreads() {
        pthread_getattr_default_np(&before_);
        pthread_attr_t none;
        pthread_getattr_default_np(&none);
        EXPECT_EQ(pthread_attr_setstacksize(&none, tooLarge), 0);
        EXPECT_EQ(pthread_setattr_default_np(&none), 0);
        pthread_attr_destroy(&none);
    }
    ~NoRoomForThreads() {
        pthread_setattr_default_np(&before_);
        pthread_attr_destroy(&before_);
    }
    NoRoomForThreads(const NoRoomForThreads&) = delete;
    NoRoomForThreads& operator=(const NoRoomForThreads&) = delete;

private:
    static constexpr std::size_t tooLarge = std::size_t{1} << 60U;

    pthread_attr_t before_;
};

} // namespace tarvik
