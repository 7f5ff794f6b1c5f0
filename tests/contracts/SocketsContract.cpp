#include "contracts/ServicesUnderTest.h"

#include <gtest/gtest.h>

#include <array>

namespace tarvik {
namespace {

class SocketsContract : public testing::Test {
protected:
    SocketsUnderTest machine = socketsUnderTest();
    Sockets& sockets = *machine.sockets;
    HOSTENT host;
};

TEST_F(SocketsContract, TheVersionThatIsAskedForIsGranted) {
    WSADATA data{};

    EXPECT_EQ(sockets.WSAStartup(0x0101, &data), 0);

    EXPECT_EQ(data.wVersion, 0x0101);
    EXPECT_GE(data.iMaxSockets, 1);
    EXPECT_EQ(sockets.WSACleanup(), 0);
}

TEST_F(SocketsContract, TheHostHasANameAndAddresses) {
    WSADATA data{};
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);
    std::array<char, 256> name{};

    EXPECT_EQ(sockets.gethostname(name.data(), static_cast<int>(name.size())), 0);
    EXPECT_NE(name[0], '\0');
    const std::string known = machine.known.empty() ? name.data() : machine.known;
    EXPECT_TRUE(sockets.gethostbyname(known.c_str(), &host));

    EXPECT_EQ(host.h_name.substr(0, host.h_name.find('\0')), known);
    EXPECT_EQ(host.h_length, 4);
    ASSERT_FALSE(host.h_addr_list.empty());
    EXPECT_EQ(host.h_addr_list.front().size(), 4U);
    EXPECT_EQ(host.h_addr_list.front(), machine.address.value_or(host.h_addr_list.front()));
    EXPECT_EQ(sockets.WSACleanup(), 0);
}

TEST_F(SocketsContract, AHostThatNobodyKnowsHasNoEntry) {
    WSADATA data{};
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);

    EXPECT_FALSE(sockets.gethostbyname("no-such-host.invalid", &host));

    sockets.WSACleanup();
}

TEST_F(SocketsContract, ANameThatDoesNotFitIsAnError) {
    WSADATA data{};
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);
    char name = 'x';

    EXPECT_EQ(sockets.gethostname(&name, 0), -1);

    EXPECT_NE(sockets.WSAGetLastError(), 0);
    sockets.WSACleanup();
}

TEST_F(SocketsContract, EndingWhatWasNotStartedIsAnError) {
    // What the system has started in this process, for a file dialog, is ended first.
    constexpr int most = 100;
    int started = 0;
    int code = sockets.WSACleanup();
    for (; code == 0 && started < most; ++started) {
        code = sockets.WSACleanup();
    }

    EXPECT_EQ(code, 10093);
    EXPECT_EQ(sockets.WSAGetLastError(), 10093);

    for (WSADATA data{}; started > 0; --started) {
        sockets.WSAStartup(0x0101, &data);
    }
}

} // namespace
} // namespace tarvik
