#include "linux/face/DesktopNotes.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>

namespace tarvik::face {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");

/// The service runs, or is started by the first call to it.
bool desktopShowsNotes(const QDBusConnection& bus) {
    QDBusConnectionInterface* names = bus.interface();
    if (names == nullptr) {
        return false;
    }
    const QDBusReply<bool> running = names->isServiceRegistered(service);
    if (running.isValid() && running.value()) {
        return true;
    }
    const QDBusReply<QStringList> known = names->activatableServiceNames();
    return known.isValid() && known.value().contains(service);
}

} // namespace

bool DesktopNotes::show(const QString& title, const QString& text, int milliseconds) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!desktopShowsNotes(bus)) {
        return false;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
    // The text may hold marks of its own; what looks like one here is meant as it stands.
    call << QCoreApplication::applicationName() << last_ << QStringLiteral("dialog-information")
         << title << text.toHtmlEscaped() << QStringList()
         << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("tarvik")}}
         << milliseconds;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, &DesktopNotes::takeNumber);
    return true;
}

void DesktopNotes::takeNumber(QDBusPendingCallWatcher* answer) {
    const QDBusPendingReply<unsigned> reply = *answer;
    if (!reply.isError()) {
        last_ = reply.value();
    }
    answer->deleteLater();
}

} // namespace tarvik::face
