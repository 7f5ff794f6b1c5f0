#include "linux/face/BusNames.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QStringList>
#include <QVariant>

namespace tarvik::face {

namespace {

constexpr int longestAnswer = 50; // milliseconds

/// The answer, a null one where there is no bus or it refuses; nothing where it is mute.
std::optional<QVariant> ask(const QDBusMessage& question) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return QVariant();
    }
    const QDBusMessage answer = bus.call(question, QDBus::Block, longestAnswer);
    const QDBusError::ErrorType error = QDBusError(answer).type();
    if (error == QDBusError::NoReply || error == QDBusError::Timeout ||
        error == QDBusError::TimedOut) {
        return std::nullopt;
    }
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0) : QVariant();
}

} // namespace

QDBusMessage BusNames::callToBus(const QString& method) {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                          method);
}

std::optional<bool> BusNames::isOwned(const QString& name) {
    QDBusMessage question = callToBus(QStringLiteral("NameHasOwner"));
    question << name;
    const std::optional<QVariant> answer = ask(question);
    return answer ? std::optional(answer->toBool()) : std::nullopt;
}

std::optional<bool> BusNames::isStartable(const QString& name) {
    const std::optional<QVariant> answer = ask(callToBus(QStringLiteral("ListActivatableNames")));
    return answer ? std::optional(answer->toStringList().contains(name)) : std::nullopt;
}

} // namespace tarvik::face
