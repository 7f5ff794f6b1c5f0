#include "NetworkServiceTest.h"
#include "OddService.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QPoint>

#include <gtest/gtest.h>

#include <tuple>

using SettingsMap = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(SettingsMap)

namespace tarvik {
namespace {

const std::string serviceName = "org.freedesktop.NetworkManager";
const std::string manager = "/org/freedesktop/NetworkManager";
const std::string settings = manager + "/Settings";
const std::string profile = settings + "/1";
const std::string line = manager + "/ActiveConnection/1";
const std::string device = manager + "/Devices/1";
const std::string oddError = serviceName + ".Failed";
const std::string otherLine = manager + "/ActiveConnection/2";

QVariant paths(const std::vector<std::string>& all) {
    QList<QDBusObjectPath> list;
    for (const std::string& one : all) {
        list.append(QDBusObjectPath(QString::fromStdString(one)));
    }
    return QVariant::fromValue(list);
}

QVariantMap lineProperties(const QString& id, const QString& uuid) {
    return {{QStringLiteral("Id"), id},
            {QStringLiteral("Uuid"), uuid},
            {QStringLiteral("Type"), QStringLiteral("gsm")},
            {QStringLiteral("State"), 2U},
            {QStringLiteral("Devices"), paths({device})}};
}

/// A call over a modem is up, and everything that NetworkManager told could be read.
class OddAnswersTest : public NetworkUserTest<OddService> {
protected:
    OddAnswersTest() {
        qDBusRegisterMetaType<SettingsMap>();
        makeInterface("wwan0", 3, 50, 60);
        answerAll();
        handleBefore = lines().at(0).hrasconn;
        EXPECT_EQ(entries(), Names{"mobile"});
    }

    void answerAll() {
        service.answer("GetAll", manager,
                       {QVariantMap{{QStringLiteral("ActiveConnections"), paths({line})}}});
        service.answer("GetAll", line,
                       {lineProperties(QStringLiteral("mobile"), QStringLiteral("u1"))});
        service.answer("GetAll", device,
                       {QVariantMap{{QStringLiteral("Interface"), QStringLiteral("wwan0")}}});
        service.answer("ListConnections", settings, {paths({profile})});
        nameProfile(profile, QStringLiteral("mobile"));
    }

    void nameProfile(const std::string& path, const QString& name) {
        const QString uuid = path == profile ? QStringLiteral("u1") : QStringLiteral("u2");
        const SettingsMap map{{QStringLiteral("connection"),
                               {{QStringLiteral("id"), name},
                                {QStringLiteral("uuid"), uuid},
                                {QStringLiteral("type"), QStringLiteral("gsm")}}}};
        service.answer("GetSettings", path, {QVariant::fromValue(map)});
    }

    void tellChanges() {
        service.tell(manager, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                     {QString::fromStdString(serviceName)});
        service.tell(profile, serviceName + ".Settings.Connection", "Updated", {});
    }

    /// The program asks that again because it is told of a change, and goes on from the answer.
    void expectThatWhatIsKnownStaysAfter(const std::string& method, const std::string& path) {
        const int before = service.asked(method, path);
        tellChanges();
        EXPECT_TRUE(soon([&] {
            expectWhatIsKnown();
            return service.asked(method, path) > before;
        }));
        expectWhatIsKnown();
    }

    void expectWhatIsKnown() {
        const auto found = lines();
        EXPECT_EQ(code, 0U);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].hrasconn, handleBefore);
        EXPECT_EQ(statisticsOf(handleBefore).dwBytesRcved, 50U);
        EXPECT_EQ(entries(), Names{"mobile"});
        EXPECT_EQ(code, 0U);
    }

    void expectThatNextChangesAreSeen() {
        answerAll();
        nameProfile(profile, QStringLiteral("renamed"));
        tellChanges();
        EXPECT_TRUE(soon([&] { return entries() == Names{"renamed"}; }));
        EXPECT_TRUE(soon([&] { return lines().at(0).szEntryName == std::string("renamed"); }));
        service.answer("GetAll", manager,
                       {QVariantMap{{QStringLiteral("ActiveConnections"), paths({})}}});
        tellChanges();
        EXPECT_TRUE(soon([&] { return lines().empty(); }));
        EXPECT_EQ(code, 0U);
    }

    std::uint32_t handleBefore = 0;
};

struct Question {
    const char* name;
    const char* method;
    const std::string* path;
};

struct Body {
    const char* name;
    QVariantList values;
};

class WrongBodyTest : public OddAnswersTest,
                      public testing::WithParamInterface<std::tuple<Question, Body>> {};

TEST_P(WrongBodyTest, EndsNothing) {
    const auto& [question, body] = GetParam();
    service.answer(question.method, *question.path, body.values);

    expectThatWhatIsKnownStaysAfter(question.method, *question.path);

    expectThatNextChangesAreSeen();
}

std::vector<Body> bodies() {
    const QString text = QStringLiteral("no such thing");
    return {{"nothing", {}},
            {"aText", {text}},
            {"aNumber", {5U}},
            {"aStruct", {QPoint(1, 2)}},
            {"aVariant", {QVariant::fromValue(QDBusVariant(text))}},
            {"texts", {QStringList{text, text}}},
            {"variants", {QVariantList{text, 7}}}};
}

INSTANTIATE_TEST_SUITE_P(
    Each, WrongBodyTest,
    testing::Combine(testing::Values(Question{"manager", "GetAll", &manager},
                                     Question{"line", "GetAll", &line},
                                     Question{"device", "GetAll", &device},
                                     Question{"profile", "GetSettings", &profile}),
                     testing::ValuesIn(bodies())),
    [](const auto& one) {
        return std::string(std::get<0>(one.param).name) + "_" + std::get<1>(one.param).name;
    });

class OddErrorTest : public OddAnswersTest, public testing::WithParamInterface<Question> {};

TEST_P(OddErrorTest, EndsNothing) {
    service.refuse(GetParam().method, *GetParam().path, oddError);

    expectThatWhatIsKnownStaysAfter(GetParam().method, *GetParam().path);

    expectThatNextChangesAreSeen();
}

INSTANTIATE_TEST_SUITE_P(Each, OddErrorTest,
                         testing::Values(Question{"manager", "GetAll", &manager},
                                         Question{"line", "GetAll", &line},
                                         Question{"device", "GetAll", &device},
                                         Question{"profile", "GetSettings", &profile}),
                         [](const auto& one) { return one.param.name; });

TEST_F(OddAnswersTest, PropertiesOfOtherTypesEndNothing) {
    for (const char* name : {"Type", "State", "Id", "Uuid", "Devices"}) {
        auto properties = lineProperties(QStringLiteral("mobile"), QStringLiteral("u1"));
        properties[QLatin1String(name)] = QPoint(1, 2);
        service.answer("GetAll", line, {properties});
        expectThatWhatIsKnownStaysAfter("GetAll", line);
    }
    answerAll();
    service.answer("GetAll", manager,
                   {QVariantMap{{QStringLiteral("ActiveConnections"), QStringLiteral("none")}}});
    expectThatWhatIsKnownStaysAfter("GetAll", manager);
    service.answer("GetAll", device, {QVariantMap{{QStringLiteral("Interface"), 7}}});
    expectThatWhatIsKnownStaysAfter("GetAll", manager);

    expectThatNextChangesAreSeen();
}

TEST_F(OddAnswersTest, SettingsOfOtherTypesLeaveTheProfileAsItWas) {
    for (const char* name : {"id", "uuid", "type"}) {
        QVariantMap values{{QStringLiteral("type"), QStringLiteral("gsm")}};
        values[QLatin1String(name)] = 5;
        const SettingsMap map{{QStringLiteral("connection"), values}};
        service.answer("GetSettings", profile, {QVariant::fromValue(map)});
        expectThatWhatIsKnownStaysAfter("GetSettings", profile);
    }

    expectThatNextChangesAreSeen();
}

TEST_F(OddAnswersTest, AnotherLineIsSeenBesideOneThatCannotBeReadAnyMore) {
    service.refuse("GetAll", line, oddError);
    service.answer("GetAll", otherLine,
                   {lineProperties(QStringLiteral("second"), QStringLiteral("u2"))});
    service.answer("GetAll", manager,
                   {QVariantMap{{QStringLiteral("ActiveConnections"), paths({line, otherLine})}}});

    tellChanges();

    EXPECT_TRUE(soon([&] { return lines().size() == 2; }));
    EXPECT_EQ(stateOf(handleBefore), 8192U);
}

TEST_F(OddAnswersTest, ProfilesAreReadWhileTheListOfLinesCannotBe) {
    service.answer("GetAll", manager, {5U});
    nameProfile(profile, QStringLiteral("renamed"));

    tellChanges();

    EXPECT_TRUE(soon([&] { return entries() == Names{"renamed"}; }));
    EXPECT_EQ(lines().at(0).hrasconn, handleBefore);
}

TEST_F(OddAnswersTest, AProfileThatCannotBeReadIsLeftOutUntilAnythingChanges) {
    const std::string second = settings + "/2";
    service.refuse("GetSettings", second, oddError);
    service.tell(settings, serviceName + ".Settings", "NewConnection",
                 {QVariant::fromValue(QDBusObjectPath(QString::fromStdString(second)))});
    EXPECT_TRUE(soon([&] {
        EXPECT_EQ(entries(), Names{"mobile"});
        EXPECT_EQ(code, 0U);
        return service.asked("GetSettings", second) > 0;
    }));
    entries();
    EXPECT_EQ(service.asked("GetSettings", second), 1);

    nameProfile(second, QStringLiteral("second"));
    tellChanges();

    EXPECT_TRUE(soon([&] { return entries() == (Names{"mobile", "second"}); }));
}

TEST_F(OddAnswersTest, AListOfProfilesThatCannotBeReadIsReadWhenItCanBe) {
    service.answer("ListConnections", settings, {5U});
    NetworkConnections late{folder.path()};
    RASENTRYNAMEA entry{};
    entry.dwSize = 532;
    std::uint32_t bytes = sizeof entry;
    std::uint32_t count = 0;
    EXPECT_EQ(late.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count), 711U);

    answerAll();

    bytes = sizeof entry;
    EXPECT_EQ(late.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count), 0U);
    EXPECT_EQ(count, 1U);
}

TEST_F(OddAnswersTest, AnOrderThatIsAnsweredOddlyEndsNothing) {
    for (const Body& body : bodies()) {
        service.answer("ActivateConnection", manager, body.values);
        EXPECT_EQ(dial("mobile"), 651U) << body.name;
    }
    service.refuse("DeactivateConnection", manager, oddError);
    EXPECT_EQ(connections.RasHangUpA(handleBefore), 651U);

    expectWhatIsKnown();
    expectThatNextChangesAreSeen();
}

} // namespace
} // namespace tarvik
