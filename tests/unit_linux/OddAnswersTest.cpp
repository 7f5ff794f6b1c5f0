#include "NetworkNames.h"
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

const std::string firstProfile = network::settingsPath + "/1";
const std::string firstLine = network::managerPath + "/ActiveConnection/1";
const std::string firstDevice = network::managerPath + "/Devices/1";
const std::string oddError = network::service + ".Failed";
const std::string secondLine = network::managerPath + "/ActiveConnection/2";

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
            {QStringLiteral("Devices"), paths({firstDevice})}};
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
        service.answer("GetAll", network::managerPath,
                       {QVariantMap{{QStringLiteral("ActiveConnections"), paths({firstLine})}}});
        service.answer("GetAll", firstLine,
                       {lineProperties(QStringLiteral("mobile"), QStringLiteral("u1"))});
        service.answer("GetAll", firstDevice,
                       {QVariantMap{{QStringLiteral("Interface"), QStringLiteral("wwan0")}}});
        service.answer("ListConnections", network::settingsPath, {paths({firstProfile})});
        nameProfile(firstProfile, QStringLiteral("mobile"));
    }

    void nameProfile(const std::string& path, const QString& name) {
        const QString uuid = path == firstProfile ? QStringLiteral("u1") : QStringLiteral("u2");
        const SettingsMap map{{QStringLiteral("connection"),
                               {{QStringLiteral("id"), name},
                                {QStringLiteral("uuid"), uuid},
                                {QStringLiteral("type"), QStringLiteral("gsm")}}}};
        service.answer("GetSettings", path, {QVariant::fromValue(map)});
    }

    void tellChanges() {
        service.tell(network::managerPath, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                     {QString::fromStdString(network::service)});
        service.tell(firstProfile, network::service + ".Settings.Connection", "Updated", {});
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
        nameProfile(firstProfile, QStringLiteral("renamed"));
        tellChanges();
        EXPECT_TRUE(soon([&] { return entries() == Names{"renamed"}; }));
        EXPECT_TRUE(soon([&] { return lines().at(0).szEntryName == std::string("renamed"); }));
        service.answer("GetAll", network::managerPath,
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
    testing::Combine(testing::Values(Question{"manager", "GetAll", &network::managerPath},
                                     Question{"line", "GetAll", &firstLine},
                                     Question{"device", "GetAll", &firstDevice},
                                     Question{"profile", "GetSettings", &firstProfile}),
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
                         testing::Values(Question{"manager", "GetAll", &network::managerPath},
                                         Question{"line", "GetAll", &firstLine},
                                         Question{"device", "GetAll", &firstDevice},
                                         Question{"profile", "GetSettings", &firstProfile}),
                         [](const auto& one) { return one.param.name; });

TEST_F(OddAnswersTest, PropertiesOfOtherTypesEndNothing) {
    for (const char* name : {"Type", "State", "Id", "Uuid", "Devices"}) {
        auto properties = lineProperties(QStringLiteral("mobile"), QStringLiteral("u1"));
        properties[QLatin1String(name)] = QPoint(1, 2);
        service.answer("GetAll", firstLine, {properties});
        expectThatWhatIsKnownStaysAfter("GetAll", firstLine);
    }
    answerAll();
    service.answer("GetAll", network::managerPath,
                   {QVariantMap{{QStringLiteral("ActiveConnections"), QStringLiteral("none")}}});
    expectThatWhatIsKnownStaysAfter("GetAll", network::managerPath);
    service.answer("GetAll", firstDevice, {QVariantMap{{QStringLiteral("Interface"), 7}}});
    expectThatWhatIsKnownStaysAfter("GetAll", network::managerPath);

    expectThatNextChangesAreSeen();
}

TEST_F(OddAnswersTest, SettingsOfOtherTypesLeaveTheProfileAsItWas) {
    for (const char* name : {"id", "uuid", "type"}) {
        QVariantMap values{{QStringLiteral("type"), QStringLiteral("gsm")}};
        values[QLatin1String(name)] = 5;
        const SettingsMap map{{QStringLiteral("connection"), values}};
        service.answer("GetSettings", firstProfile, {QVariant::fromValue(map)});
        expectThatWhatIsKnownStaysAfter("GetSettings", firstProfile);
    }

    expectThatNextChangesAreSeen();
}

TEST_F(OddAnswersTest, AnotherLineIsSeenBesideOneThatCannotBeReadAnyMore) {
    service.refuse("GetAll", firstLine, oddError);
    service.answer("GetAll", secondLine,
                   {lineProperties(QStringLiteral("second"), QStringLiteral("u2"))});
    service.answer(
        "GetAll", network::managerPath,
        {QVariantMap{{QStringLiteral("ActiveConnections"), paths({firstLine, secondLine})}}});

    tellChanges();

    EXPECT_TRUE(soon([&] { return lines().size() == 2; }));
    EXPECT_EQ(stateOf(handleBefore), 8192U);
}

TEST_F(OddAnswersTest, ProfilesAreReadWhileTheListOfLinesCannotBe) {
    service.answer("GetAll", network::managerPath, {5U});
    nameProfile(firstProfile, QStringLiteral("renamed"));

    tellChanges();

    EXPECT_TRUE(soon([&] { return entries() == Names{"renamed"}; }));
    EXPECT_EQ(lines().at(0).hrasconn, handleBefore);
}

TEST_F(OddAnswersTest, AProfileThatCannotBeReadIsLeftOutUntilAnythingChanges) {
    const std::string second = network::settingsPath + "/2";
    service.refuse("GetSettings", second, oddError);
    service.tell(network::settingsPath, network::service + ".Settings", "NewConnection",
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
    service.answer("ListConnections", network::settingsPath, {5U});
    NetworkConnections late{LinkReader(folder.path())};
    RASENTRYNAMEA entry{};
    entry.dwSize = 532;
    std::uint32_t bytes = sizeof entry;
    std::uint32_t count = 0;
    EXPECT_EQ(late.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count),
              638U); // it runs, after all

    answerAll();

    bytes = sizeof entry;
    EXPECT_EQ(late.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count), 0U);
    EXPECT_EQ(count, 1U);
}

TEST_F(OddAnswersTest, AnOrderThatIsAnsweredOddlyEndsNothing) {
    for (const Body& body : bodies()) {
        service.answer("ActivateConnection", network::managerPath, body.values);
        EXPECT_EQ(dial("mobile"), 651U) << body.name;
    }
    service.refuse("DeactivateConnection", network::managerPath, oddError);
    EXPECT_EQ(connections.RasHangUpA(handleBefore), 651U);

    expectWhatIsKnown();
    expectThatNextChangesAreSeen();
}

} // namespace
} // namespace tarvik
