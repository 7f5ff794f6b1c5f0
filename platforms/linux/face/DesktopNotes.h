#pragma once

#include "linux/face/NoteSignals.h"
#include "ports/NotificationArea.h"

#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QDBusPendingCallWatcher;

namespace tarvik::face {

/// Notes that the desktop shows by its notification service. A new one takes the place of the one
/// before, if that is still seen. One that failed, as where the bus cannot start the service yet,
/// is shown when the service comes.
///
/// The service is never waited for. Before a note that can be answered it is asked once whether its
/// notes have buttons; one that has not said so in time shows the note without.
class DesktopNotes : public QObject {
public:
    using Answered = std::function<void(int)>;

    /// `mayActivate` gets what the service hands out with an answer, so that a window may come to
    /// the front for it.
    explicit DesktopNotes(std::function<void(const QString& token)> mayActivate = {});
    ~DesktopNotes() override;

    /// False where the desktop shows none; else it is on its way. Plain text; the lines of the text
    /// are kept.
    bool show(const QString& title, const QString& text, int milliseconds);
    /// The same for a note that can be answered; `answered` is called at most once, and no more
    /// when another note is shown, the note is closed, or another service has come.
    bool tell(const DesktopNote& note, Answered answered);
    /// No answer is waited for any more.
    void forget() { waiting_.reset(); }

private:
    struct Note {
        int number = 0; ///< counts all notes
        QString title;
        QString text;
        int milliseconds = 0;
        std::optional<DesktopNote::Urgency> urgency = {}; ///< none for one that is not answered
        QStringList buttons = {};
    };
    /// The newest note, where it can be answered.
    struct Waiting {
        Answered answered;
        int buttons = 0;
        unsigned id = 0;    ///< the service's number; 0 while it has not said so
        QString owner = {}; ///< who said so
        QString token = {};
        std::optional<int> chosen = {}; ///< to be told as soon as what is going on now is over
    };

    void send(const Note& note);
    void deliver(const Note& note);
    void takeNumber(QDBusPendingCallWatcher* answer, const Note& note);
    void showFailed();
    void followService();
    void askForButtons();
    void changeOwner(bool owned);
    void sendHeld();
    void hear(const QDBusMessage& message);
    void choose(const QString& key);
    void tellChosen();

    std::function<void(const QString&)> mayActivate_;
    std::optional<QDBusServiceWatcher> coming_; ///< once a note has failed
    std::optional<Note> failed_;                ///< the last one that did
    unsigned last_ = 0;                         ///< the service's number of the last note
    int newest_ = 0;                            ///< our number of the last note

    std::optional<QDBusServiceWatcher> owners_; ///< once a note was to be answered
    std::optional<NoteSignals> signals_;
    std::unique_ptr<QDBusPendingCallWatcher> question_; ///< while the service has not answered
    std::optional<bool> hasButtons_;                    ///< what it said; none for not known
    std::optional<Note> held_;                          ///< until it is known
    std::optional<Waiting> waiting_;
};

} // namespace tarvik::face
