#include "linux/face/ItemPanelWatch.h"

#include <QDBusConnection>

#include <utility>

namespace tarvik::face {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

/// The longest that the bus is waited for at the start, in milliseconds.
constexpr int longestWait = 100;

bool isOnTheBus(const QString& name) {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage call = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"),
                                                       bus, QStringLiteral("NameHasOwner"));
    call << name;
    const QDBusMessage answer = QDBusConnection::sessionBus().call(call, QDBus::Block, longestWait);
    return answer.type() == QDBusMessage::ReplyMessage && answer.arguments().value(0).toBool();
}

} // namespace

ItemPanelWatch::ItemPanelWatch(std::function<void()> changed)
    : names_(watcherName, QDBusConnection::sessionBus()) {
    connect(&names_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this, told = std::move(changed)](const QString&, const QString&, const QString& now) {
                panelIsThere_ = !now.isEmpty();
                told();
            });
    panelIsThere_ = isOnTheBus(watcherName);
}

QDBusMessage ItemPanelWatch::callToPanel(const QString& method) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherName, watcherPath, watcherName, method);
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
