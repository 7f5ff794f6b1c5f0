#include "monitor/mdlCodeDial.h"

#include "support/WorldTest.h"
#include "wiring/frmMainEvents.h"

namespace tarvik {
namespace {

class DialTest : public WorldTest {
protected:
    DialTest() {
        phoneBook({"Harbour", "Ridge"});
        machine.connections.errorTexts[691] = "Access denied.";
    }

    void fillConnections() {
        frmMain().cboConnections.addItem("Harbour");
        frmMain().cboConnections.addItem("Ridge");
    }
};

TEST_F(DialTest, WithoutANameNothingIsDialled) {
    state().DialInStarted = true;
    expectWarning("Error: Invalid DialIn entry provided.");

    EXPECT_EQ(DialIn("", ""), Long(-1));

    EXPECT_TRUE(state().DialInStarted);
    EXPECT_TRUE(machine.connections.calls.empty());
}

TEST_F(DialTest, AGoodDialReturnsTheHandleAndListsTheConnection) {
    EXPECT_EQ(DialIn("Ridge", ""), Long(1));

    EXPECT_TRUE(state().DialInStarted);
    EXPECT_STREQ(state().RasConnections.at(0).szEntryName, "Ridge");
    EXPECT_EQ(machine.desktop.blockingCalls, 1);
}

TEST_F(DialTest, TheRecordsHaveTheSizesOfTheOldestForms) {
    DialIn("Ridge", "");

    EXPECT_EQ(machine.connections.parametersAsked.at(0).dwSize, 1052U);
    EXPECT_EQ(machine.connections.extensionsSeen.at(0).dwSize, 16U);
    EXPECT_EQ(machine.connections.extensionsSeen.at(0).dwfOptions, 0U);
}

TEST_F(DialTest, OnlyTheNameIsGivenAndTheStoredUserIsFilledIn) {
    DialIn("Ridge", "");

    const RASDIALPARAMSA& asked = machine.connections.parametersAsked.at(0);
    EXPECT_STREQ(asked.szEntryName, "Ridge");
    EXPECT_STREQ(asked.szPhoneNumber, "");
    EXPECT_STREQ(asked.szCallbackNumber, "");
    EXPECT_STREQ(asked.szUserName, "");
    EXPECT_STREQ(asked.szPassword, "");
    EXPECT_STREQ(asked.szDomain, "");
    EXPECT_STREQ(machine.connections.dialled.at(0).szUserName, "user");
    EXPECT_STREQ(machine.connections.dialled.at(0).szPassword, "secret");
}

TEST_F(DialTest, ANameOf300CharactersIsCutTo256) {
    machine.connections.entries.push_back({.name = std::string(256, 'n')});
    machine.connections.failNext("RasDialA", 623);
    expectFailure("Error: RasDial failed with 623:\rThe phone book entry cannot be found.");

    DialIn(std::string(300, 'n'), "");

    EXPECT_EQ(std::string(machine.connections.dialled.at(0).szEntryName), std::string(256, 'n'));
}

TEST_F(DialTest, ANameThatEndsWithNulIsTheSameName) {
    EXPECT_EQ(DialIn(std::string("Ridge\0", 6), ""), Long(1));
}

TEST_F(DialTest, AFailedDialIsShownAndReturnsNoHandle) {
    state().DialInStarted = true;
    machine.connections.failNext("RasDialA", 691);
    expectFailure("Error: RasDial failed with 691:\rAccess denied.");

    EXPECT_EQ(DialIn("Ridge", ""), Long(0));

    EXPECT_FALSE(state().DialInStarted);
}

TEST_F(DialTest, AHandleLeftByAFailedDialIsReturned) {
    machine.connections.failNext("RasDialA", 691);
    machine.connections.handleOfFailedDial = 7;
    expectFailure("Error: RasDial failed with 691:\rAccess denied.");

    EXPECT_EQ(DialIn("Ridge", ""), Long(7));

    EXPECT_TRUE(state().DialInStarted);
}

TEST_F(DialTest, ParametersThatCannotBeReadEndTheDial) {
    machine.connections.failNext("RasGetEntryDialParamsA", 623);
    expectFailure("Error: RasGetEntryDialParams failed with 623:\rThe phone book entry cannot be "
                  "found.");

    EXPECT_EQ(DialIn("Ridge", ""), Long(0));

    EXPECT_TRUE(machine.connections.dialled.empty());
    EXPECT_FALSE(state().DialInStarted);
}

TEST_F(DialTest, WhileABoxTellsOfAFailureNothingOfTheRecordIsLeft) {
    for (const char* operation : {"RasGetEntryDialParamsA", "RasDialA", "RasEnumConnectionsA"}) {
        machine.connections.failNext(operation, 691);
        std::size_t boxes = 0;
        std::size_t bytesLeft = 0;
        machine.desktop.answerAny = [&](const MsgBoxRequest&) {
            const auto* bytes = reinterpret_cast<const char*>(machine.connections.recordOfDial);
            ++boxes;
            bytesLeft +=
                sizeof(RASDIALPARAMSA) -
                static_cast<std::size_t>(std::count(bytes, bytes + sizeof(RASDIALPARAMSA), '\0'));
            return MsgBoxAnswer::Ok;
        };

        DialIn("Ridge", "");

        EXPECT_GE(boxes, 1U) << operation;
        EXPECT_EQ(bytesLeft, 0U) << operation;
    }
}

TEST_F(DialTest, AListThatCannotBeReadAfterTheDialIsTold) {
    machine.connections.failNext("RasEnumConnectionsA", 619);
    expectFailure("Error: RasEnumConnections failed with 619:\rThe port is disconnected.");
    expectFailure("Error: Re-initialisation of RAS failed.\rDialIn process may have failed.");

    EXPECT_EQ(DialIn("Ridge", ""), Long(1));

    EXPECT_TRUE(state().DialInStarted);
}

TEST_F(DialTest, NoTickIsHandledWhileDialling) {
    frmMain().load();
    frmMain().timUpdateStats.setInterval(100);
    frmMain().timUpdateStats.setEnabled(true);
    machine.connections.whileDialling = [this] { machine.desktop.advance(1000); };

    DialIn("Ridge", "");

    EXPECT_EQ(machine.desktop.ticksDropped, 10);
    EXPECT_EQ(machine.connections.countOf("RasEnumConnectionsA"), 2);
}

TEST_F(DialTest, ConnectWithoutEntriesIsTold) {
    expectWarning("Error: No connections are setup to connect to.");

    frmMain().cmdConnect.press();
}

TEST_F(DialTest, ConnectWithoutAChoiceIsTold) {
    fillConnections();
    expectWarning("Error: No connection chosen to connect to.");

    frmMain().cmdConnect.press();
}

TEST_F(DialTest, ConnectDialsTheChosenEntry) {
    fillConnections();
    frmMain().cboConnections.setListIndex(1);

    frmMain().cmdConnect.press();

    EXPECT_STREQ(machine.connections.dialled.at(0).szEntryName, "Ridge");
}

TEST_F(DialTest, HangUpWithNothingUpDoesNothing) {
    HangUp();

    EXPECT_EQ(machine.connections.calls, std::vector<std::string>{"RasEnumConnectionsA"});
}

TEST_F(DialTest, DisconnectHangsUpEveryConnectedLine) {
    machine.connections.connect("Harbour");
    machine.connections.connect("Ridge");
    state().ConnectionActive = true;

    frmMain().cmdDisconnect.press();

    EXPECT_TRUE(machine.connections.connections.empty());
    EXPECT_FALSE(state().ConnectionActive);
}

TEST_F(DialTest, ALineInAnotherStateIsLeftAlone) {
    machine.connections.connect("Harbour");
    const std::uint32_t dialling = machine.connections.connect("Ridge");
    machine.connections.connection(dialling)->state = 3;

    HangUp();

    ASSERT_EQ(machine.connections.connections.size(), 1U);
    EXPECT_EQ(machine.connections.connections[0].entryName, "Ridge");
}

TEST_F(DialTest, AFailedEnumerationIsShownTwiceAndStopsMonitoring) {
    startQuietly("/r");
    machine.connections.failNext("RasEnumConnectionsA", 619);
    expectFailure("Error: RasEnumConnections failed with 619:\rThe port is disconnected.");
    expectFailure("Error: RasEnumConnections failed with 619:\rThe port is disconnected.");

    HangUp();

    EXPECT_FALSE(state().MonitoringActive);
}

TEST_F(DialTest, AFailedStateIsShownStopsMonitoringAndTheNextLineIsHungUp) {
    startQuietly("/r");
    machine.connections.connect("Harbour");
    machine.connections.connect("Ridge");
    machine.connections.failNext("RasGetConnectStatusA", 601);
    expectFailure("Error: RasGetConnectStatus failed with 601:\rThe port handle is invalid.");

    HangUp();

    ASSERT_EQ(machine.connections.connections.size(), 1U);
    EXPECT_EQ(machine.connections.connections[0].entryName, "Harbour");
    EXPECT_FALSE(state().MonitoringActive);
}

TEST_F(DialTest, AFailedHangUpIsShownAndStopsMonitoringOnlyIfTheUserAgrees) {
    startQuietly("/r");
    machine.connections.connect("Harbour");
    state().ConnectionActive = true;
    machine.connections.failNext("RasHangUpA", 628);
    expectFailure("Error: RasHangUp failed with 628:\rThe port was disconnected.");
    expectStopQuestion(MsgBoxAnswer::Cancel);

    HangUp();

    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_TRUE(state().ConnectionActive);
}

TEST_F(DialTest, AnErrorOfTheConnectButtonCarriesItsNeighboursName) {
    expectBox("Error: No connections are setup to connect to.", MsgBoxButtons::OkOnly,
              MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok, [] { raise(ErrorNumber::Overflow); });
    expectError("6 (Overflow)", "cmdHistory_Click");

    frmMain().cmdConnect.press();
}

TEST_F(DialTest, AnErrorOfTheDisconnectButtonCarriesItsNeighboursName) {
    // Each report fails in its turn, so that the error climbs up to the button.
    const auto fails = [] { raise(ErrorNumber::Overflow); };
    const auto report = [](const std::string& name) {
        return "Error 6 (Overflow)\roccured in function \"" + name +
               "\".\rPlease contact the author for support.";
    };
    machine.connections.failNext("RasEnumConnectionsA", 619);
    expectBox("Error: RasEnumConnections failed with 619:\rThe port is disconnected.",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Critical, MsgBoxAnswer::Ok, fails);
    for (const char* name : {"ShowRasErrorMessage", "InitRas", "HangUp"}) {
        expectBox(report(name), MsgBoxButtons::OkOnly, MsgBoxIcon::Critical, MsgBoxAnswer::Ok,
                  fails);
    }
    expectError("6 (Overflow)", "cmdHistory_Click");

    frmMain().cmdDisconnect.press();
}

} // namespace
} // namespace tarvik
