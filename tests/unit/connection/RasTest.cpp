#include "connection/mdlCode.h"

#include "state/mdlVar.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

class RasTest : public WorldTest {
protected:
    std::uint32_t count = 99;
    std::vector<PhoneBookEntry> entries{{.name = "left over"}};

    std::vector<std::string> entryNames() const {
        std::vector<std::string> names;
        for (const PhoneBookEntry& entry : entries) {
            names.push_back(entry.name);
        }
        return names;
    }
};

TEST_F(RasTest, WithNoConnectionTheEnumerationSucceedsWithNone) {
    EXPECT_EQ(InitRas(0, count), 0U);

    EXPECT_EQ(count, 0U);
    EXPECT_GE(state().RasConnections.size(), 2U);
}

TEST_F(RasTest, ThreeConnectionsGrowTheListByOnePerCall) {
    for (const char* name : {"A", "B", "C"}) {
        machine.connections.connect(name);
    }

    EXPECT_EQ(InitRas(0, count), 0U);

    EXPECT_EQ(count, 3U);
    EXPECT_EQ(machine.connections.sizesOffered, (std::vector<std::uint32_t>{0, 1236}));
    ASSERT_EQ(state().RasConnections.size(), 3U);
    EXPECT_STREQ(state().RasConnections[2].szEntryName, "C");
}

TEST_F(RasTest, TheServiceIsNeverToldThatThereIsMoreRoomThanThereIs) {
    for (int i = 0; i < 5; ++i) {
        machine.connections.connect("A");
    }

    EXPECT_EQ(InitRas(0, count), 0U);

    EXPECT_EQ(machine.connections.sizesOffered, (std::vector<std::uint32_t>{0, 1236, 1648, 2060}));
    EXPECT_EQ(state().RasConnections.size(), 5U);
}

TEST_F(RasTest, TheCallersSizeIsOfferedFirst) {
    machine.connections.connect("A");

    EXPECT_EQ(InitRas(412, count), 0U);

    EXPECT_EQ(machine.connections.sizesOffered, std::vector<std::uint32_t>{412});
}

TEST_F(RasTest, AServiceThatIsNeverSatisfiedIsGivenUp) {
    machine.connections.connect("A");
    machine.connections.neverSatisfied = true;
    expectFailure("Error: RasEnumConnections failed with 603:\rThe caller's buffer is too small.");

    EXPECT_EQ(InitRas(0, count), 603U);
}

TEST_F(RasTest, AFailedEnumerationIsShownAndItsCodeReturned) {
    machine.connections.failNext("RasEnumConnectionsA", 619);
    expectFailure("Error: RasEnumConnections failed with 619:\rThe port is disconnected.");

    EXPECT_EQ(InitRas(0, count), 619U);
}

TEST_F(RasTest, EntriesAreListedInTheNewestForm) {
    machine.connections.entries = {{"Harbour", 1, "C:\\book.pbk"}, {"Ridge", 0, ""}};

    EXPECT_TRUE(RasGetAllEntries(entries, ""));

    ASSERT_EQ(entryNames(), (std::vector<std::string>{"Harbour", "Ridge"}));
    EXPECT_EQ(entries[0].flags, 1U);
    EXPECT_EQ(entries[0].phoneBookPath, "C:\\book.pbk");
}

TEST_F(RasTest, TheMiddleFormIsUsedWhereTheNewestIsNotKnown) {
    machine.connections.entrySizes = {264, 28};
    machine.connections.entries = {{"Harbour", 1, "C:\\book.pbk"}, {std::string(256, 'n')}};

    EXPECT_TRUE(RasGetAllEntries(entries, ""));

    EXPECT_EQ(entryNames(), (std::vector<std::string>{"Harbour", std::string(256, 'n')}));
    EXPECT_EQ(entries[0].phoneBookPath, "");
}

TEST_F(RasTest, TheOldestFormIsUsedLast) {
    machine.connections.entrySizes = {28};
    phoneBook({"Harbour", "A name that is longer than twenty"});

    EXPECT_TRUE(RasGetAllEntries(entries, ""));

    EXPECT_EQ(entryNames(), (std::vector<std::string>{"Harbour", "A name that is longe"}));
    EXPECT_EQ(machine.connections.countOf("RasEnumEntriesA"), 4);
}

TEST_F(RasTest, AServiceThatKnowsNoFormIsReported) {
    machine.connections.entrySizes = {};
    expectFailure("Error: RasEnumEntries failed with 632:\rThe structure size is incorrect.");

    EXPECT_FALSE(RasGetAllEntries(entries, ""));

    EXPECT_TRUE(entries.empty());
}

TEST_F(RasTest, AnEmptyPhoneBookHasNoEntries) {
    EXPECT_FALSE(RasGetAllEntries(entries, ""));

    EXPECT_TRUE(entries.empty());
    EXPECT_EQ(machine.connections.countOf("RasEnumEntriesA"), 1);
}

TEST_F(RasTest, AFailedListingIsReported) {
    phoneBook({"Harbour"});
    constexpr std::uint32_t probeSucceeds = 0;
    machine.connections.failNext("RasEnumEntriesA", probeSucceeds);
    machine.connections.failNext("RasEnumEntriesA", 621);
    expectFailure("Error: RasEnumEntries failed with 621:\rThe phone book file cannot be opened.");

    EXPECT_FALSE(RasGetAllEntries(entries, ""));
}

TEST_F(RasTest, ACodeOfTheServiceHasTheServicesText) {
    machine.connections.errorTexts[691] = "Access denied.";

    EXPECT_EQ(RasErrorMessage(691), "Access denied.");
}

TEST_F(RasTest, AKnownSystemCodeCannotBeToldByDesign) {
    EXPECT_EQ(RasErrorMessage(5), "Error obtaining error message from system.");
}

TEST_F(RasTest, AnUnknownSystemCodeIsAnUnknownError) {
    EXPECT_EQ(RasErrorMessage(599), "Unknown error.");
}

TEST_F(RasTest, Code600IsStillTheSystems) {
    EXPECT_EQ(RasErrorMessage(600), "Unknown error.");
    EXPECT_EQ(RasErrorMessage(601), "The port handle is invalid.");
}

TEST_F(RasTest, ACodeThatTheServiceDoesNotKnowCannotBeTold) {
    EXPECT_EQ(RasErrorMessage(9999), "Error obtaining error message from system.");
}

TEST_F(RasTest, AnEmptyTextIsAnUnknownError) {
    machine.connections.errorTexts[700] = "";

    EXPECT_EQ(RasErrorMessage(700), "Unknown error.");
}

TEST_F(RasTest, ALongTextIsCutToTheBuffer) {
    machine.connections.errorTexts[700] = std::string(600, 'x');

    EXPECT_EQ(RasErrorMessage(700), std::string(511, 'x'));
}

TEST_F(RasTest, AFailureIsShownWithNameCodeAndText) {
    machine.connections.errorTexts[691] = "Access denied.";
    expectFailure("Error: RasDial failed with 691:\rAccess denied.");

    ShowRasErrorMessage("RasDial", 691);
}

} // namespace
} // namespace tarvik
