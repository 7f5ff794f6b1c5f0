#include "linux/face/DesktopNotes.h"
#include "SessionBusStandIn.h"
#include "Waiting.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QEvent>

#include <gtest/gtest.h>

#include <optional>
#include <utility>
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
        takeAnswers();
    }
    void takeAnswers() {
        EXPECT_TRUE(spinUntil([this] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return notes.findChildren<QDBusPendingCallWatcher*>().isEmpty();
        }));
    }

    std::vector<unsigned> replacedNumbers() const {
        std::vector<unsigned> numbers;
        for (const QVariantList& asked : service->notes) {
            numbers.push_back(asked[replacedNote].toUInt());
        }
        return numbers;
    }

    std::optional<NoteServiceStandIn> service{std::in_place};
    face::DesktopNotes notes;
};

TEST_F(DesktopNotesTest, ANoteTakesThePlaceOfTheOneBefore) {
    service->number = 7;
    showAnswered("first");
    service->number = 9;
    showAnswered("second");

    showAnswered("third");

    EXPECT_EQ(replacedNumbers(), (std::vector<unsigned>{0, 7, 9}));
}

TEST_F(DesktopNotesTest, ANoteThatWasRefusedIsNotReplaced) {
    service->number = 7;
    showAnswered("first");
    service->fails = true;
    showAnswered("second");

    showAnswered("third");

    EXPECT_EQ(replacedNumbers(), (std::vector<unsigned>{0, 7, 7}));
}

TEST_F(DesktopNotesTest, AServiceThatDoesNotAnswerIsNotWaitedFor) {
    service->silent = true;

    EXPECT_TRUE(notes.show(QStringLiteral("Title"), QStringLiteral("first"), 0));
    EXPECT_TRUE(notes.show(QStringLiteral("Title"), QStringLiteral("second"), 0));

    EXPECT_TRUE(spinUntil([this] { return service->notes.size() == 2; }));
}

/// As where the bus starts the service too early in the user's session.
TEST_F(DesktopNotesTest, WhatAServiceThatWentAwayHasNotShownIsShownWhenOneComes) {
    service->silent = true;
    EXPECT_TRUE(notes.show(QStringLiteral("Title"), QStringLiteral("what matters"), 0));
    EXPECT_TRUE(spinUntil([this] { return service->notes.size() == 1; }));
    service.reset();
    takeAnswers();

    service.emplace();

    EXPECT_TRUE(spinUntil([this] { return service->notes.size() == 1; }));
    takeAnswers();
    service.reset();
    service.emplace();
    takeQueued();
    EXPECT_TRUE(service->notes.empty());
}

TEST_F(DesktopNotesTest, WhatTheServiceItselfHasRefusedIsNotShownByAnother) {
    service->fails = true;
    showAnswered("refused");
    service.reset();
    service.emplace();

    takeQueued();

    EXPECT_TRUE(service->notes.empty());
}

} // namespace
} // namespace tarvik
