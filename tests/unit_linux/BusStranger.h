#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tarvik {

/// A program of another user on the system bus, as far as the tests may become one: where they run
/// as root. It may do what every user may: send signals straight to each program that is there.
class BusStranger {
public:
    BusStranger();

    /// Its own name.
    std::string name() const { return bus_->getUniqueName(); }
    /// As the bus knows it.
    std::uint32_t user() const;

    /// Sends a signal to everybody else; the bus has taken it afterwards.
    template <class... Values>
    void send(const std::string& path, const std::string& interface, const std::string& member,
              const Values&... values) {
        const auto object = sdbus::createObject(*bus_, path);
        for (const std::string& other : others()) {
            sdbus::Signal signal = object->createSignal(interface, member);
            (signal << ... << values);
            signal.setDestination(other);
            object->emitSignal(signal);
        }
        others();
    }

    /// Sends so many signals to each other program: of the kind that is looked at closest, or of
    /// one that nobody listens to, with so many bytes in it.
    void flood(int count);
    void floodUnheard(int count, std::size_t bytes = 10'000);

    /// The names of all other programs, without those that are spared.
    std::vector<std::string> others() const;

    /// Nothing more is sent to those that are there now.
    void spareOthers() { spared_ = others(); }
    /// The same for the owner of that name.
    void spare(const std::string& service);

private:
    void flood(int count, int atOnce, const std::function<sdbus::Signal(sdbus::IObject&)>& make);

    std::unique_ptr<sdbus::IConnection> bus_;
    std::vector<std::string> spared_;
};

/// Does something on and on, as long as it lives.
class Sending {
public:
    explicit Sending(const std::function<void()>& send)
        : thread_([this, send] {
              while (!over_) {
                  try {
                      send();
                  } catch (const sdbus::Error&) {
                      // The bus holds up whoever sends more than others read.
                  }
              }
          }) {}
    ~Sending() {
        over_ = true;
        thread_.join();
    }
    Sending(const Sending&) = delete;
    Sending& operator=(const Sending&) = delete;

private:
    std::atomic<bool> over_ = false;
    std::thread thread_;
};

} // namespace tarvik
