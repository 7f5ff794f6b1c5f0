#include "SessionBusStandIn.h"

#include "Waiting.h"
#include "support/TemporaryFolder.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <sys/prctl.h>
#include <utility>

namespace tarvik {

namespace {

/// The session bus of the test program. It is there before the first test, because the toolkit
/// keeps the first connection that it makes.
class SessionBus : public testing::Environment {
public:
    void SetUp() override {
        const std::string address = "unix:path=" + folder_.path() + "/bus";
        const std::string configuration = folder_.path() + "/bus.conf";
        std::ofstream(configuration)
            << "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN' "
               "'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>\n<busconfig>"
               "<type>session</type><listen>"
            << address
            << "</listen><auth>EXTERNAL</auth><policy context='default'>"
               "<allow send_destination='*'/><allow receive_sender='*'/><allow own='*'/>"
               "<allow user='*'/></policy></busconfig>\n";
        daemon_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--config-file=") + QString::fromStdString(configuration),
                       QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                       QStringLiteral("--print-address")});
        // It listens when it prints its address.
        ASSERT_TRUE(daemon_.waitForReadyRead(10'000)) << "no bus";
        qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(address));
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected());
    }

    void send(int signal) const { kill(static_cast<pid_t>(daemon_.processId()), signal); }

    void TearDown() override {
        daemon_.kill();
        daemon_.waitForFinished();
    }

private:
    TemporaryFolder folder_;
    QProcess daemon_;
};

SessionBus* newSessionBus() {
    auto* bus = new SessionBus;
    testing::AddGlobalTestEnvironment(bus);
    return bus;
}

const SessionBus* const sessionBus = newSessionBus();

QString newConnectionName() {
    static int last = 0;
    return QStringLiteral("stand-in-") + QString::number(++last);
}

} // namespace

HaltedBus::HaltedBus() {
    sessionBus->send(SIGSTOP);
}

HaltedBus::~HaltedBus() {
    sessionBus->send(SIGCONT);
}

BusNameStandIn::BusNameStandIn(const QString& name)
    : connection_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, newConnectionName())),
      name_(name) {
    EXPECT_TRUE(connection_.registerService(name)) << name.toStdString();
}

BusNameStandIn::~BusNameStandIn() {
    connection_.unregisterService(name_);
    QDBusConnection::disconnectFromBus(connection_.name());
}

NoteServiceStandIn::NoteServiceStandIn() : name_(QStringLiteral("org.freedesktop.Notifications")) {
    EXPECT_TRUE(name_.connection().registerVirtualObject(
        QStringLiteral("/org/freedesktop/Notifications"), this));
}

QString NoteServiceStandIn::introspect(const QString&) const {
    return {};
}

void NoteServiceStandIn::tell(const QString& signal, const QVariantList& values) {
    QDBusMessage message =
        QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"),
                                   QStringLiteral("org.freedesktop.Notifications"), signal);
    message.setArguments(values);
    name_.connection().send(message);
}

bool NoteServiceStandIn::handleMessage(const QDBusMessage& message,
                                       const QDBusConnection& connection) {
    if (message.member() == QStringLiteral("GetCapabilities")) {
        ++asked;
        return saysNothing || connection.send(message.createReply(capabilities));
    }
    if (message.interface() != QStringLiteral("org.freedesktop.Notifications") ||
        message.member() != QStringLiteral("Notify")) {
        return false;
    }
    notes.push_back(message.arguments());
    if (fails) {
        connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("refused")));
    } else if (!silent) {
        connection.send(message.createReply(number));
    }
    return true;
}

PanelStandIn::PanelStandIn(bool isSilent)
    : name_(QStringLiteral("org.kde.StatusNotifierWatcher")), isSilent_(isSilent) {
    EXPECT_TRUE(
        name_.connection().registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), this));
}

QString PanelStandIn::introspect(const QString&) const {
    return {};
}

bool PanelStandIn::reply(const QDBusMessage& answer) {
    if (isSilent_) {
        unsent_.push_back(answer);
        return true;
    }
    return name_.connection().send(answer);
}

void PanelStandIn::answer() {
    isSilent_ = false;
    for (const QDBusMessage& each : std::exchange(unsent_, {})) {
        reply(each);
    }
}

bool PanelStandIn::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    if (message.member() == QStringLiteral("Get")) {
        return reply(message.createReply(QVariant::fromValue(QDBusVariant(QVariant(hasHost)))));
    }
    if (message.member() != QStringLiteral("RegisterStatusNotifierItem")) {
        return false;
    }
    items.push_back(message.arguments().value(0).toString());
    const bool replied = reply(message.createReply());
    if (isRestless) {
        tellOfHost();
    }
    return replied;
}

void PanelStandIn::hostComes() {
    hasHost = true;
    tellOfHost();
}

void PanelStandIn::tellOfHost() {
    name_.connection().send(QDBusMessage::createSignal(
        QStringLiteral("/StatusNotifierWatcher"), QStringLiteral("org.kde.StatusNotifierWatcher"),
        QStringLiteral("StatusNotifierHostRegistered")));
}

QVariant PanelStandIn::call(const QString& path, const QString& interface, const QString& method,
                            const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(items.back(), path, interface, method);
    message.setArguments(arguments);
    const QDBusPendingCall answer = name_.connection().asyncCall(message);
    EXPECT_TRUE(spinUntil([&] { return answer.isFinished(); }));
    EXPECT_FALSE(answer.isError()) << answer.error().message().toStdString();
    return answer.reply().arguments().value(0);
}

} // namespace tarvik
