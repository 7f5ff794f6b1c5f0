#include "OddService.h"

#include <gtest/gtest.h>

#include <utility>

namespace tarvik {

namespace {

const QString connectionName = QStringLiteral("odd service");

} // namespace

OddService::OddService()
    : connection_(
          QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), connectionName)) {
    moveToThread(&thread_);
    thread_.start();
    inThread([this] {
        EXPECT_TRUE(
            connection_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath));
        EXPECT_TRUE(connection_.registerService(QStringLiteral("org.freedesktop.NetworkManager")));
    });
}

OddService::~OddService() {
    inThread([this] {
        connection_.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
        QDBusConnection::disconnectFromBus(connectionName);
    });
    thread_.quit();
    thread_.wait();
}

void OddService::inThread(const std::function<void()>& work) {
    EXPECT_TRUE(QMetaObject::invokeMethod(this, work, Qt::BlockingQueuedConnection));
}

std::string OddService::keyOf(const std::string& method, const std::string& path) {
    return method + ' ' + path;
}

void OddService::answer(const std::string& method, const std::string& path,
                        const QVariantList& values) {
    const std::lock_guard guard(mutex_);
    Answer& answer = answers_[keyOf(method, path)];
    answer.values = values;
    answer.error.clear();
}

void OddService::refuse(const std::string& method, const std::string& path,
                        const std::string& error) {
    const std::lock_guard guard(mutex_);
    answers_[keyOf(method, path)].error = QString::fromStdString(error);
}

int OddService::asked(const std::string& method, const std::string& path) const {
    const std::lock_guard guard(mutex_);
    const auto found = answers_.find(keyOf(method, path));
    return found == answers_.end() ? 0 : found->second.asked;
}

void OddService::tell(const std::string& path, const std::string& interface,
                      const std::string& member, const QVariantList& values) {
    QDBusMessage signal =
        QDBusMessage::createSignal(QString::fromStdString(path), QString::fromStdString(interface),
                                   QString::fromStdString(member));
    signal.setArguments(values);
    EXPECT_TRUE(connection_.send(signal));
}

QString OddService::introspect(const QString&) const {
    return {};
}

bool OddService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const std::lock_guard guard(mutex_);
    Answer& answer = answers_[keyOf(message.member().toStdString(), message.path().toStdString())];
    ++answer.asked;
    return connection.send(answer.error.isEmpty() ? message.createReply(answer.values)
                                                  : message.createErrorReply(answer.error, {}));
}

} // namespace tarvik
