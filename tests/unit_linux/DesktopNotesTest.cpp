#include "linux/face/DesktopNotes.h"
#include "SessionBusStandIn.h"
#include "Waiting.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QEvent>

#include <gtest/gtest.h>

#include <vector>

namespace tarvik {
namespace {

/// The place of the note whose place a new one takes, in what it is asked for with.
constexpr int replacedNote = 1;

class DesktopNotesTest : public testing::Test {
protected:
    /// Shows a note and takes the service's answer.
    void showAnswered(const char* text) {
        EXPECT_TRUE(notes.show(QStringLiteral("Title"), QString::fromLatin1(text), 0));
        EXPECT_TRUE(spinUntil([this] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return notes.findChildren<QDBusPendingCallWatcher*>().isEmpty();
        }));
    }

    std::vector<unsigned> replacedNumbers() const {
        std::vector<unsigned> numbers;
        for (const QVariantList& asked : service.notes) {
            numbers.push_back(asked[replacedNote].toUInt());
        }
        return numbers;
    }

    NoteServiceStandIn service;
    face::DesktopNotes notes;
};

TEST_F(DesktopNotesTest, ANoteTakesThePlaceOfTheOneBefore) {
    service.number = 7;
    showAnswered("first");
    service.number = 9;
    showAnswered("second");

    showAnswered("third");

    EXPECT_EQ(replacedNumbers(), (std::vector<unsigned>{0, 7, 9}));
}

TEST_F(DesktopNotesTest, ANoteThatWasRefusedIsNotReplaced) {
    service.number = 7;
    showAnswered("first");
    service.fails = true;
    showAnswered("second");

    showAnswered("third");

    EXPECT_EQ(replacedNumbers(), (std::vector<unsigned>{0, 7, 7}));
}

TEST_F(DesktopNotesTest, AServiceThatDoesNotAnswerIsNotWaitedFor) {
    service.silent = true;

    EXPECT_TRUE(notes.show(QStringLiteral("Title"), QStringLiteral("first"), 0));
    EXPECT_TRUE(notes.show(QStringLiteral("Title"), QStringLiteral("second"), 0));

    EXPECT_TRUE(spinUntil([this] { return service.notes.size() == 2; }));
}

} // namespace
} // namespace tarvik
