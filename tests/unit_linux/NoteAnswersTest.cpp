#include "IconTest.h"
#include "SessionBusStandIn.h"
#include "Waiting.h"
#include "linux/face/BusNames.h"
#include "linux/face/DesktopNotes.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTimer>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace tarvik {
namespace {

/// The places of what a note is asked for with.
struct AskedNote {
    enum : int { application, replaced, icon, summary, body, actions, hints, timeout };
};

/// The desktop's notification service, and notes that can be answered.
class NoteAnswersTest : public testing::Test {
protected:
    NoteAnswersTest() {
        service.emplace();
        service->capabilities = QStringList{QStringLiteral("body"), QStringLiteral("actions")};
    }

    bool tell(const DesktopNote& note = standard()) {
        return notes.tell(note, [this](int how) { answers.push_back(how); });
    }
    static DesktopNote standard() {
        return {.title = "80 %", .text = "Harbour", .buttons = {"Silence", "Details"}};
    }
    /// Tells the note, and lets the service answer with its number.
    void tellAnswered(unsigned number, const DesktopNote& note = standard()) {
        const std::size_t before = service->notes.size();
        service->number = number;
        ASSERT_TRUE(tell(note));
        ASSERT_TRUE(spinUntil([&] { return service->notes.size() == before + 1; }));
        settle();
    }
    /// What is on its way over the bus, from the service or to it, has arrived afterwards.
    void settle() {
        static unsigned marks = 1'000'000;
        const unsigned mark = ++marks;
        bool heard = false;
        const face::NoteSignals listener([&](const QDBusMessage& message) {
            heard = heard || message.arguments().value(0).toUInt() == mark;
        });
        // Each mark may come before the listener is known to the bus.
        EXPECT_TRUE(spinUntil([&] {
            service->tell(QStringLiteral("NotificationClosed"), {mark, 1U});
            takeQueued();
            return heard;
        }));
        takeQueued();
    }
    void invoke(unsigned number, const char* key) {
        service->tell(QStringLiteral("ActionInvoked"), {number, QString::fromLatin1(key)});
        settle();
    }
    const QVariantList& asked(std::size_t place = 0) const { return service->notes.at(place); }

    std::optional<NoteServiceStandIn> service;
    std::vector<int> answers;
    std::vector<QString> tokens;
    face::DesktopNotes notes{[this](const QString& token) { tokens.push_back(token); }};
};

TEST_F(NoteAnswersTest, ANoteIsToldWithUrgencyButtonsAndTheProgramsName) {
    tellAnswered(7, {.title = "A & B",
                     .text = "<b>1\r\nsecond\rthird",
                     .urgency = DesktopNote::Urgency::Critical,
                     .buttons = {"Silence", "Details"}});

    ASSERT_EQ(asked().size(), 8);
    EXPECT_EQ(asked()[AskedNote::summary].toString(), QStringLiteral("A & B"));
    EXPECT_EQ(asked()[AskedNote::body].toString(), QStringLiteral("&lt;b&gt;1\nsecond\nthird"));
    EXPECT_EQ(asked()[AskedNote::icon].toString(), QStringLiteral("dialog-warning"));
    EXPECT_EQ(asked()[AskedNote::timeout], QVariant(-1));
    EXPECT_EQ(asked()[AskedNote::actions].toStringList().join(QLatin1Char('|')),
              QStringLiteral("default|Show Velmars Tarvik|0|Silence|1|Details"));
    const auto hints = qdbus_cast<QVariantMap>(asked()[AskedNote::hints]);
    EXPECT_EQ(hints[QStringLiteral("urgency")].typeId(), QMetaType::UChar);
    EXPECT_EQ(hints[QStringLiteral("urgency")].toInt(), 2);
    EXPECT_EQ(hints[QStringLiteral("desktop-entry")].toString(), QStringLiteral("tarvik"));
}

TEST_F(NoteAnswersTest, ANoteThatNobodyAnswersIsToldAsEver) {
    ASSERT_TRUE(notes.show(QStringLiteral("Title"), QStringLiteral("text"), 10));
    ASSERT_TRUE(spinUntil([&] { return !service->notes.empty(); }));

    EXPECT_EQ(qdbus_cast<QVariantMap>(asked()[AskedNote::hints]),
              (QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("tarvik")}}));
    EXPECT_EQ(asked()[AskedNote::icon].toString(), QStringLiteral("dialog-information"));
    EXPECT_EQ(service->asked, 0);
}

TEST_F(NoteAnswersTest, AServiceWithoutButtonsIsAskedForNone) {
    service->capabilities = QStringList{QStringLiteral("body")};

    tellAnswered(7);

    EXPECT_EQ(asked()[AskedNote::actions].toStringList(), QStringList());
}

TEST_F(NoteAnswersTest, AServiceIsAskedOnceWhatItCan) {
    tellAnswered(7);
    tellAnswered(8);

    EXPECT_EQ(service->asked, 1);
    EXPECT_EQ(asked(1)[AskedNote::replaced].toUInt(), 7U);
    EXPECT_FALSE(asked(1)[AskedNote::actions].toStringList().isEmpty());
}

TEST_F(NoteAnswersTest, AnotherServiceIsAskedAnew) {
    tellAnswered(7);
    service.reset();
    service.emplace();
    settle();

    tellAnswered(8);

    EXPECT_EQ(service->asked, 1);
    EXPECT_EQ(asked()[AskedNote::actions].toStringList(), QStringList());
}

TEST_F(NoteAnswersTest, NonsenseAboutWhatAServiceCanMeansNoButtons) {
    for (const QVariant& nonsense : {QVariant(QStringLiteral("actions")), QVariant(3)}) {
        service.reset();
        service.emplace();
        service->capabilities = nonsense;
        settle();

        tellAnswered(7);

        EXPECT_EQ(asked()[AskedNote::actions].toStringList(), QStringList());
    }
}

TEST_F(NoteAnswersTest, AServiceThatDoesNotSayWhatItCanIsNotWaitedForAndShowsTheNoteInTheEnd) {
    service->saysNothing = true;
    QElapsedTimer passed;
    passed.start();

    EXPECT_TRUE(tell());
    EXPECT_LT(passed.elapsed(), 2000);

    EXPECT_TRUE(spinUntil([&] { return !service->notes.empty(); }));
    EXPECT_EQ(asked()[AskedNote::actions].toStringList(), QStringList());
}

TEST_F(NoteAnswersTest, AClickAndEachButtonAreTold) {
    for (const auto& [key, how] : std::vector<std::pair<const char*, int>>{
             {"default", NotificationArea::noteClicked}, {"0", 0}, {"1", 1}}) {
        tellAnswered(7);

        invoke(7, key);

        EXPECT_EQ(answers, std::vector<int>{how});
        answers.clear();
    }
}

TEST_F(NoteAnswersTest, AnAnswerIsToldOnce) {
    tellAnswered(7);

    invoke(7, "1");
    invoke(7, "0");

    EXPECT_EQ(answers, std::vector<int>{1});
}

TEST_F(NoteAnswersTest, WhatIsNoButtonIsNoAnswer) {
    tellAnswered(7);

    for (const char* const key : {"2", "-1", "", "01", "Silence"}) {
        invoke(7, key);
    }

    EXPECT_TRUE(answers.empty());
}

TEST_F(NoteAnswersTest, AnotherNotesAnswerIsNone) {
    tellAnswered(7);

    invoke(8, "0");
    invoke(0, "0");

    EXPECT_TRUE(answers.empty());
}

TEST_F(NoteAnswersTest, AnswersOfWrongTypesAreNone) {
    tellAnswered(7);

    service->tell(QStringLiteral("ActionInvoked"), {QStringLiteral("7"), QStringLiteral("0")});
    service->tell(QStringLiteral("ActionInvoked"), {7U, QStringList{QStringLiteral("0")}});
    service->tell(QStringLiteral("ActionInvoked"), {});
    settle();

    EXPECT_TRUE(answers.empty());
}

TEST_F(NoteAnswersTest, AStrangerIsNotBelieved) {
    tellAnswered(7);
    BusNameStandIn stranger(QStringLiteral("org.example.Stranger"));
    for (const char* const signal : {"ActionInvoked", "NotificationClosed"}) {
        QDBusMessage message = QDBusMessage::createSignal(
            QStringLiteral("/org/freedesktop/Notifications"),
            QStringLiteral("org.freedesktop.Notifications"), QString::fromLatin1(signal));
        message.setArguments({7U, QStringLiteral("0")});
        stranger.connection().send(message);
        // The bus has passed it on when it answers.
        stranger.connection().call(face::BusNames::callToBus(QStringLiteral("GetId")));
    }
    settle();
    EXPECT_TRUE(answers.empty());

    invoke(7, "1");

    EXPECT_EQ(answers, std::vector<int>{1});
}

TEST_F(NoteAnswersTest, AClosedNoteIsNotAnswered) {
    tellAnswered(7);
    service->tell(QStringLiteral("NotificationClosed"), {7U, 2U});

    invoke(7, "0");

    EXPECT_TRUE(answers.empty());
}

TEST_F(NoteAnswersTest, ANoteThatClosesUponItsAnswerIsAnswered) {
    tellAnswered(7);
    service->tell(QStringLiteral("ActionInvoked"), {7U, QStringLiteral("0")});
    service->tell(QStringLiteral("NotificationClosed"), {7U, 2U});

    settle();

    EXPECT_EQ(answers, std::vector<int>{0});
}

TEST_F(NoteAnswersTest, ALaterNoteTakesTheAnswerAway) {
    tellAnswered(7);
    ASSERT_TRUE(notes.show(QStringLiteral("Title"), QStringLiteral("text"), 10));
    ASSERT_TRUE(spinUntil([&] { return service->notes.size() == 2; }));

    invoke(7, "0");

    EXPECT_TRUE(answers.empty());
}

TEST_F(NoteAnswersTest, WhenTheServiceGoesTheAnswerGoes) {
    tellAnswered(7);
    service.reset();
    service.emplace();
    settle();

    invoke(7, "0");

    EXPECT_TRUE(answers.empty());
}

TEST_F(NoteAnswersTest, ANoteThatTheServiceRefusesIsNotAnswered) {
    service->fails = true;
    tellAnswered(7);

    invoke(7, "0");

    EXPECT_TRUE(answers.empty());
}

TEST_F(NoteAnswersTest, WhatAServiceThatWentAwayHasNotShownIsShownAndAnsweredWhenOneComes) {
    service->silent = true;
    ASSERT_TRUE(tell());
    ASSERT_TRUE(spinUntil([&] { return service->notes.size() == 1; }));
    service.reset();
    ASSERT_TRUE(
        spinUntil([&] { return notes.findChildren<QDBusPendingCallWatcher*>().isEmpty(); }));

    service.emplace();
    service->capabilities = QStringList{QStringLiteral("actions")};
    service->number = 9;

    ASSERT_TRUE(spinUntil([&] { return service->notes.size() == 1; }));
    settle();
    invoke(9, "1");
    EXPECT_EQ(answers, std::vector<int>{1});
}

TEST_F(NoteAnswersTest, WhatLetsAWindowComeToTheFrontIsPassedOnBeforeTheAnswer) {
    tellAnswered(7);
    service->tell(QStringLiteral("ActivationToken"), {7U, QStringLiteral("token")});

    invoke(7, "default");

    EXPECT_EQ(tokens, std::vector<QString>{QStringLiteral("token")});
    EXPECT_EQ(answers, std::vector<int>{NotificationArea::noteClicked});
}

TEST_F(NoteAnswersTest, WithoutAServiceThereIsNoNote) {
    service.reset();

    EXPECT_FALSE(tell());
}

TEST_F(NoteAnswersTest, AHaltedBusShowsNoNoteThatCanBeAnswered) {
    const HaltedBus halted;

    EXPECT_FALSE(tell());
}

/// Such a note of the program's icon.
class IconNoteTest : public IconTest {
protected:
    void tellAnswered() {
        ask(NotificationArea::add);
        service.capabilities = QStringList{QStringLiteral("actions")};
        service.number = 7;
        ASSERT_TRUE(area.tell({.title = "80 %", .text = "Harbour", .buttons = {"Silence"}},
                              [this](int how) { answers.push_back(how); }));
        ASSERT_TRUE(spinUntil([&] { return !service.notes.empty(); }));
    }
    /// As often as it is believed: the answer is told once at most.
    void invokeUntil(const std::function<bool()>& condition) {
        EXPECT_TRUE(spinUntil([&] {
            service.tell(QStringLiteral("ActionInvoked"), {7U, QStringLiteral("0")});
            return condition();
        }));
    }

    NoteServiceStandIn service;
    std::vector<int> answers;
};

TEST_F(IconNoteTest, AnAnswerReachesTheProgram) {
    ASSERT_NO_FATAL_FAILURE(tellAnswered());

    invokeUntil([&] { return !answers.empty(); });

    EXPECT_EQ(answers, std::vector<int>{0});
}

TEST_F(IconNoteTest, OnceTheIconIsRemovedThereIsNoAnswer) {
    ASSERT_NO_FATAL_FAILURE(tellAnswered());
    ask(NotificationArea::remove);
    int rounds = 0;

    invokeUntil([&] { return ++rounds >= 20; });

    EXPECT_TRUE(answers.empty());
}

TEST_F(IconNoteTest, WhileABoxIsOpenThereIsNoAnswer) {
    ASSERT_NO_FATAL_FAILURE(tellAnswered());
    bool tried = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            watch.stop();
            int rounds = 0;
            invokeUntil([&] { return ++rounds >= 20; });
            tried = true;
            box->close();
        }
    });
    watch.start(5);

    machine.desktop.messageBox({.text = "?", .caption = "T"});

    EXPECT_TRUE(tried);
    EXPECT_TRUE(answers.empty());
}

TEST_F(IconNoteTest, ItNeedsNeitherAnIconNorAnybodyWhoWaitsForItsAnswer) {
    service.number = 7;
    int rounds = 0;

    EXPECT_TRUE(area.tell({.title = "80 %", .text = "x"}, {}));

    ASSERT_TRUE(spinUntil([&] { return !service.notes.empty(); }));
    invokeUntil([&] { return ++rounds >= 20; });
}

} // namespace
} // namespace tarvik
