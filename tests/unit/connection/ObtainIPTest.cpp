#include "connection/mdlObtainIP.h"

#include "support/WorldTest.h"

namespace tarvik {
namespace {

using namespace std::string_literals;

class ObtainIPTest : public WorldTest {
protected:
    ObtainIPTest() {
        sockets().host = {.h_name = "testhost.example",
                          .h_length = 4,
                          .h_addr_list = {std::string("\xC0\xA8\x00\x05", 4)}};
    }

    ScriptedSockets& sockets() { return machine.sockets; }

    std::string hostName = "before";
};

TEST_F(ObtainIPTest, OneAddressIsFourNumbers) {
    EXPECT_EQ(ObtainIP(hostName), "192.168.0.5");
    EXPECT_EQ(hostName, "testhost.example");
}

TEST_F(ObtainIPTest, TwoAddressesAreSeparatedByASemicolon) {
    sockets().host.h_addr_list.emplace_back("\x0A\x00\x00\x02", 4);

    EXPECT_EQ(ObtainIP(hostName), "192.168.0.5;10.0.0.2");
}

TEST_F(ObtainIPTest, AHostWithoutAddressesHasANameOnly) {
    sockets().host.h_addr_list.clear();

    EXPECT_EQ(ObtainIP(hostName), "");
    EXPECT_EQ(hostName, "testhost.example");
}

TEST_F(ObtainIPTest, AnAddressHasAsManyNumbersAsTheEntrySays) {
    sockets().host.h_length = 2;

    EXPECT_EQ(ObtainIP(hostName), "192.168");
}

TEST_F(ObtainIPTest, TheNameEndsAtItsFirstNul) {
    sockets().host.h_name = "short\0rest"s;

    ObtainIP(hostName);

    EXPECT_EQ(hostName, "short");
}

TEST_F(ObtainIPTest, SocketsThatDoNotStartAreTold) {
    sockets().startupError = 10091;
    expectWarning("Winsock.dll is not responding.");

    EXPECT_EQ(ObtainIP(hostName), "");
    EXPECT_EQ(hostName, "");
}

TEST_F(ObtainIPTest, VersionOneNoughtIsRefused) {
    sockets().started.wVersion = 0x0001;
    expectWarning("Windows Sockets version 1.0 is not supported by winsock.dll");

    EXPECT_EQ(ObtainIP(hostName), "");
}

TEST_F(ObtainIPTest, AMajorVersionOfNoughtIsRefused) {
    sockets().started.wVersion = 0x0900;
    expectWarning("Windows Sockets version 0.9 is not supported by winsock.dll");

    EXPECT_FALSE(SocketsInitialize());
}

TEST_F(ObtainIPTest, LaterVersionsAreTaken) {
    for (const std::uint16_t version :
         std::initializer_list<std::uint16_t>{0x0101, 0x0201, 0x0002}) {
        sockets().started.wVersion = version;
        EXPECT_TRUE(SocketsInitialize()) << version;
    }
}

TEST_F(ObtainIPTest, AnInterfaceWithoutSocketsIsRefused) {
    sockets().started.iMaxSockets = 0;
    expectWarning("This application requires a minimum of 1 supported sockets.");

    EXPECT_FALSE(SocketsInitialize());
}

TEST_F(ObtainIPTest, AHostWithoutANameIsToldWithTheError) {
    sockets().hostNameFails = true;
    sockets().lastError = 10050;
    expectWarning("Windows sockets error 10050");

    EXPECT_EQ(ObtainIP(hostName), "");
}

TEST_F(ObtainIPTest, AHostThatIsNotFoundIsTold) {
    sockets().hostFound = false;
    expectWarning("Winsock.dll is not responding.");

    EXPECT_EQ(ObtainIP(hostName), "");
    EXPECT_EQ(hostName, "");
}

TEST_F(ObtainIPTest, AFailedCleanupIsToldAndTheAddressStays) {
    sockets().cleanupError = 10093;
    expectBox("Socket error 10093 occurred in Cleanup.", MsgBoxButtons::OkOnly, MsgBoxIcon::None);

    EXPECT_EQ(ObtainIP(hostName), "192.168.0.5");
}

TEST_F(ObtainIPTest, CleaningUpTellsWhetherItWorked) {
    EXPECT_TRUE(SocketsInitialize());
    EXPECT_TRUE(SocketsCleanup());
}

TEST_F(ObtainIPTest, BytesAreTakenTowardsZeroFirst) {
    EXPECT_EQ(HiByte(0x0101), 1);
    EXPECT_EQ(LoByte(0x0101), 1);
    EXPECT_EQ(HiByte(-1), 0);
    EXPECT_EQ(LoByte(-1), 255);
    EXPECT_EQ(HiByte(-256), 255);
    EXPECT_EQ(LoByte(-256), 0);
}

TEST_F(ObtainIPTest, AnErrorIsReportedUnderItsNameAndLeavesNothing) {
    sockets().hostFound = false;
    expectBox("Winsock.dll is not responding.", MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation,
              MsgBoxAnswer::Ok, [] { raise(ErrorNumber::PermissionDenied); });
    expectError("70 (Permission denied)", "ObtainIP");

    EXPECT_EQ(ObtainIP(hostName), "");
}

TEST_F(ObtainIPTest, TheFirstOnlineTickObtainsTheAddressWhereItIsLogged) {
    startQuietly();
    state().LogIPAddress = 1;
    machine.connections.connect("Harbour");
    frmMain().cmdMonitor.press();

    tick();
    EXPECT_EQ(state().IPAddress, "192.168.0.5");
    EXPECT_EQ(state().HostName, "testhost.example");

    sockets().host.h_addr_list.clear();
    tick();
    EXPECT_EQ(state().IPAddress, "192.168.0.5");
}

TEST_F(ObtainIPTest, WhereItIsNotLoggedTheAddressIsNotObtained) {
    startQuietly();
    machine.connections.connect("Harbour");
    frmMain().cmdMonitor.press();

    tick();

    EXPECT_EQ(state().IPAddress, "");
}

} // namespace
} // namespace tarvik
