#pragma once

#include <QDBusMessage>
#include <QObject>

#include <functional>

namespace tarvik::face {

/// Hears what the desktop's notification service tells of its notes: that one was answered, that
/// one was closed, that its user lets a window come to the front. Anybody may send the same: the
/// sender has to be looked at.
class NoteSignals : public QObject {
    Q_OBJECT

public:
    /// `heard` gets each such message.
    explicit NoteSignals(std::function<void(const QDBusMessage&)> heard);

private Q_SLOTS:
    void hear(const QDBusMessage& message);

private:
    std::function<void(const QDBusMessage&)> heard_;
};

} // namespace tarvik::face
