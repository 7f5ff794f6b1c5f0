#include "BusStranger.h"
#include "NoRoomForThreads.h"
#include "SystemBusStandIn.h"

#include "linux/services/LoginWatch.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sdbus-c++/sdbus-c++.h>

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <mutex>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tarvik {
namespace {

constexpr const char* loginService = "org.freedesktop.login1";
constexpr const char* loginPath = "/org/freedesktop/login1";
constexpr const char* loginInterface = "org.freedesktop.login1.Manager";

/// What happens on other threads, and waiting for it.
class Happening {
public:
    void note(const std::function<void()>& work) {
        const std::lock_guard guard(mutex_);
        work();
        happened_.notify_all();
    }
    bool soon(const std::function<bool()>& condition) {
        std::unique_lock lock(mutex_);
        return happened_.wait_for(lock, std::chrono::seconds(10), condition);
    }

private:
    std::mutex mutex_;
    std::condition_variable happened_;
};

/// A login manager on a system bus of its own: who asks for a delay gets one end of a pipe, which
/// tells when the other end was closed.
class LoginStandIn {
public:
    struct Delay {
        std::string what;
        std::string mode;
        int held = -1; ///< the reading end
    };

    explicit LoginStandIn(Happening& happening) : happening_(happening) { start(); }
    ~LoginStandIn() {
        stop();
        for (const Delay& one : delays) {
            close(one.held);
        }
    }
    LoginStandIn(const LoginStandIn&) = delete;
    LoginStandIn& operator=(const LoginStandIn&) = delete;

    void start() {
        connection_ = sdbus::createSystemBusConnection();
        object_ = sdbus::createObject(*connection_, loginPath);
        object_->registerMethod("Inhibit")
            .onInterface(loginInterface)
            .implementedAs([this](const std::string& what, const std::string&, const std::string&,
                                  const std::string& mode) { return give(what, mode); });
        for (const char* signal : {"PrepareForSleep", "PrepareForShutdown"}) {
            object_->registerSignal(signal).onInterface(loginInterface).withParameters<bool>();
        }
        object_->registerProperty("PreparingForSleep")
            .onInterface(loginInterface)
            .withGetter([this] { return preparing.load(); });
        object_->finishRegistration();
        connection_->requestName(loginService);
        connection_->enterEventLoopAsync();
    }
    void stop() {
        connection_->leaveEventLoop();
        object_.reset();
        connection_.reset();
    }
    void tell(const std::string& signal, bool begins) {
        object_->emitSignal(signal).onInterface(loginInterface).withArguments(begins);
    }

    /// Tells of sleep with what cannot be read.
    void tellOddly() {
        sdbus::Signal signal = object_->createSignal(loginInterface, "PrepareForSleep");
        signal << std::string("odd");
        object_->emitSignal(signal);
    }

    std::vector<Delay> delays;
    std::atomic<bool> preparing = false; ///< for sleep, as it says of itself

private:
    sdbus::UnixFd give(const std::string& what, const std::string& mode) {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
        sdbus::UnixFd given(ends[1]); // a copy
        close(ends[1]);
        happening_.note([&] { delays.push_back({.what = what, .mode = mode, .held = ends[0]}); });
        return given;
    }

    Happening& happening_;
    SystemBusStandIn bus_{loginService};
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

/// A way to the system bus that lets nothing through any more once signals are asked for. The
/// program finds it while this lives.
class MuteBus {
public:
    explicit MuteBus(Happening& happening) : happening_(happening), before_(getenv(variable)) {
        const std::string path = folder_.path() + "/mute";
        listener_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_un address = addressOf(path);
        EXPECT_EQ(bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(listener_, 1), 0);
        setenv(variable, ("unix:path=" + path).c_str(), 1);
        thread_ = std::thread([this] { carry(); });
    }
    ~MuteBus() {
        setenv(variable, before_.c_str(), 1);
        shutdown(listener_, SHUT_RDWR);
        thread_.join();
        for (const int one : {listener_, program_, bus_}) {
            close(one);
        }
    }
    MuteBus(const MuteBus&) = delete;
    MuteBus& operator=(const MuteBus&) = delete;

    bool mute = false;

private:
    static constexpr const char* variable = "DBUS_SYSTEM_BUS_ADDRESS";

    static sockaddr_un addressOf(const std::string& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        return address;
    }
    void carry() {
        program_ = accept(listener_, nullptr, nullptr);
        bus_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_un address = addressOf(before_.substr(before_.find('=') + 1));
        connect(bus_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        std::array<pollfd, 2> ends{{{program_, POLLIN, 0}, {bus_, POLLIN, 0}}};
        while (!mute && poll(ends.data(), ends.size(), -1) > 0) {
            const bool asks = ends[0].revents != 0;
            std::array<char, 4096> bytes{};
            const ssize_t count = read(asks ? program_ : bus_, bytes.data(), bytes.size());
            if (count <= 0) {
                return;
            }
            const std::string_view text(bytes.data(), static_cast<std::size_t>(count));
            if (asks && text.find("AddMatch") != std::string_view::npos) {
                happening_.note([this] { mute = true; });
            } else {
                EXPECT_EQ(write(asks ? bus_ : program_, text.data(), text.size()), count);
            }
        }
    }

    Happening& happening_;
    std::string before_;
    TemporaryFolder folder_;
    int listener_ = -1;
    int program_ = -1;
    int bus_ = -1;
    std::thread thread_;
};

class LoginWatchTest : public testing::Test {
protected:
    /// A watch whose pauses are kept, as by a program that has not come to them yet.
    std::unique_ptr<LoginWatch> watch() {
        return std::make_unique<LoginWatch>([this](const LoginWatch::Release& release) {
            happening.note([&] { pauses.push_back(release); });
        });
    }
    bool delaysSoon(std::size_t count) {
        return happening.soon([&] { return login.delays.size() == count; });
    }
    bool pausesSoon(std::size_t count) {
        return happening.soon([&] { return pauses.size() == count; });
    }
    /// The machine may go on: nobody has the other end any more.
    static bool isReleased(const LoginStandIn::Delay& delay) {
        char byte = 0;
        return read(delay.held, &byte, 1) == 0;
    }
    static bool releasedSoon(const LoginStandIn::Delay& delay) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!isReleased(delay) && std::chrono::steady_clock::now() < end) {
            usleep(1000);
        }
        return isReleased(delay);
    }

    Happening happening;
    LoginStandIn login{happening};
    std::vector<LoginWatch::Release> pauses;
};

TEST_F(LoginWatchTest, TheMachineIsAskedToWaitBeforeSleepAndShutdown) {
    const auto watching = watch();

    ASSERT_TRUE(delaysSoon(1));

    EXPECT_EQ(login.delays[0].what, "sleep:shutdown");
    EXPECT_EQ(login.delays[0].mode, "delay");
    EXPECT_FALSE(isReleased(login.delays[0]));
}

TEST_F(LoginWatchTest, SleepWaitsUntilItIsReleased) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));

    login.tell("PrepareForSleep", true);

    ASSERT_TRUE(pausesSoon(1));
    EXPECT_FALSE(isReleased(login.delays[0]));
    pauses[0]();
    EXPECT_TRUE(releasedSoon(login.delays[0]));
}

TEST_F(LoginWatchTest, ShutdownWaitsToo) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));

    login.tell("PrepareForShutdown", true);

    ASSERT_TRUE(pausesSoon(1));
    pauses[0]();
    EXPECT_TRUE(releasedSoon(login.delays[0]));
}

TEST_F(LoginWatchTest, AfterSleepTheNextOneIsWaitedForAgain) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));
    login.tell("PrepareForSleep", true);
    ASSERT_TRUE(pausesSoon(1));
    pauses[0]();

    login.tell("PrepareForSleep", false);
    ASSERT_TRUE(delaysSoon(2));
    login.tell("PrepareForSleep", true);

    ASSERT_TRUE(pausesSoon(2));
    EXPECT_FALSE(isReleased(login.delays[1]));
}

TEST_F(LoginWatchTest, ALoginManagerThatIsStartedAgainIsAskedAgain) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));

    login.stop();
    login.start();

    ASSERT_TRUE(delaysSoon(2));
    login.tell("PrepareForSleep", true);
    EXPECT_TRUE(pausesSoon(1));
}

TEST_F(LoginWatchTest, NobodyElseIsBelieved) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));
    BusStranger stranger;

    stranger.send(loginPath, loginInterface, "PrepareForSleep", true);
    stranger.send("/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged",
                  std::string(loginService), std::string(), stranger.name());
    stranger.send(loginPath, loginInterface, "PrepareForSleep", true);
    login.tell("PrepareForSleep", false);

    ASSERT_TRUE(delaysSoon(2)) << "what came behind is seen";
    EXPECT_TRUE(pauses.empty());
}

TEST_F(LoginWatchTest, ASignalThatCannotBeReadIsDropped) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));

    login.tellOddly();
    login.tell("PrepareForSleep", true);

    EXPECT_TRUE(pausesSoon(1));
}

TEST_F(LoginWatchTest, AFloodIsLeftBehindUnderAnotherName) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));
    BusStranger stranger;
    const auto before = stranger.others();

    stranger.floodUnheard(1000);

    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (stranger.others() == before && std::chrono::steady_clock::now() < end) {
        usleep(1000);
    }
    EXPECT_NE(stranger.others(), before);
    EXPECT_EQ(login.delays.size(), 1U) << "the machine waits for it as before";
}

TEST_F(LoginWatchTest, SleepThatAFloodHidIsFound) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));
    BusStranger stranger;
    login.preparing = true; // and no signal comes

    stranger.floodUnheard(1000);

    EXPECT_TRUE(pausesSoon(1));
}

TEST_F(LoginWatchTest, AfterSleepThatEndedInAFloodTheNextOneIsWaitedForAgain) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));
    login.tell("PrepareForSleep", true);
    ASSERT_TRUE(pausesSoon(1));
    BusStranger stranger;

    stranger.floodUnheard(1000);

    EXPECT_TRUE(delaysSoon(2));
}

TEST_F(LoginWatchTest, SleepIsWaitedForInAFloodThatDoesNotEnd) {
    const auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));
    BusStranger stranger;
    const Sending sending([&] { stranger.floodUnheard(200); });

    login.preparing = true;
    login.tell("PrepareForSleep", true);

    EXPECT_TRUE(pausesSoon(1));
}

TEST_F(LoginWatchTest, TheEndOfTheProgramInAFloodHoldsNothingUp) {
    auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));
    BusStranger stranger;
    const Sending sending([&] { stranger.floodUnheard(200); });

    watching.reset();

    EXPECT_TRUE(releasedSoon(login.delays[0]));
}

TEST_F(LoginWatchTest, WithoutRoomForAThreadTheProgramStartsAndEnds) {
    const NoRoomForThreads noRoom;

    watch();

    EXPECT_TRUE(login.delays.empty());
}

TEST_F(LoginWatchTest, TheEndOfTheProgramHoldsNothingUp) {
    auto watching = watch();
    ASSERT_TRUE(delaysSoon(1));

    watching.reset();

    EXPECT_TRUE(releasedSoon(login.delays[0]));
}

TEST_F(LoginWatchTest, ABusThatFallsSilentAfterTheGreetingDoesNotHoldUpTheEnd) {
    MuteBus bus(happening);
    auto watching = watch();
    ASSERT_TRUE(happening.soon([&] { return bus.mute; }));

    bool over = false;
    std::thread end([&] {
        watching.reset();
        happening.note([&] { over = true; });
    });

    EXPECT_TRUE(happening.soon([&] { return over; }));
    end.join();
}

TEST(LoginWatchWithoutBusTest, WithoutABusTheProgramStartsAndEnds) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);

    const LoginWatch watching([](const LoginWatch::Release&) { FAIL() << "nobody told anything"; });

    unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

} // namespace
} // namespace tarvik
