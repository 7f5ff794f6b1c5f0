#include "linux/face/StatusNotifierItem.h"

#include "linux/face/ItemPanelWatch.h"
#include "linux/face/ItemTypes.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QStringList>
#include <QThread>

#include <utility>

namespace tarvik::face {

namespace {

const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// The name of each item of this process, as panels expect it.
QString newName() {
    static int last = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++last);
}

/// Nobody has said anything, and the next question would be waited for as long.
bool isMute(const QDBusPendingCall& answer) {
    const QDBusError::ErrorType error = answer.error().type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout ||
           error == QDBusError::TimedOut || error == QDBusError::Disconnected;
}

} // namespace

StatusNotifierItem::StatusNotifierItem(QMenu& menu, Events events)
    : bus_(QDBusConnection::sessionBus()), name_(newName()), menu_(menu, bus_),
      events_(std::move(events)) {
    registerItemTypes();
    bus_.registerVirtualObject(itemPath, this);
    bus_.registerService(name_);
    hostCame_.setSingleShot(true);
    connect(&hostCame_, &QTimer::timeout, this, &StatusNotifierItem::offer);
    ItemPanelWatch::tellOfHosts(&hostCame_, SLOT(start()));
}

StatusNotifierItem::~StatusNotifierItem() {
    bus_.unregisterService(name_);
    bus_.unregisterObject(itemPath);
}

StatusNotifierItem::Answer StatusNotifierItem::ask(const QDBusMessage& call) {
    auto answer = std::make_unique<QDBusPendingCallWatcher>(bus_.asyncCall(call));
    connect(answer.get(), &QDBusPendingCallWatcher::finished, this, [this] { settle(); });
    return answer;
}

void StatusNotifierItem::offer() {
    isTaken_ = false;
    QDBusMessage call = ItemPanelWatch::callToPanel(QStringLiteral("RegisterStatusNotifierItem"));
    call << name_;
    offer_ = ask(call);
    host_ = ask(ItemPanelWatch::questionForHost());
}

bool StatusNotifierItem::isAnswered() const {
    return offer_ != nullptr && offer_->isFinished() && host_->isFinished();
}

bool StatusNotifierItem::isAccepted() const {
    return isAnswered() && !offer_->isError() && !host_->isError() &&
           host_->reply().arguments().value(0).value<QDBusVariant>().variant().toBool();
}

void StatusNotifierItem::settle() {
    if (isAccepted()) {
        if (!std::exchange(isTaken_, true)) {
            events_.taken();
        }
    } else if (isAnswered() && !isMute(*offer_) && !isMute(*host_)) {
        events_.refused();
    }
}

void StatusNotifierItem::allowTime(int milliseconds) {
    const QDeadlineTimer end(milliseconds);
    while (!isAnswered() && offer_ != nullptr && !end.hasExpired()) {
        QThread::msleep(1);
    }
    isTaken_ = isAccepted();
}

void StatusNotifierItem::show(const QIcon& icon, const QString& tip) {
    if (icon.cacheKey() != icon_.cacheKey()) {
        icon_ = icon;
        tell(QStringLiteral("NewIcon"));
    }
    if (tip != tip_) {
        tip_ = tip;
        tell(QStringLiteral("NewToolTip"));
    }
}

void StatusNotifierItem::tell(const QString& signal) {
    bus_.send(QDBusMessage::createSignal(itemPath, itemInterface, signal));
}

QVariantMap StatusNotifierItem::properties() const {
    const QList<ItemPixmap> none;
    return {
        {QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
        {QStringLiteral("Id"), QCoreApplication::applicationName()},
        {QStringLiteral("Title"), QStringLiteral("Velmars Tarvik")},
        {QStringLiteral("Status"), QStringLiteral("Active")},
        {QStringLiteral("WindowId"), 0},
        {QStringLiteral("IconThemePath"), QString()},
        {QStringLiteral("IconName"), QString()},
        {QStringLiteral("IconPixmap"), QVariant::fromValue(pixmapsOf(icon_))},
        {QStringLiteral("OverlayIconName"), QString()},
        {QStringLiteral("OverlayIconPixmap"), QVariant::fromValue(none)},
        {QStringLiteral("AttentionIconName"), QString()},
        {QStringLiteral("AttentionIconPixmap"), QVariant::fromValue(none)},
        {QStringLiteral("AttentionMovieName"), QString()},
        {QStringLiteral("ToolTip"), QVariant::fromValue(ItemToolTip{{}, none, tip_, {}})},
        {QStringLiteral("ItemIsMenu"), false},
        {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(ItemMenu::path))},
    };
}

QString StatusNotifierItem::introspect(const QString&) const {
    QString text = QStringLiteral("<interface name=\"org.kde.StatusNotifierItem\">");
    for (const char* const property :
         {"Category", "Id", "Title", "Status", "IconThemePath", "IconName", "OverlayIconName",
          "AttentionIconName", "AttentionMovieName"}) {
        text += QStringLiteral("<property name=\"%1\" type=\"s\" access=\"read\"/>")
                    .arg(QLatin1String(property));
    }
    for (const char* const property : {"IconPixmap", "OverlayIconPixmap", "AttentionIconPixmap"}) {
        text += QStringLiteral("<property name=\"%1\" type=\"a(iiay)\" access=\"read\"/>")
                    .arg(QLatin1String(property));
    }
    text += QStringLiteral("<property name=\"WindowId\" type=\"i\" access=\"read\"/>"
                           "<property name=\"ItemIsMenu\" type=\"b\" access=\"read\"/>"
                           "<property name=\"Menu\" type=\"o\" access=\"read\"/>"
                           "<property name=\"ToolTip\" type=\"(sa(iiay)ss)\" access=\"read\"/>");
    for (const char* const method : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        text += QStringLiteral("<method name=\"%1\"><arg name=\"x\" type=\"i\" direction=\"in\"/>"
                               "<arg name=\"y\" type=\"i\" direction=\"in\"/></method>")
                    .arg(QLatin1String(method));
    }
    text += QStringLiteral("<method name=\"Scroll\"><arg name=\"delta\" type=\"i\" "
                           "direction=\"in\"/><arg name=\"orientation\" type=\"s\" "
                           "direction=\"in\"/></method>");
    for (const char* const signal : {"NewTitle", "NewIcon", "NewToolTip"}) {
        text += QStringLiteral("<signal name=\"%1\"/>").arg(QLatin1String(signal));
    }
    return text + QStringLiteral("</interface>");
}

bool StatusNotifierItem::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
    const QString method = message.member();
    if (message.interface() == propertiesInterface) {
        const QVariantMap all = properties();
        if (method == QStringLiteral("GetAll")) {
            return bus.send(message.createReply(QVariant(all)));
        }
        const QString name = message.arguments().value(1).toString();
        if (method == QStringLiteral("Get") && all.contains(name)) {
            return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(all[name]))));
        }
        return false;
    }
    static const QStringList known{QStringLiteral("Activate"), QStringLiteral("SecondaryActivate"),
                                   QStringLiteral("ContextMenu"), QStringLiteral("Scroll")};
    if (message.interface() != itemInterface || !known.contains(method)) {
        return false;
    }
    bus.send(message.createReply());
    if (method == QStringLiteral("Activate")) {
        events_.activated();
    }
    return true;
}

} // namespace tarvik::face
