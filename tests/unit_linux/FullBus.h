#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace tarvik {

/// While it lives the bus of that address takes nobody else: somebody holds all the connections
/// that it keeps for those who have not said yet who they are, and takes the place of each that it
/// closes.
class FullBus {
public:
    explicit FullBus(const std::string& address);
    ~FullBus();
    FullBus(const FullBus&) = delete;
    FullBus& operator=(const FullBus&) = delete;

private:
    int newConnection() const;
    void keepFull();

    std::string path_;
    std::vector<int> held_;
    std::atomic<bool> over_ = false;
    std::thread thread_;
};

} // namespace tarvik
