#include "ToolkitServicesTest.h"

#include <sdbus-c++/sdbus-c++.h>

#include <atomic>
#include <memory>
#include <string>

namespace tarvik {
namespace {

/// A stand-in for the service of accessibility on the session bus. It answers once `run` is called.
class AccessibilityStandIn {
public:
    explicit AccessibilityStandIn(const std::string& bus)
        : connection_(sdbus::createSessionBusConnectionWithAddress(bus)),
          object_(sdbus::createObject(*connection_, "/org/a11y/bus")) {
        object_->registerProperty("IsEnabled").onInterface("org.a11y.Status").withGetter([this] {
            return isEnabled.load();
        });
        object_->registerProperty("ScreenReaderEnabled")
            .onInterface("org.a11y.Status")
            .withGetter([this] { return screenReader.load(); });
        object_->registerMethod("GetAddress")
            .onInterface("org.a11y.Bus")
            .implementedAs([this](sdbus::Result<std::string>&& result) {
                ++asked;
                if (starts) {
                    held_ = std::move(result); // the bus never comes
                } else {
                    result.returnResults(address);
                }
            });
        object_->finishRegistration();
        connection_->requestName("org.a11y.Bus");
    }

    void run() { connection_->enterEventLoopAsync(); }

    std::atomic<bool> isEnabled{false};
    std::atomic<bool> screenReader{false};
    std::atomic<bool> starts{false}; ///< its bus only
    std::atomic<int> asked{0};       ///< for the address
    std::string address;

private:
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
    sdbus::Result<std::string> held_;
};

/// A service whose bus is mute.
class AccessibilityTest : public ToolkitServicesTest {
protected:
    AccessibilityTest() { service.address = bus(); }

    AccessibilityStandIn service{sessionBus.get()};
    FirstWord mute{path, ""};
};

TEST_F(AccessibilityTest, WhereItIsOffNoBusIsAskedFor) {
    service.run();

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(service.asked, 0);
    EXPECT_EQ(accessibilityBus.get(), "");
}

TEST_F(AccessibilityTest, WhereItIsOnItsMuteBusIsHidden) {
    service.isEnabled = true;
    service.run();

    greet();

    EXPECT_EQ(accessibilityBus.get(), "disabled:");
}

TEST_F(AccessibilityTest, AScreenReaderTurnsItOn) {
    service.screenReader = true;
    service.run();

    greet();

    EXPECT_EQ(accessibilityBus.get(), "disabled:");
}

TEST_F(AccessibilityTest, TheEnvironmentTurnsItOn) {
    alwaysOn.set("1");
    service.run();

    greet();

    EXPECT_EQ(accessibilityBus.get(), "disabled:");
}

TEST_F(AccessibilityTest, ABusThatOnlyJustStartsIsLeftToTheToolkit) {
    service.screenReader = true;
    service.starts = true;
    service.run();

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(service.asked, 1);
    EXPECT_EQ(accessibilityBus.get(), "");
}

TEST_F(AccessibilityTest, AMuteServiceIsHidden) {
    EXPECT_EQ(greet(),
              "velmars-tarvik: the bus of accessibility does not answer and is left out\n");

    EXPECT_EQ(accessibilityBus.get(), "disabled:");
}

/// A service whose bus is the session's, with a registry of those who listen.
class RegistryTest : public ToolkitServicesTest {
protected:
    RegistryTest() {
        service.address = sessionBus.get();
        service.isEnabled = true;
        service.run();
    }

    AccessibilityStandIn service{sessionBus.get()};
    NameOnBus registry{sessionBus.get(), "org.a11y.atspi.Registry"};
};

TEST_F(RegistryTest, OneThatAnswersIsLeftAsItIs) {
    registry.run();

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(accessibilityBus.get(), "");
}

TEST_F(RegistryTest, AMuteOneHidesItsBus) {
    EXPECT_EQ(greet(),
              "velmars-tarvik: the bus of accessibility does not answer and is left out\n");

    EXPECT_EQ(accessibilityBus.get(), "disabled:");
}

TEST_F(RegistryTest, AMuteOneOnTheBusThatTheEnvironmentTellsHidesThat) {
    accessibilityBus.set(sessionBus.get());

    greet();

    EXPECT_EQ(accessibilityBus.get(), "disabled:");
}

TEST_F(AccessibilityTest, ABusThatKnowsNoRegistryIsLeftAsItIs) {
    service.address = sessionBus.get();
    service.isEnabled = true;
    service.run();

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(accessibilityBus.get(), "");
}

} // namespace
} // namespace tarvik
