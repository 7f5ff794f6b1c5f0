#include "ToolkitServicesTest.h"
#include "linux/services/LocalSocket.h"

#include <atomic>
#include <csignal>
#include <fstream>
#include <poll.h>
#include <string>
#include <string_view>

namespace tarvik {
namespace {

std::atomic<int> pipeSignals{0};

/// Services that close their connections. Whoever writes to them gets a signal that would end the
/// program, unless it asks for none; libraries may have turned it off in this process.
class ClosingServicesTest : public ToolkitServicesTest {
protected:
    ClosingServicesTest() {
        pipeSignals = 0;
        struct sigaction counting {};
        counting.sa_handler = [](int) { ++pipeSignals; };
        sigaction(SIGPIPE, &counting, &before_);
    }
    ~ClosingServicesTest() override { sigaction(SIGPIPE, &before_, nullptr); }

    /// Greets often: now one side is faster, now the other.
    static void greetOften(Variable& service, const std::string& address) {
        for (int i = 0; i < 30; ++i) {
            service.set(address);
            greet(Patience([] { return false; }));
        }
    }

    static constexpr std::string_view accepted =
        "DATA\r\nOK 0123456789abcdef0123456789abcdef\r\nAGREE_UNIX_FD\r\n";

private:
    struct sigaction before_ {};
};

TEST_F(ClosingServicesTest, TheSessionBusEndsNothing) {
    const FirstWord service(path, accepted, true);

    greetOften(sessionBus, bus());

    EXPECT_EQ(pipeSignals, 0);
}

TEST_F(ClosingServicesTest, TheBusOfAccessibilityEndsNothing) {
    const FirstWord service(path, accepted, true);

    greetOften(accessibilityBus, bus());

    EXPECT_EQ(pipeSignals, 0);
}

TEST_F(ClosingServicesTest, TheSessionManagerEndsNothing) {
    const FirstWord service(path, "\1", true);

    greetOften(sessionManager, manager());

    EXPECT_EQ(pipeSignals, 0);
}

TEST_F(ClosingServicesTest, TheInputMethodEndsNothing) {
    Variable addressFile{"IBUS_ADDRESS_FILE"};
    addressFile.set(folder.path() + "/address");
    std::ofstream(folder.path() + "/address") << "IBUS_ADDRESS=unix:path=" << path << "\n";
    const FirstWord service(path, "", true);

    greetOften(typing, "ibus");

    EXPECT_EQ(pipeSignals, 0);
}

TEST_F(ClosingServicesTest, WhatIsSentToOneThatHasGoneFailsAndEndsNothing) {
    const FirstWord service(path, "", true);
    const FileDescriptor file = connectTo(path);
    pollfd gone{.fd = file.number(), .events = 0, .revents = 0};
    ASSERT_EQ(poll(&gone, 1, 10'000), 1);

    EXPECT_FALSE(sendTo(file, "word"));

    EXPECT_EQ(pipeSignals, 0);
}

} // namespace
} // namespace tarvik
