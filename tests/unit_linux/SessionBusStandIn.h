#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantList>

#include <functional>
#include <string>
#include <vector>

namespace tarvik {

/// A name of the user's session bus that the test owns for its own lifetime, as a program of its
/// own on that bus.
///
/// The bus is one of the test program's: it knows no services that it could start.
class BusNameStandIn {
public:
    explicit BusNameStandIn(const QString& name);
    ~BusNameStandIn();
    BusNameStandIn(const BusNameStandIn&) = delete;
    BusNameStandIn& operator=(const BusNameStandIn&) = delete;

    QDBusConnection& connection() { return connection_; }

private:
    QDBusConnection connection_;
    QString name_;
};

/// While it lives, the session bus is halted: it takes what it is told, and does nothing.
class HaltedBus {
public:
    HaltedBus();
    ~HaltedBus();
    HaltedBus(const HaltedBus&) = delete;
    HaltedBus& operator=(const HaltedBus&) = delete;
};

/// A stand-in for the desktop's notification service; the test sees what it is asked to show.
class NoteServiceStandIn : public QDBusVirtualObject {
public:
    NoteServiceStandIn();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    /// Tells everybody on the bus of a note.
    void tell(const QString& signal, const QVariantList& values);

    /// The arguments of each call.
    std::vector<QVariantList> notes;
    /// What the next calls are answered with: a number, an error, or nothing at all.
    unsigned number = 1;
    bool fails = false;
    bool silent = false;
    /// What the service says that it can do, of whatever type; how often it was asked.
    QVariant capabilities = QStringList{QStringLiteral("body")};
    bool saysNothing = false; ///< when it is asked that
    int asked = 0;

private:
    BusNameStandIn name_;
};

/// A stand-in for a panel that shows StatusNotifier items.
class PanelStandIn : public QDBusVirtualObject {
public:
    /// One that is silent never answers when it is offered an item.
    explicit PanelStandIn(bool isSilent = false);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    /// Calls a method of the newest item or of its menu; the answer's first argument.
    QVariant call(const QString& path, const QString& interface, const QString& method,
                  const QVariantList& arguments);

    /// Answers what it was silent about.
    void answer();

    /// Something shows items now.
    void hostComes();

    std::vector<QString> items; ///< the names under which items were offered
    bool hasHost = true;        ///< something shows them
    bool isRestless = false;    ///< says upon each offer that something that shows them has come

private:
    bool reply(const QDBusMessage& answer);
    void tellOfHost();

    BusNameStandIn name_;
    bool isSilent_;
    std::vector<QDBusMessage> unsent_; ///< answers that are kept back
};

} // namespace tarvik
