#pragma once

#include "SystemBusStandIn.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>

#include <functional>
#include <map>
#include <mutex>
#include <string>

namespace tarvik {

/// A program that has NetworkManager's name on a system bus of its own, and answers each question
/// as the test says: with values of any types, with none, or with an error. All objects are there.
class OddService : public QDBusVirtualObject {
public:
    OddService();
    ~OddService() override;

    /// What a question is answered with, on the object of that path; `error` is a name.
    void answer(const std::string& method, const std::string& path, const QVariantList& values);
    void refuse(const std::string& method, const std::string& path, const std::string& error);
    /// How often that has been asked.
    int asked(const std::string& method, const std::string& path) const;

    /// Tells everybody that asked for it.
    void tell(const std::string& path, const std::string& interface, const std::string& member,
              const QVariantList& values);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    struct Answer {
        QVariantList values;
        QString error;
        int asked = 0;
    };
    void inThread(const std::function<void()>& work);
    static std::string keyOf(const std::string& method, const std::string& path);

    SystemBusStandIn bus_;
    QThread thread_; ///< where questions are answered: the test's own waits for the answers
    QDBusConnection connection_;
    std::map<std::string, Answer> answers_; ///< by what is asked
    mutable std::mutex mutex_;
};

} // namespace tarvik
