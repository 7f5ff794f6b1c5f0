#include "linux/face/StatusNotifierItem.h"

#include "linux/face/BusNames.h"
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

#include <algorithm>
#include <utility>

namespace tarvik::face {

namespace {

const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");

/// The bus gives the name now or not at all.
constexpr unsigned doNotQueue = 4;

/// An answer within that time, in milliseconds, came at once.
constexpr qint64 atOnce = 50;

/// Between two offers because something that shows items has come, in milliseconds: anybody may
/// say so, as often as he likes.
constexpr qint64 betweenOffers = 1000;

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
    // The toolkit's own way to get a name waits for the bus. What comes after this on the same line
    // is done after it.
    QDBusMessage request = BusNames::callToBus(QStringLiteral("RequestName"));
    request << name_ << doNotQueue;
    bus_.asyncCall(request);
    hostCame_.setSingleShot(true);
    connect(&hostCame_, &QTimer::timeout, this, &StatusNotifierItem::offerToHost);
    offerLater_.setSingleShot(true);
    connect(&offerLater_, &QTimer::timeout, this, &StatusNotifierItem::offerToHost);
    ItemPanelWatch::tellOfHosts(&hostCame_, SLOT(start()));
}

StatusNotifierItem::~StatusNotifierItem() {
    QDBusMessage release = BusNames::callToBus(QStringLiteral("ReleaseName"));
    release << name_;
    bus_.asyncCall(release);
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
    methods_ = ask(ItemPanelWatch::questionForMethods());
    offered_.start();
    answeredAfter_ = 0;
}

void StatusNotifierItem::offerToHost() {
    if (isTaken_ || offerLater_.isActive()) {
        return;
    }
    const qint64 passed = offered_.isValid() ? offered_.elapsed() : betweenOffers;
    if (passed >= betweenOffers) {
        offer();
    } else {
        offerLater_.start(static_cast<int>(betweenOffers - passed));
    }
}

bool StatusNotifierItem::isAnswered() const {
    return offer_ != nullptr && offer_->isFinished() && host_->isFinished();
}

bool StatusNotifierItem::hasHost() const {
    return !host_->isError() &&
           host_->reply().arguments().value(0).value<QDBusVariant>().variant().toBool();
}

bool StatusNotifierItem::isAccepted() const {
    return isAnswered() && !offer_->isError() && hasHost();
}

bool StatusNotifierItem::isRefusedAtOnce() const {
    return answeredAfter_ > 0 && answeredAfter_ <= atOnce && !hasHost();
}

void StatusNotifierItem::noteAnswers() {
    if (answeredAfter_ == 0 && isAnswered() && methods_->isFinished()) {
        answeredAfter_ = std::max<qint64>(1, offered_.elapsed());
    }
}

void StatusNotifierItem::settle() {
    noteAnswers();
    if (isAccepted()) {
        if (!std::exchange(isTaken_, true)) {
            events_.taken();
        }
    } else if (isAnswered() && !isMute(*offer_) && !isMute(*host_)) {
        events_.refused();
    }
    if (isAnswered() && std::exchange(clickWaits_, false)) {
        events_.activated();
    }
}

/// Whether the window can go behind the icon is asked then: a quick panel passes a click on before
/// it has said that it shows the item.
void StatusNotifierItem::click() {
    if (isAnswered()) {
        events_.activated();
    } else {
        clickWaits_ = true;
    }
}

void StatusNotifierItem::allowTime(int milliseconds) {
    const QDeadlineTimer end(milliseconds);
    while (answeredAfter_ == 0 && !isAccepted() && !end.hasExpired()) {
        QThread::msleep(1);
        noteAnswers();
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
        click();
    }
    return true;
}

} // namespace tarvik::face
