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
#include <utility>

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
    failed_.reset();
    if (!desktopShowsNotes()) {
        return false;
    }
    send({.title = title, .text = text, .milliseconds = milliseconds});
    return true;
}

void DesktopNotes::send(const Note& note) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, notesPath, service, QStringLiteral("Notify"));
    // The text may hold marks of its own; what looks like one here is meant as it stands.
    call << QCoreApplication::applicationName() << last_ << QStringLiteral("dialog-information")
         << note.title << note.text.toHtmlEscaped() << QStringList()
         << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("tarvik")}}
         << note.milliseconds;
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, note](QDBusPendingCallWatcher* finished) { takeNumber(finished, note); });
}

void DesktopNotes::takeNumber(QDBusPendingCallWatcher* answer, const Note& note) {
    const QDBusPendingReply<unsigned> reply = *answer;
    if (!reply.isError()) {
        last_ = reply.value();
    } else if (BusNames::isOwned(service) == false) {
        failed_ = note;
        if (!coming_) {
            coming_.emplace(service, QDBusConnection::sessionBus(),
                            QDBusServiceWatcher::WatchForRegistration);
            connect(&*coming_, &QDBusServiceWatcher::serviceRegistered, this,
                    &DesktopNotes::showFailed);
        }
    }
    answer->deleteLater();
}

/// What the service refuses itself is not shown again.
void DesktopNotes::showFailed() {
    if (const auto note = std::exchange(failed_, std::nullopt)) {
        send(*note);
    }
}

} // namespace tarvik::face
