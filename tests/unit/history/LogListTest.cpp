#include "history/HistoryTest.h"
#include "history/mdlListViewEx.h"
#include "wiring/frmHistoryEvents.h"

#include <algorithm>
#include <random>

namespace tarvik {
namespace {

using LogListTest = HistoryTest;

TEST_F(LogListTest, ColumnsHaveTheirHeadersInOrder) {
    Texts headers;
    for (const ListColumn& column : window().lvwCompleteLog.columns()) {
        headers.push_back(column.header);
    }

    EXPECT_EQ(headers,
              (Texts{"ID", "Date", "Time", "Duration", "Bytes sent", "Bytes rcvd", "IP address"}));
}

TEST_F(LogListTest, HeadersCannotBeClicked) {
    EXPECT_FALSE(window().lvwCompleteLog.headersClickable());
}

TEST_F(LogListTest, ADoubleClickShowsTheRecord) {
    Log log = numberedLog(5);
    log[3] = {"12.05.2005|14:03:11", "123456", "987654", "760000", "10.0.0.1"};
    import(log);
    select(4);
    expectInformation("This records data:\r\r"
                      "ID:  \t\t4\r"
                      "Date:\t\t12.05.2005\r"
                      "Time:\t\t14:03:11\r"
                      "Duration:  \t00:12:40:000\r"
                      "Bytes sent:\t123456\r"
                      "Bytes rcvd:\t987654\r"
                      "IP address:\t10.0.0.1");

    window().lvwCompleteLog.DblClick.raise();

    EXPECT_EQ(machine.desktop.boxesShown.back().buttons, MsgBoxButtons::OkOnly);
}

TEST_F(LogListTest, ADoubleClickShowsNothingInPlaceOfWhatWasNotLogged) {
    import({{ "|", "1", "2", "3", "" }});
    select(1);
    expectInformation("This records data:\r\rID:  \t\t1\rDate:\t\t\rTime:\t\t\r"
                      "Duration:  \t00:00:00:003\rBytes sent:\t1\rBytes rcvd:\t2\rIP address:\t");

    window().lvwCompleteLog.DblClick.raise();

    EXPECT_EQ(row(1)[1], "(no date)");
}

TEST_F(LogListTest, ADoubleClickWritesNumbersAsTheUserDoes) {
    machine.locale.conventions = germanLocale();
    import({{ "a|b", "1234567,5", "2000000", "3", "x" }});
    select(1);
    expectInformation("This records data:\r\rID:  \t\t1\rDate:\t\ta\rTime:\t\tb\r"
                      "Duration:  \t00:00:00:003\rBytes sent:\t1234567,5\r"
                      "Bytes rcvd:\t2000000\rIP address:\tx");

    window().lvwCompleteLog.DblClick.raise();

    EXPECT_EQ(row(1)[4], "1234567,5");
}

TEST_F(LogListTest, ADoubleClickShowsAlsoWhatIsOutsideTheRange) {
    import(numberedLog(5));
    data().start = data().stop = 2;
    select(5);
    expectInformation("This records data:\r\rID:  \t\t5\rDate:\t\td5\rTime:\t\tt5\r"
                      "Duration:  \t00:00:00:005\rBytes sent:\t8005\rBytes rcvd:\t9005\r"
                      "IP address:\t10.0.0.5");

    window().lvwCompleteLog.DblClick.raise();

    EXPECT_EQ(data().start, Long(2));
}

TEST_F(LogListTest, ADoubleClickWithoutASelectionShowsNothing) {
    import(numberedLog(5));
    machine.desktop.boxesShown.clear();

    window().lvwCompleteLog.DblClick.raise();

    EXPECT_TRUE(machine.desktop.boxesShown.empty());
}

TEST_F(LogListTest, ADoubleClickOnAnEmptyListShowsNothing) {
    window().lvwCompleteLog.DblClick.raise();

    EXPECT_TRUE(machine.desktop.boxesShown.empty());
}

TEST_F(LogListTest, HeadersCanBeMadeClickableAndFlatAgain) {
    SetSortHeader(window().lvwCompleteLog, true);
    EXPECT_TRUE(window().lvwCompleteLog.headersClickable());

    SetSortHeader(window().lvwCompleteLog, false);

    EXPECT_FALSE(window().lvwCompleteLog.headersClickable());
    EXPECT_EQ(machine.desktop.changesTold,
              (Texts{"frmHistory.lvwCompleteLog", "frmHistory.lvwCompleteLog"}));
}

TEST_F(LogListTest, ColumnsFitTheirHeadersWhereThatIsWanted) {
    SetOptimalHeaderWidth(window().lvwCompleteLog, false);
    EXPECT_EQ(window().lvwCompleteLog.columnFit(), ColumnFit::Contents);

    SetOptimalHeaderWidth(window().lvwCompleteLog, true);

    EXPECT_EQ(window().lvwCompleteLog.columnFit(), ColumnFit::Headers);
}

TEST_F(LogListTest, ColumnsAreFittedAnewEachTime) {
    SetOptimalHeaderWidth(window().lvwCompleteLog, false);
    SetOptimalHeaderWidth(window().lvwCompleteLog, false);

    EXPECT_EQ(machine.desktop.changesTold,
              (Texts{"frmHistory.lvwCompleteLog", "frmHistory.lvwCompleteLog"}));
}

TEST_F(LogListTest, ColumnsFitTheirContentsAfterAnImport) {
    SetOptimalHeaderWidth(window().lvwCompleteLog, true);

    import(numberedLog(2));

    EXPECT_EQ(window().lvwCompleteLog.columnFit(), ColumnFit::Contents);
}

/// A text of up to so many characters.
std::string anyText(std::mt19937& random, unsigned longest) {
    std::string text(random() % (longest + 1), 'x');
    for (char& character : text) {
        character = static_cast<char>('a' + random() % 26);
    }
    return text;
}

std::string anyNumber(std::mt19937& random) {
    return std::to_string(random() >> random() % 31);
}

TEST_F(LogListTest, NoCellIsLongerThanWhatItsColumnIsFittedTo) {
    std::mt19937 random(20261116); // NOLINT: each run is to see the same logs
    const ListView& list = window().lvwCompleteLog;
    for (int round = 0; round < 200; ++round) {
        Log log;
        for (auto i = random() % 12 + 1; i > 0; --i) {
            log.push_back({anyText(random, 14) + "|" + anyText(random, 14), anyNumber(random),
                           anyNumber(random), anyNumber(random), anyText(random, 30)});
        }

        import(log);

        ASSERT_EQ(list.longestTexts().size(), 7U);
        for (const Row& each : rows()) {
            for (std::size_t column = 0; column < each.size(); ++column) {
                ASSERT_LE(each[column].size(), list.longestTexts()[column].size())
                    << "round " << round << ", \"" << each[column] << "\"";
            }
        }
    }
}

TEST_F(LogListTest, TheColumnsOfAShortListAreFittedToItAfterALongOne) {
    import(
        {{ "a very long date|a very long time",
           "123456789012",
           "123456789012",
           "999999999",
           "an address that is long indeed" }});

    import({{ "12.05.2005|14:03:11 AM", "1", "2", "3", "192.168.100.100" }});

    EXPECT_EQ(
        window().lvwCompleteLog.longestTexts(),
        (Texts{"1", "12.05.2005", "14:03:11 AM", "00:00:00:003", "1", "2", "192.168.100.100"}));
}

TEST_F(LogListTest, NoColumnIsFittedToATextThatIsNotInIt) {
    import({{"1.1.26|8:00", "1", "2", "3", "10.0.0.1"},
            { "2.1.26|8:00",
              "4",
              "5",
              "6",
              "10.0.0.2" }});

    const Texts& longest = window().lvwCompleteLog.longestTexts();
    ASSERT_EQ(longest.size(), 7U);
    EXPECT_EQ(longest[1].size(), 6U) << longest[1];
    EXPECT_EQ(longest[2].size(), 4U) << longest[2];
    EXPECT_EQ(longest[6].size(), 8U) << longest[6];
}

TEST_F(LogListTest, AColumnIsFittedToSubstitutesThatAreInIt) {
    import({{"|", "1", "2", "3", ""}, { "2.1.26|8:00", "4", "5", "6", "10.0.0.2" }});

    const Texts& longest = window().lvwCompleteLog.longestTexts();
    ASSERT_EQ(longest.size(), 7U);
    EXPECT_EQ(longest[1], "(no date)");
    EXPECT_EQ(longest[2], "(no time)");
    EXPECT_EQ(longest[6], "[no IP logged]");
}

TEST_F(LogListTest, AColumnIsFittedToFractionsBetweenItsLeastAndItsGreatestNumber) {
    import({{"a|b", "1", "1"}, {"c|d", "2.3456", "2.3456"}, { "e|f", "10", "10" }});

    const Texts& longest = window().lvwCompleteLog.longestTexts();
    ASSERT_EQ(longest.size(), 7U);
    EXPECT_EQ(longest[4], "2.3456");
    EXPECT_EQ(longest[5], "2.3456");
}

} // namespace
} // namespace tarvik
