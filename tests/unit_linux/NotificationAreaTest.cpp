#include "IconTest.h"
#include "SessionBusStandIn.h"
#include "Waiting.h"
#include "common/TrayLamp.h"
#include "linux/face/BusNames.h"
#include "linux/face/DrawingPainter.h"
#include "linux/face/ItemTypes.h"
#include "support/QtWidgets.h"

#include <QApplication>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {
namespace {

/// The places of what a note is asked for with.
struct NoteArgument {
    enum : int { application, replaced, icon, summary, body, actions, hints, timeout };
};

class NotificationAreaTest : public IconTest {
protected:
    bool note(std::string_view title, std::string_view text, std::uint32_t milliseconds = 0) {
        NOTIFYICONDATAA record{};
        record.uFlags = NotificationArea::info;
        title.copy(record.szInfoTitle, sizeof record.szInfoTitle - 1);
        text.copy(record.szInfo, sizeof record.szInfo - 1);
        record.uTimeoutOrVersion = milliseconds;
        return area.Shell_NotifyIconA(NotificationArea::modify, &record);
    }

    /// The menu that a panel gets; null where there is none.
    static QMenu* panelMenu() { return qobject_cast<QMenu*>(windowNamed("mnuPopUp")); }
};

TEST_F(NotificationAreaTest, WithoutATrayAnIconIsNotAdded) {
    EXPECT_FALSE(ask(NotificationArea::add));
}

TEST_F(NotificationAreaTest, WithoutATrayAnIconIsNotChanged) {
    ask(NotificationArea::add);

    EXPECT_FALSE(ask(NotificationArea::modify));
}

TEST_F(NotificationAreaTest, AnIconThatWasNeverAddedIsNotChanged) {
    EXPECT_FALSE(ask(NotificationArea::modify));
}

TEST_F(NotificationAreaTest, AnIconThatWaitsForATrayCanBeRemovedOnce) {
    ask(NotificationArea::add);

    EXPECT_TRUE(ask(NotificationArea::remove));
    EXPECT_FALSE(ask(NotificationArea::remove));
}

TEST_F(NotificationAreaTest, AVersionIsTakenWhileThereIsAnIcon) {
    const bool before = ask(NotificationArea::setVersion);
    ask(NotificationArea::add);

    const bool with = ask(NotificationArea::setVersion);

    EXPECT_FALSE(before);
    EXPECT_TRUE(with);
}

TEST_F(NotificationAreaTest, AnUnknownRequestIsRefused) {
    constexpr std::uint32_t unknown = 3;
    ask(NotificationArea::add);

    EXPECT_FALSE(ask(unknown));
}

TEST_F(NotificationAreaTest, TheSystemIsOneThatShowsNotes) {
    EXPECT_EQ(area.GetVersion() & 0xFFU, 5U);
    EXPECT_EQ(area.GetVersion() & 0x80000000U, 0U);
}

TEST_F(NotificationAreaTest, WithoutAServiceANoteIsNotShown) {
    EXPECT_FALSE(note("Title", "text"));
}

TEST_F(NotificationAreaTest, ANoteIsShownWithTitleTextAndTime) {
    NoteServiceStandIn service;

    EXPECT_TRUE(note("Connected", "to the net", 5000));

    ASSERT_TRUE(spinUntil([&] { return !service.notes.empty(); }));
    const QVariantList& asked = service.notes.front();
    ASSERT_EQ(asked.size(), 8);
    EXPECT_EQ(asked[NoteArgument::summary].toString(), QStringLiteral("Connected"));
    EXPECT_EQ(asked[NoteArgument::body].toString(), QStringLiteral("to the net"));
    EXPECT_EQ(asked[NoteArgument::timeout], QVariant(5000));
    EXPECT_EQ(asked[NoteArgument::replaced], QVariant(0U));
    EXPECT_EQ(asked[NoteArgument::actions].toStringList(), QStringList());
    EXPECT_EQ(asked[NoteArgument::application].toString(), QCoreApplication::applicationName());
}

TEST_F(NotificationAreaTest, ATextIsMeantAsItStandsAndKeepsItsLines) {
    NoteServiceStandIn service;

    note("A & B", "<b>1 & \"2\"\r\nsecond\rthird");

    ASSERT_TRUE(spinUntil([&] { return !service.notes.empty(); }));
    EXPECT_EQ(service.notes.front()[NoteArgument::summary].toString(), QStringLiteral("A & B"));
    EXPECT_EQ(service.notes.front()[NoteArgument::body].toString(),
              QStringLiteral("&lt;b&gt;1 &amp; &quot;2&quot;\nsecond\nthird"));
}

TEST_F(NotificationAreaTest, ANoteNeedsNoIcon) {
    NoteServiceStandIn service;
    ask(NotificationArea::add);
    ask(NotificationArea::remove);

    EXPECT_TRUE(note("Title", "text"));
}

TEST_F(NotificationAreaTest, AServiceThatHasGoneShowsNoNote) {
    auto service = std::make_unique<NoteServiceStandIn>();
    ASSERT_TRUE(note("Title", "text"));

    service.reset();

    EXPECT_FALSE(note("Title", "text"));
}

/// A panel that shows items asks for them; it opens their menus by itself.
class PanelTest : public NotificationAreaTest {
protected:
    PanelTest() {
        ask(NotificationArea::add);
        menu = panelMenu();
    }

    QAction* entry(int index) const { return menu->actions().at(index); }

    BusNameStandIn watcher{QStringLiteral("org.kde.StatusNotifierWatcher")};
    QPointer<QMenu> menu;
};

TEST_F(NotificationAreaTest, WithoutAPanelThatTakesItemsThereIsNoMenuForIt) {
    ask(NotificationArea::add);

    EXPECT_EQ(panelMenu(), nullptr);
}

TEST_F(PanelTest, ThePanelGetsTheMenuOfTheForm) {
    ASSERT_NE(menu, nullptr);
    QStringList captions;
    for (const QAction* action : menu->actions()) {
        captions << (action->isSeparator() ? QStringLiteral("-") : action->text());
    }

    EXPECT_EQ(captions.join(QLatin1Char('|')),
              QStringLiteral("Show/Hide|Start Monitoring|-|Connect|Disconnect|-|Quit"));
}

TEST_F(PanelTest, TheMenuFollowsCaptionsAndWhatIsEnabled) {
    ASSERT_NE(menu, nullptr);

    tray.mnuPopUp.setEntryCaption(FrmSysTray::monitoring, "Stop & Save");
    tray.mnuPopUp.setEntryEnabled(FrmSysTray::connect, false);

    EXPECT_EQ(entry(FrmSysTray::monitoring)->text(), QStringLiteral("Stop && Save"));
    EXPECT_FALSE(entry(FrmSysTray::connect)->isEnabled());
    EXPECT_TRUE(entry(FrmSysTray::disconnect)->isEnabled());
    EXPECT_TRUE(entry(2)->isSeparator());
    EXPECT_EQ(entry(2)->text(), QString());
}

TEST_F(PanelTest, AChosenEntryReachesTheModel) {
    ASSERT_NE(menu, nullptr);
    std::vector<int> chosen;
    tray.mnuPopUp.Click.connect([&](int index) { chosen.push_back(index); });

    entry(FrmSysTray::disconnect)->trigger();

    EXPECT_TRUE(spinUntil([&] { return !chosen.empty(); }));
    EXPECT_EQ(chosen, std::vector<int>{FrmSysTray::disconnect});
}

TEST_F(PanelTest, WhileABoxIsOpenAnEntryDoesNotReachTheModel) {
    ASSERT_NE(menu, nullptr);
    std::vector<int> chosen;
    tray.mnuPopUp.Click.connect([&](int index) { chosen.push_back(index); });
    bool tried = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            watch.stop();
            entry(FrmSysTray::quit)->trigger();
            tried = takeQueued();
            box->close();
        }
    });
    watch.start(5);

    machine.desktop.messageBox({.text = "?", .caption = "T"});

    EXPECT_TRUE(tried);
    EXPECT_EQ(chosen, std::vector<int>{});
}

TEST_F(PanelTest, AnEntryMayRemoveTheIcon) {
    ASSERT_NE(menu, nullptr);
    bool removed = false;
    tray.mnuPopUp.Click.connect([&](int) {
        removed = ask(NotificationArea::remove);
        tray.unload();
    });

    entry(FrmSysTray::quit)->trigger();

    EXPECT_TRUE(spinUntil([&] { return removed; }));
    EXPECT_FALSE(tray.loaded());
    EXPECT_TRUE(spinUntil([&] { return menu.isNull(); }));
}

TEST_F(PanelTest, AnEntryOfAFormThatIsUnloadedBeforeItCountsIsDropped) {
    ASSERT_NE(menu, nullptr);
    std::vector<int> chosen;
    tray.mnuPopUp.Click.connect([&](int index) { chosen.push_back(index); });

    entry(FrmSysTray::quit)->trigger();
    ask(NotificationArea::remove);
    tray.unload();
    ASSERT_TRUE(takeQueued());

    EXPECT_EQ(chosen, std::vector<int>{});
}

TEST_F(PanelTest, TheMenuGoesWithItsIcon) {
    ASSERT_NE(menu, nullptr);

    ask(NotificationArea::remove);

    EXPECT_TRUE(spinUntil([&] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return menu.isNull();
    }));
}

TEST_F(PanelTest, AnIconThatIsAddedAgainHasAMenuOfItsOwn) {
    ask(NotificationArea::remove);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    tray.mnuPopUp.setEntryCaption(FrmSysTray::monitoring, "Stop Monitoring");

    ask(NotificationArea::add);

    ASSERT_NE(panelMenu(), nullptr);
    EXPECT_EQ(panelMenu()->actions().at(FrmSysTray::monitoring)->text(),
              QStringLiteral("Stop Monitoring"));
}

const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString itemPath = QStringLiteral("/StatusNotifierItem");

TEST_F(NotificationAreaTest, APanelThatComesAfterTheProgramGetsTheIcon) {
    const bool before = ask(NotificationArea::add);

    const PanelStandIn panel;

    EXPECT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));
    EXPECT_EQ(panel.items.size(), 1U);
    EXPECT_FALSE(before);
}

TEST_F(NotificationAreaTest, APanelThatWentAwayAndCameBackGetsTheIconAgain) {
    auto panel = std::make_unique<PanelStandIn>();
    ask(NotificationArea::add);
    ASSERT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));

    panel.reset();
    EXPECT_TRUE(spinUntil([&] { return !ask(NotificationArea::modify); }));
    EXPECT_EQ(panelMenu(), nullptr);
    panel = std::make_unique<PanelStandIn>();

    EXPECT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));
    EXPECT_NE(panelMenu(), nullptr);
}

TEST_F(NotificationAreaTest, APanelThatDoesNotAnswerHasNoIconAndIsNotWaitedFor) {
    const PanelStandIn panel(true);
    QElapsedTimer passed;
    passed.start();

    const bool added = ask(NotificationArea::add);

    EXPECT_FALSE(added);
    EXPECT_LT(passed.elapsed(), 5000); // the bus itself waits for 25 seconds
    EXPECT_TRUE(spinUntil([&] { return panel.items.size() == 1; }));
    EXPECT_FALSE(ask(NotificationArea::modify));
}

TEST_F(NotificationAreaTest, AListOfItemsThatNothingShowsHasNoIconUntilSomethingDoes) {
    PanelStandIn panel;
    panel.hasHost = false;
    EXPECT_FALSE(ask(NotificationArea::add));
    EXPECT_TRUE(spinUntil([&] { return panel.items.size() == 1; }));
    EXPECT_FALSE(ask(NotificationArea::modify));

    panel.hostComes();

    EXPECT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));
}

TEST_F(NotificationAreaTest, APanelThatTellsOfAHostUponEachOfferKeepsTheIcon) {
    PanelStandIn panel;
    panel.isRestless = true;
    ask(NotificationArea::add);
    ASSERT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));

    for (int i = 0; i < 50; ++i) {
        panel.call(itemPath, itemInterface, QStringLiteral("Scroll"), {1, QStringLiteral("x")});
        EXPECT_TRUE(ask(NotificationArea::modify));
    }

    EXPECT_EQ(panel.items.size(), 1U);
}

TEST_F(NotificationAreaTest, AListOfItemsThatTellsOfAHostUponEachOfferIsOfferedTheItemNowAndThen) {
    PanelStandIn panel;
    panel.hasHost = false;
    panel.isRestless = true;
    QElapsedTimer passed;
    passed.start();
    ask(NotificationArea::add);
    ASSERT_TRUE(spinUntil([&] { return !panel.items.empty(); }));

    for (int i = 0; i < 200; ++i) {
        panel.call(itemPath, itemInterface, QStringLiteral("Scroll"), {1, QStringLiteral("x")});
    }

    const auto seconds = static_cast<std::size_t>(passed.elapsed() / 1000);
    EXPECT_LE(panel.items.size(), seconds + 2);
}

TEST_F(NotificationAreaTest, APanelReadsTheTipAndTheImagesOfTheIcon) {
    PanelStandIn panel;
    std::string_view("Velmars Tarvik: Not monitoring.").copy(data.szTip, sizeof data.szTip - 1);
    ask(NotificationArea::add);
    ASSERT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));

    const auto read = [&](const char* name) {
        const QVariant answer =
            panel.call(itemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                       QStringLiteral("Get"), {itemInterface, QString::fromLatin1(name)});
        return answer.value<QDBusVariant>().variant();
    };

    EXPECT_EQ(qdbus_cast<face::ItemToolTip>(read("ToolTip")).title,
              QStringLiteral("Velmars Tarvik: Not monitoring."));
    const auto images = qdbus_cast<QList<face::ItemPixmap>>(read("IconPixmap"));
    ASSERT_FALSE(images.isEmpty());
    EXPECT_EQ(images[0].points.size(), 4 * images[0].width * images[0].height);
    EXPECT_NE(images[0].points.count('\0'), images[0].points.size());
}

TEST_F(NotificationAreaTest, AMarkOfTheIconIsInTheImagesThatAPanelReads) {
    PanelStandIn panel;
    ask(NotificationArea::add);
    data.hIcon = iconNumber(TrayIcon::imgSysTrayOnline, TrayMark::Last);
    ASSERT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));

    const QVariant answer =
        panel.call(itemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                   QStringLiteral("Get"), {itemInterface, QStringLiteral("IconPixmap")});

    const auto images = qdbus_cast<QList<face::ItemPixmap>>(answer.value<QDBusVariant>().variant());
    const auto expected = face::pixmapsOf(face::iconOf(face::trayDrawing(7)));
    ASSERT_EQ(images.size(), expected.size());
    for (qsizetype i = 0; i < images.size(); ++i) {
        EXPECT_EQ(images[i].points, expected[i].points);
    }
}

TEST_F(NotificationAreaTest, AClickOnTheItemIsTheLeftButton) {
    PanelStandIn panel;
    ask(NotificationArea::add);
    ASSERT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));
    std::vector<int> messages;
    tray.picSysTrayHook.MouseMove.connect([&](int message) { messages.push_back(message); });

    panel.call(itemPath, itemInterface, QStringLiteral("Activate"), {0, 0});

    EXPECT_TRUE(spinUntil([&] { return !messages.empty(); }));
    EXPECT_EQ(messages, std::vector<int>{514});
}

TEST_F(NotificationAreaTest, AClickCountsOnceThePanelHasAnsweredThatItShowsTheItem) {
    PanelStandIn panel(true);
    ask(NotificationArea::add);
    ASSERT_TRUE(spinUntil([&] { return panel.items.size() == 1; }));
    std::vector<bool> takenAtClick;
    tray.picSysTrayHook.MouseMove.connect(
        [&](int) { takenAtClick.push_back(ask(NotificationArea::modify)); });

    panel.call(itemPath, itemInterface, QStringLiteral("Activate"), {0, 0});
    QCoreApplication::processEvents();
    EXPECT_TRUE(takenAtClick.empty());
    panel.answer();

    EXPECT_TRUE(spinUntil([&] { return !takenAtClick.empty(); }));
    EXPECT_EQ(takenAtClick, std::vector<bool>{true});
}

TEST_F(NotificationAreaTest, ABusThatIsHaltedWhenTheIconIsAddedTellsOfThePanelLater) {
    const PanelStandIn panel;
    bool added = true;
    {
        const HaltedBus halted;
        added = ask(NotificationArea::add);
    }

    EXPECT_TRUE(spinUntil([&] { return ask(NotificationArea::modify); }));
    EXPECT_FALSE(added);
}

TEST_F(NotificationAreaTest, AHaltedBusShowsNoNote) {
    const NoteServiceStandIn service;
    const HaltedBus halted;

    EXPECT_FALSE(note("Title", "text"));
}

TEST_F(NotificationAreaTest, OfAHaltedBusNothingIsKnown) {
    const HaltedBus halted;

    EXPECT_EQ(face::BusNames::isOwned(QStringLiteral("org.freedesktop.DBus")), std::nullopt);
    EXPECT_EQ(face::BusNames::isStartable(QStringLiteral("org.freedesktop.DBus")), std::nullopt);
}

} // namespace
} // namespace tarvik
