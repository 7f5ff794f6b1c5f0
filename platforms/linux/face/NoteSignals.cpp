#include "linux/face/NoteSignals.h"

#include <QDBusConnection>
#include <QString>

#include <utility>

namespace tarvik::face {

NoteSignals::NoteSignals(std::function<void(const QDBusMessage&)> heard)
    : heard_(std::move(heard)) {
    // With the name of the service the toolkit would first wait to be told who has it.
    for (const char* const signal : {"ActionInvoked", "NotificationClosed", "ActivationToken"}) {
        QDBusConnection::sessionBus().connect(
            QString(), QStringLiteral("/org/freedesktop/Notifications"),
            QStringLiteral("org.freedesktop.Notifications"), QString::fromLatin1(signal), this,
            SLOT(hear(QDBusMessage)));
    }
}

void NoteSignals::hear(const QDBusMessage& message) {
    heard_(message);
}

} // namespace tarvik::face
