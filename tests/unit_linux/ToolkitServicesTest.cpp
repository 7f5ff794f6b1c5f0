#include "ToolkitServicesTest.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace tarvik {
namespace {

TEST_F(ToolkitServicesTest, ABusThatGreetsIsLeftAsItIs) {
    const std::string before = sessionBus.get();

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionBus.get(), before);
    EXPECT_EQ(accessibilityBus.get(), "");
}

TEST_F(ToolkitServicesTest, ABusThatIsNotThereIsLeftToTheToolkit) {
    sessionBus.set(bus());

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionBus.get(), bus());
}

TEST_F(ToolkitServicesTest, ABusOfAnotherKindIsLeftToTheToolkit) {
    sessionBus.set("autolaunch:");

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionBus.get(), "autolaunch:");
}

TEST_F(ToolkitServicesTest, AMuteBusIsHidden) {
    const FirstWord service(path, "");
    sessionBus.set(bus());

    EXPECT_NE(greet().find("the session bus does not answer and is left out\n"), std::string::npos);

    EXPECT_EQ(sessionBus.get(), "disabled:");
}

TEST_F(ToolkitServicesTest, ABusThatTalksNonsenseIsHidden) {
    const FirstWord service(path, "HTTP/1.1 400 Bad Request\r\n\r\n");
    sessionBus.set(bus());

    greet();

    EXPECT_EQ(sessionBus.get(), "disabled:");
}

TEST_F(ToolkitServicesTest, AMuteBusOfAccessibilityIsHidden) {
    const FirstWord service(path, "");
    const std::string before = sessionBus.get();
    accessibilityBus.set(bus());

    EXPECT_EQ(greet(),
              "velmars-tarvik: the bus of accessibility does not answer and is left out\n");

    EXPECT_EQ(accessibilityBus.get(), "disabled:");
    EXPECT_EQ(sessionBus.get(), before);
}

TEST_F(ToolkitServicesTest, ASessionManagerThatTakesTheConnectionIsLeftAsItIs) {
    const FirstWord service(path, std::string_view("\0\1\0\0\0\0\0\0\0\6\0\0\2\0\0\0", 16));
    sessionManager.set(manager());

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionManager.get(), manager());
}

TEST_F(ToolkitServicesTest, ASessionManagerThatFallsSilentAfterItsFirstWordIsHidden) {
    const FirstWord service(path, std::string_view("\0\1\0\0\0\0\0\0", 8));
    sessionManager.set(manager());

    EXPECT_EQ(greet(), "velmars-tarvik: the session manager does not answer and is left out\n");

    EXPECT_EQ(qgetenv("SESSION_MANAGER").isNull(), true);
}

TEST_F(ToolkitServicesTest, ASessionManagerWhoseAnswerIsNoneIsHidden) {
    const FirstWord service(path, std::string_view("\0\1\0\0\0\0\0\0\0\7\0\0\0\0\0\0", 16));
    sessionManager.set(manager());

    greet();

    EXPECT_EQ(qgetenv("SESSION_MANAGER").isNull(), true);
}

TEST_F(ToolkitServicesTest, AMuteSessionManagerIsHidden) {
    const FirstWord service(path, "");
    sessionManager.set(manager());

    EXPECT_EQ(greet(), "velmars-tarvik: the session manager does not answer and is left out\n");

    EXPECT_EQ(qgetenv("SESSION_MANAGER").isNull(), true);
}

TEST_F(ToolkitServicesTest, ASessionManagerThatTalksNonsenseIsHidden) {
    const FirstWord service(path, "nonsense");
    sessionManager.set(manager());

    greet();

    EXPECT_EQ(qgetenv("SESSION_MANAGER").isNull(), true);
}

class InputMethodTest : public ToolkitServicesTest {
protected:
    InputMethodTest() {
        typing.set("ibus");
        addressFile.set(folder.path() + "/address");
        tell(bus());
    }

    /// The address of the method's own bus.
    void tell(const std::string& address) const {
        std::ofstream(folder.path() + "/address")
            << "# of the display\nIBUS_ADDRESS=" << address << "\nIBUS_DAEMON_PID=1\n";
    }

    Variable addressFile{"IBUS_ADDRESS_FILE"};
};

TEST_F(InputMethodTest, AnInputMethodThatAnswersIsLeftAsItIs) {
    NameOnBus method(sessionBus.get(), "org.freedesktop.IBus");
    method.run();
    tell(sessionBus.get());

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(typing.get(), "ibus");
}

TEST_F(InputMethodTest, AnInputMethodThatGreetsAndFallsSilentIsHidden) {
    const NameOnBus method(sessionBus.get(), "org.freedesktop.IBus");
    tell(sessionBus.get());

    EXPECT_EQ(greet(), "velmars-tarvik: the input method does not answer and is left out\n");

    EXPECT_EQ(qgetenv("QT_IM_MODULE").isNull(), true);
}

TEST_F(InputMethodTest, AnInputMethodThatFallsSilentAfterItsFirstWordIsHidden) {
    const FirstWord service(path, "OK 0123456789abcdef0123456789abcdef\r\n");

    greet();

    EXPECT_EQ(qgetenv("QT_IM_MODULE").isNull(), true);
}

TEST_F(InputMethodTest, AMuteInputMethodIsHidden) {
    const FirstWord service(path, "");

    EXPECT_EQ(greet(), "velmars-tarvik: the input method does not answer and is left out\n");

    EXPECT_EQ(qgetenv("QT_IM_MODULE").isNull(), true);
}

TEST_F(InputMethodTest, AnInputMethodThatDoesNotRunIsLeftToTheToolkit) {
    EXPECT_EQ(greet(), "");

    EXPECT_EQ(typing.get(), "ibus");
}

TEST_F(InputMethodTest, AnotherInputMethodIsLeftAsItIs) {
    const FirstWord service(path, "");
    typing.set("compose");

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(typing.get(), "compose");
}

/// Files with the addresses of input methods, as they themselves write them.
class InputMethodFilesTest : public ToolkitServicesTest {
protected:
    InputMethodFilesTest() {
        typing.set("ibus");
        qunsetenv("IBUS_ADDRESS_FILE");
        qunsetenv("WAYLAND_DISPLAY");
        config.set(folder.path());
        const std::string files = folder.path() + "/ibus/bus";
        std::filesystem::create_directories(files);
        std::ofstream(files + "/0123-unix-7")
            << "IBUS_ADDRESS=unix:path=" << path << "\nIBUS_DAEMON_PID=1\n";
    }

    Variable addressFile{"IBUS_ADDRESS_FILE"};
    Variable wayland{"WAYLAND_DISPLAY"};
    Variable display{"DISPLAY"};
    Variable config{"XDG_CONFIG_HOME"};
    FirstWord mute{path, ""};
};

TEST_F(InputMethodFilesTest, TheOneOfThisDisplayIsGreeted) {
    display.set(":7.0");

    greet();

    EXPECT_EQ(qgetenv("QT_IM_MODULE").isNull(), true);
}

TEST_F(InputMethodFilesTest, TheOneOfAnotherDisplayIsNotGreeted) {
    display.set("unix:17");

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(typing.get(), "ibus");
}

TEST_F(InputMethodFilesTest, TheOneOfThisDisplayOfWaylandIsGreeted) {
    display.set(":3");
    wayland.set("7");

    greet();

    EXPECT_EQ(qgetenv("QT_IM_MODULE").isNull(), true);
}

TEST_F(ToolkitServicesTest, AllAreWaitedForTogether) {
    const FirstWord mute(path, "");
    sessionBus.set(bus());
    accessibilityBus.set(bus());
    sessionManager.set(manager());
    int turns = 0;

    greet(Patience([&turns] {
        ++turns;
        return false;
    }));

    EXPECT_EQ(sessionBus.get(), "disabled:");
    EXPECT_EQ(accessibilityBus.get(), "disabled:");
    EXPECT_EQ(qgetenv("SESSION_MANAGER").isNull(), true);
    // Of 10 ms: the 100 ms for all, and one more for each whose answer is looked for afterwards.
    EXPECT_LE(turns, 10 + 2);
}

TEST_F(ToolkitServicesTest, ASessionManagerThatIsNotThereIsLeftToTheToolkit) {
    sessionManager.set(manager());

    EXPECT_EQ(greet(), "");

    EXPECT_EQ(sessionManager.get(), manager());
}

} // namespace
} // namespace tarvik
