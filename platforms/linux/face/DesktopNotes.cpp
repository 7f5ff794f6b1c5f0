#include "linux/face/DesktopNotes.h"

#include "linux/face/BusNames.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace tarvik::face {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString notesPath = QStringLiteral("/org/freedesktop/Notifications");

/// The service runs, or is started by the first call to it.
bool desktopShowsNotes() {
    const std::optional<bool> running = BusNames::isOwned(service);
    return running && (*running || BusNames::isStartable(service).value_or(false));
}

} // namespace

bool DesktopNotes::show(const QString& title, const QString& text, int milliseconds) {
    if (!desktopShowsNotes()) {
        return false;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, notesPath, service, QStringLiteral("Notify"));
    // The text may hold marks of its own; what looks like one here is meant as it stands.
    call << QCoreApplication::applicationName() << last_ << QStringLiteral("dialog-information")
         << title << text.toHtmlEscaped() << QStringList()
         << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("tarvik")}}
         << milliseconds;
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
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
