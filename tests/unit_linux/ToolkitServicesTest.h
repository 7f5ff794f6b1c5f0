#pragma once

#include "linux/services/ToolkitServices.h"
#include "support/TemporaryFolder.h"

#include <QByteArray>

#include <gtest/gtest.h>
#include <sdbus-c++/sdbus-c++.h>

#include <memory>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tarvik {

/// A service of this machine that takes one connection after the other, says the same to each as
/// its first word, and nothing more. One that closes has gone again before that is heard.
class FirstWord {
public:
    FirstWord(const std::string& path, std::string_view word, bool closes = false)
        : word_(word), closes_(closes) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(socket_, 8), 0);
        thread_ = std::thread([this] { serve(); });
    }
    ~FirstWord() {
        shutdown(socket_, SHUT_RDWR);
        thread_.join();
        for (const int taken : taken_) {
            close(taken);
        }
        close(socket_);
    }
    FirstWord(const FirstWord&) = delete;
    FirstWord& operator=(const FirstWord&) = delete;

private:
    void serve() {
        for (int taken = 0; (taken = accept(socket_, nullptr, nullptr)) >= 0;) {
            EXPECT_EQ(send(taken, word_.data(), word_.size(), MSG_NOSIGNAL),
                      static_cast<ssize_t>(word_.size()));
            if (closes_) {
                close(taken);
            } else {
                taken_.push_back(taken);
            }
        }
    }

    std::string word_;
    bool closes_;
    int socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::vector<int> taken_;
    std::thread thread_;
};

/// A name on a bus whose owner never answers, or does once `run` is called: that it knows nothing.
class NameOnBus {
public:
    NameOnBus(const std::string& bus, const std::string& name)
        : connection_(sdbus::createSessionBusConnectionWithAddress(bus)) {
        connection_->requestName(name);
    }

    void run() { connection_->enterEventLoopAsync(); }

private:
    std::unique_ptr<sdbus::IConnection> connection_;
};

/// One variable of the environment, as it was again afterwards.
class Variable {
public:
    explicit Variable(const char* name) : name_(name), before_(qgetenv(name)) {}
    ~Variable() {
        if (before_.isNull()) {
            qunsetenv(name_);
        } else {
            qputenv(name_, before_);
        }
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

    void set(const std::string& value) { qputenv(name_, QByteArray::fromStdString(value)); }
    std::string get() const { return qgetenv(name_).toStdString(); }

private:
    const char* name_;
    QByteArray before_;
};

class ToolkitServicesTest : public testing::Test {
protected:
    ToolkitServicesTest() {
        for (const char* const name : {"AT_SPI_BUS_ADDRESS", "SESSION_MANAGER", "QT_IM_MODULE",
                                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON"}) {
            qunsetenv(name);
        }
    }

    std::string bus() const { return "unix:path=" + path; }
    std::string manager() const { return "local/here:@tarvik/nowhere,unix/here:" + path; }

    /// Greets the services; what is said of those that are left out.
    static std::string greet(Patience patience = Patience()) {
        testing::internal::CaptureStderr();
        const ToolkitServices services(std::move(patience));
        return testing::internal::GetCapturedStderr();
    }

    TemporaryFolder folder;
    std::string path = folder.path() + "/service";
    Variable sessionBus{"DBUS_SESSION_BUS_ADDRESS"};
    Variable accessibilityBus{"AT_SPI_BUS_ADDRESS"};
    Variable sessionManager{"SESSION_MANAGER"};
    Variable typing{"QT_IM_MODULE"};
    Variable alwaysOn{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"};
};

} // namespace tarvik
