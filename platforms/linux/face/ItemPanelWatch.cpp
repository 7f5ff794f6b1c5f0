#include "linux/face/ItemPanelWatch.h"

#include "linux/face/BusNames.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>

#include <limits>
#include <optional>
#include <utility>

namespace tarvik::face {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

/// So often its program is started: one that ends again and again is left alone.
constexpr int mostStarts = 3;

} // namespace

ItemPanelWatch::ItemPanelWatch(std::function<void()> changed)
    : changed_(std::move(changed)), names_(watcherName, QDBusConnection::sessionBus()) {
    connect(&names_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& now) {
                panel_ = panelAt(!now.isEmpty());
                changed_();
                startPanel();
            });
    lookForPanel();
}

ItemPanelWatch::Panel ItemPanelWatch::panelAt(bool owned) const {
    if (owned) {
        return Panel::There;
    }
    return startable_ ? Panel::Unknown : Panel::None;
}

void ItemPanelWatch::lookForPanel() {
    const std::optional<bool> owned = BusNames::isOwned(watcherName);
    const std::optional<bool> startable = owned ? BusNames::isStartable(watcherName) : std::nullopt;
    if (!startable) {
        askAgain();
        return;
    }
    startable_ = *startable;
    panel_ = panelAt(*owned);
    startPanel();
}

/// One that the bus can start is asked to come, and will say itself that it has come.
void ItemPanelWatch::startPanel() {
    if (panel_ != Panel::Unknown) {
        return;
    }
    if (starts_++ == mostStarts) {
        giveUpStarting();
        return;
    }
    QDBusMessage start = BusNames::callToBus(QStringLiteral("StartServiceByName"));
    start << watcherName << 0U;
    auto* answer =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(start), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        if (answer->isError()) {
            giveUpStarting();
        }
    });
}

/// Whoever asks for the name finds as quickly that nobody comes.
void ItemPanelWatch::giveUpStarting() {
    startable_ = false;
    if (panel_ == Panel::Unknown) {
        panel_ = Panel::None;
        changed_();
    }
}

/// The bus is halted: this question waits for it, and nobody waits for the question.
void ItemPanelWatch::askAgain() {
    const QDBusMessage question = BusNames::callToBus(QStringLiteral("GetId"));
    auto* answer = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(question, std::numeric_limits<int>::max()), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        if (!answer->isError()) {
            lookForPanel();
            changed_();
        }
    });
}

QDBusMessage ItemPanelWatch::callToPanel(const QString& method) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherName, watcherPath, watcherName, method);
    call.setAutoStartService(false);
    return call;
}

QDBusMessage ItemPanelWatch::questionForMethods() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Introspectable"),
        QStringLiteral("Introspect"));
    call.setAutoStartService(false);
    return call;
}

QDBusMessage ItemPanelWatch::questionForHost() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    call << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    return call;
}

void ItemPanelWatch::tellOfHosts(QObject* receiver, const char* slot) {
    QDBusConnection::sessionBus().connect(QString(), watcherPath, watcherName,
                                          QStringLiteral("StatusNotifierHostRegistered"), receiver,
                                          slot);
}

} // namespace tarvik::face
