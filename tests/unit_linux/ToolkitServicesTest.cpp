#include "linux/services/ToolkitServices.h"
#include "support/TemporaryFolder.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tarvik {
namespace {

/// A service of this machine that takes one connection after the other, says the same to each as
/// its first word, and nothing more.
class FirstWord {
public:
    FirstWord(const std::string& path, std::string_view word) : word_(word) {
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
            taken_.push_back(taken);
            EXPECT_EQ(write(taken, word_.data(), word_.size()), static_cast<ssize_t>(word_.size()));
        }
    }

    std::string word_;
    int socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::vector<int> taken_;
    std::thread thread_;
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
        qunsetenv("AT_SPI_BUS_ADDRESS");
        qunsetenv("SESSION_MANAGER");
    }

    std::string bus() const { return "unix:path=" + path; }
    std::string manager() const { return "local/here:@tarvik/nowhere,unix/here:" + path; }

    /// Greets the services; what is said of those that are left out.
    static std::string greet() {
        testing::internal::CaptureStderr();
        const ToolkitServices services;
        return testing::internal::GetCapturedStderr();
    }

    TemporaryFolder folder;
    std::string path = folder.path() + "/service";
    Variable sessionBus{"DBUS_SESSION_BUS_ADDRESS"};
    Variable accessibilityBus{"AT_SPI_BUS_ADDRESS"};
    Variable sessionManager{"SESSION_MANAGER"};
};

TEST_F(ToolkitServicesTest, ABusThatGreetsIsLeftAsItIs) {
    const std::string before = sessionBus.get();

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionBus.get(), before);
    EXPECT_EQ(accessibilityBus.get(), "");
}

TEST_F(ToolkitServicesTest, ABusThatIsNotThereIsLeftToTheToolkit) {
    sessionBus.set(bus());

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionBus.get(), bus());
}

TEST_F(ToolkitServicesTest, ABusOfAnotherKindIsLeftToTheToolkit) {
    sessionBus.set("autolaunch:");

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionBus.get(), "autolaunch:");
}

TEST_F(ToolkitServicesTest, AMuteBusIsHidden) {
    const FirstWord service(path, "");
    sessionBus.set(bus());

    EXPECT_NE(greet().find("the session bus does not answer and is left out\n"), std::string::npos);

    EXPECT_EQ(sessionBus.get(), "disabled:");
}

TEST_F(ToolkitServicesTest, ABusThatTalksNonsenseIsHidden) {
    const FirstWord service(path, "HTTP/1.1 400 Bad Request\r\n\r\n");
    sessionBus.set(bus());

    greet();

    EXPECT_EQ(sessionBus.get(), "disabled:");
}

TEST_F(ToolkitServicesTest, AMuteBusOfAccessibilityIsHidden) {
    const FirstWord service(path, "");
    const std::string before = sessionBus.get();
    accessibilityBus.set(bus());

    EXPECT_EQ(greet(),
              "velmars-tarvik: the bus of accessibility does not answer and is left out\n");

    EXPECT_EQ(accessibilityBus.get(), "disabled:");
    EXPECT_EQ(sessionBus.get(), before);
}

TEST_F(ToolkitServicesTest, ASessionManagerThatGreetsIsLeftAsItIs) {
    const FirstWord service(path, std::string_view("\0\1\0\0\0\0\0\0", 8));
    sessionManager.set(manager());

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionManager.get(), manager());
}

TEST_F(ToolkitServicesTest, AMuteSessionManagerIsHidden) {
    const FirstWord service(path, "");
    sessionManager.set(manager());

    EXPECT_EQ(greet(), "velmars-tarvik: the session manager does not answer and is left out\n");

    EXPECT_EQ(qgetenv("SESSION_MANAGER").isNull(), true);
}

TEST_F(ToolkitServicesTest, ASessionManagerThatTalksNonsenseIsHidden) {
    const FirstWord service(path, "nonsense");
    sessionManager.set(manager());

    greet();

    EXPECT_EQ(qgetenv("SESSION_MANAGER").isNull(), true);
}

class InputMethodTest : public ToolkitServicesTest {
protected:
    InputMethodTest() {
        typing.set("ibus");
        addressFile.set(folder.path() + "/address");
        std::ofstream(folder.path() + "/address")
            << "# of the display\nIBUS_ADDRESS=unix:path=" << path
            << ",guid=1\nIBUS_DAEMON_PID=1\n";
    }

    Variable typing{"QT_IM_MODULE"};
    Variable addressFile{"IBUS_ADDRESS_FILE"};
};

TEST_F(InputMethodTest, AnInputMethodThatSpeaksIsLeftAsItIs) {
    const FirstWord service(path, "REJECTED EXTERNAL\r\n");

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(typing.get(), "ibus");
}

TEST_F(InputMethodTest, AMuteInputMethodIsHidden) {
    const FirstWord service(path, "");

    EXPECT_EQ(greet(), "velmars-tarvik: the input method does not answer and is left out\n");

    EXPECT_EQ(qgetenv("QT_IM_MODULE").isNull(), true);
}

TEST_F(InputMethodTest, AnInputMethodThatDoesNotRunIsLeftToTheToolkit) {
    EXPECT_EQ(greet(), "");

    EXPECT_EQ(typing.get(), "ibus");
}

TEST_F(InputMethodTest, AnotherInputMethodIsLeftAsItIs) {
    const FirstWord service(path, "");
    typing.set("compose");

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(typing.get(), "compose");
}

TEST_F(ToolkitServicesTest, ASessionManagerThatIsNotThereIsLeftToTheToolkit) {
    sessionManager.set(manager());

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionManager.get(), manager());
}

} // namespace
} // namespace tarvik
