#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <optional>

class QDBusPendingCallWatcher;

namespace tarvik::face {

/// Notes that the desktop shows by its notification service. A new one takes the place of the one
/// before, if that is still seen. One that failed, as where the bus cannot start the service yet,
/// is shown when the service comes.
class DesktopNotes : public QObject {
public:
    /// False where the desktop shows none; else it is on its way. Plain text; the lines of the text
    /// are kept.
    bool show(const QString& title, const QString& text, int milliseconds);

private:
    struct Note {
        QString title;
        QString text;
        int milliseconds;
    };

    void send(const Note& note);
    void takeNumber(QDBusPendingCallWatcher* answer, const Note& note);
    void showFailed();

    std::optional<QDBusServiceWatcher> coming_; ///< once a note has failed
    std::optional<Note> failed_;                ///< the last one that did
    unsigned last_ = 0;                         ///< the service's number of the last note
};

} // namespace tarvik::face
