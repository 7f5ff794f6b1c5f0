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

/// A stand-in for the desktop's notification service; the test sees what it is asked to show.
class NoteServiceStandIn : public QDBusVirtualObject {
public:
    NoteServiceStandIn();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    /// The arguments of each call.
    std::vector<QVariantList> notes;
    /// What the next calls are answered with: a number, an error, or nothing at all.
    unsigned number = 1;
    bool fails = false;
    bool silent = false;

private:
    BusNameStandIn name_;
};

} // namespace tarvik
