#include "linux/face/DesktopNotes.h"

#include "linux/face/BusNames.h"
#include "linux/face/FaceText.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <optional>
#include <utility>

namespace tarvik::face {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString notesPath = QStringLiteral("/org/freedesktop/Notifications");

/// What a click on the note itself is called.
const QString clickKey = QStringLiteral("default");

/// How long a service may take to say whether its notes have buttons, in milliseconds: it may have
/// to be started first.
constexpr int longestQuestion = 5000;

/// The service shows a note as long as it likes.
constexpr int asTheServiceLikes = -1;

/// The service runs, or is started by the first call to it.
bool desktopShowsNotes() {
    const std::optional<bool> running = BusNames::isOwned(service);
    return running && (*running || BusNames::isStartable(service).value_or(false));
}

QDBusMessage callToService(const QString& method) {
    return QDBusMessage::createMethodCall(service, notesPath, service, method);
}

/// The keys of what the user can do, each with its caption.
QStringList actionsOf(const QStringList& buttons) {
    QStringList actions{clickKey, QStringLiteral("Show Velmars Tarvik")};
    for (qsizetype i = 0; i < buttons.size(); ++i) {
        actions << QString::number(i) << buttons[i];
    }
    return actions;
}

} // namespace

DesktopNotes::DesktopNotes(std::function<void(const QString& token)> mayActivate)
    : mayActivate_(std::move(mayActivate)) {}

DesktopNotes::~DesktopNotes() = default;

bool DesktopNotes::show(const QString& title, const QString& text, int milliseconds) {
    failed_.reset();
    if (!desktopShowsNotes()) {
        return false;
    }
    waiting_.reset();
    held_.reset();
    send({.number = ++newest_, .title = title, .text = text, .milliseconds = milliseconds});
    return true;
}

bool DesktopNotes::tell(const DesktopNote& note, Answered answered) {
    failed_.reset();
    if (!desktopShowsNotes()) {
        return false;
    }
    followService();
    Note told{.number = ++newest_,
              .title = shown(note.title),
              .text = shownLines(note.text),
              .milliseconds = asTheServiceLikes,
              .urgency = note.urgency};
    for (const std::string& caption : note.buttons) {
        told.buttons << shown(caption);
    }
    waiting_ =
        Waiting{.answered = std::move(answered), .buttons = static_cast<int>(note.buttons.size())};
    held_.reset();
    deliver(told);
    return true;
}

/// At once, unless it has to be known first whether it may have buttons.
void DesktopNotes::deliver(const Note& note) {
    if (!note.urgency || hasButtons_) {
        send(note);
        return;
    }
    held_ = note;
    if (question_ == nullptr) {
        askForButtons();
    }
}

void DesktopNotes::send(const Note& note) {
    QDBusMessage call = callToService(QStringLiteral("Notify"));
    QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("tarvik")}};
    QStringList actions;
    if (note.urgency) {
        hints.insert(QStringLiteral("urgency"),
                     QVariant::fromValue(static_cast<uchar>(*note.urgency)));
        actions = hasButtons_.value_or(false) ? actionsOf(note.buttons) : QStringList();
    }
    const bool isWarning = note.urgency == DesktopNote::Urgency::Critical;
    // The text may hold marks of its own; what looks like one here is meant as it stands.
    call << QCoreApplication::applicationName() << last_
         << (isWarning ? QStringLiteral("dialog-warning") : QStringLiteral("dialog-information"))
         << note.title << note.text.toHtmlEscaped() << actions << hints << note.milliseconds;
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, note](QDBusPendingCallWatcher* finished) { takeNumber(finished, note); });
}

void DesktopNotes::takeNumber(QDBusPendingCallWatcher* answer, const Note& note) {
    const QDBusPendingReply<unsigned> reply = *answer;
    const bool isAwaited = waiting_ && note.number == newest_;
    if (!reply.isError()) {
        last_ = reply.value();
        if (isAwaited) {
            waiting_->id = last_;
            waiting_->owner = reply.reply().service();
        }
    } else if (BusNames::isOwned(service) == false) {
        failed_ = note;
        if (!coming_) {
            coming_.emplace(service, QDBusConnection::sessionBus(),
                            QDBusServiceWatcher::WatchForRegistration);
            connect(&*coming_, &QDBusServiceWatcher::serviceRegistered, this,
                    &DesktopNotes::showFailed);
        }
    } else if (isAwaited) {
        waiting_.reset();
    }
    answer->deleteLater();
}

/// What the service refuses itself is not shown again.
void DesktopNotes::showFailed() {
    if (const auto note = std::exchange(failed_, std::nullopt)) {
        deliver(*note);
    }
}

void DesktopNotes::followService() {
    if (owners_) {
        return;
    }
    owners_.emplace(service, QDBusConnection::sessionBus());
    connect(&*owners_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& now) {
                changeOwner(!now.isEmpty());
            });
    signals_.emplace([this](const QDBusMessage& message) { hear(message); });
}

void DesktopNotes::askForButtons() {
    question_ = std::make_unique<QDBusPendingCallWatcher>(QDBusConnection::sessionBus().asyncCall(
        callToService(QStringLiteral("GetCapabilities")), longestQuestion));
    connect(question_.get(), &QDBusPendingCallWatcher::finished, this, [this] {
        const QDBusPendingReply<QStringList> answer = *question_;
        hasButtons_ = !answer.isError() && answer.value().contains(QStringLiteral("actions"));
        question_.release()->deleteLater();
        sendHeld();
    });
}

/// Another service knows nothing of what the one before has shown, and may have other notes.
void DesktopNotes::changeOwner(bool owned) {
    hasButtons_.reset();
    question_.reset();
    if (waiting_ && waiting_->id != 0) {
        waiting_.reset();
    }
    if (held_ && owned) {
        askForButtons();
    } else {
        // One that went away at the question may come for the note itself; it is not asked again
        // and again.
        sendHeld();
    }
}

void DesktopNotes::sendHeld() {
    if (const auto note = std::exchange(held_, std::nullopt)) {
        send(*note);
    }
}

void DesktopNotes::hear(const QDBusMessage& message) {
    const bool isClosing = message.member() == QStringLiteral("NotificationClosed");
    const QString types = isClosing ? QStringLiteral("uu") : QStringLiteral("us");
    if (!waiting_ || waiting_->id == 0 || message.service() != waiting_->owner ||
        message.signature() != types || message.arguments().at(0).toUInt() != waiting_->id) {
        return;
    }
    const QString text = message.arguments().at(1).toString();
    if (isClosing) {
        // It may close because of its answer, which is still to be told.
        if (!waiting_->chosen) {
            waiting_.reset();
        }
    } else if (message.member() == QStringLiteral("ActivationToken")) {
        waiting_->token = text;
    } else {
        choose(text);
    }
}

/// What the answer begins may take the notes away: it has to be out of their handlers by then.
void DesktopNotes::choose(const QString& key) {
    for (int i = 0; i < waiting_->buttons; ++i) {
        if (key == QString::number(i)) {
            waiting_->chosen = i;
        }
    }
    if (key == clickKey) {
        waiting_->chosen = NotificationArea::noteClicked;
    }
    if (waiting_->chosen) {
        QMetaObject::invokeMethod(
            this, [this] { tellChosen(); }, Qt::QueuedConnection);
    }
}

void DesktopNotes::tellChosen() {
    if (!waiting_ || !waiting_->chosen) {
        return;
    }
    const Waiting waiting = *std::exchange(waiting_, std::nullopt);
    if (mayActivate_ && !waiting.token.isEmpty()) {
        mayActivate_(waiting.token);
    }
    if (waiting.answered) {
        waiting.answered(*waiting.chosen);
    }
}

} // namespace tarvik::face
