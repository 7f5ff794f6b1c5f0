#include "IconTest.h"
#include "SessionBusStandIn.h"
#include "Waiting.h"

#include <sdbus-c++/sdbus-c++.h>

#include <chrono>
#include <cstdint>
#include <future>
#include <map>
#include <string>
#include <vector>

namespace tarvik {
namespace {

template <class... Values>
using Records = std::vector<sdbus::Struct<Values...>>;
using Number = std::int32_t;

/// An argument of a type that a method may not take.
struct OddArgument {
    const char* name;
    void (*put)(sdbus::MethodCall& call);
};

const std::vector<OddArgument> oddArguments{
    {"nothing", [](sdbus::MethodCall&) {}},
    {"a text", [](sdbus::MethodCall& call) { call << std::string("odd"); }},
    {"a number", [](sdbus::MethodCall& call) { call << Number{1}; }},
    {"a large number", [](sdbus::MethodCall& call) { call << (std::uint64_t{1} << 63U); }},
    {"numbers",
     [](sdbus::MethodCall& call) {
         call << std::vector<Number>{1, 2};
     }},
    {"texts", [](sdbus::MethodCall& call) { call << std::vector<std::string>{"odd"}; }},
    {"bytes",
     [](sdbus::MethodCall& call) {
         call << std::vector<std::uint8_t>{1, 2, 3};
     }},
    {"no events", [](sdbus::MethodCall& call) { call << Records<Number, std::string>(); }},
    {"short events",
     [](sdbus::MethodCall& call) {
         call << Records<Number, std::string>{{1, std::string("hovered")}};
     }},
    {"longer events",
     [](sdbus::MethodCall& call) {
         call << Records<Number, std::string, sdbus::Variant, std::uint32_t, Number>{
             {1, std::string("hovered"), sdbus::Variant(Number{1}), 2U, 3}};
     }},
    {"pairs",
     [](sdbus::MethodCall& call) {
         call << Records<Number, Number>{{1, 2}};
     }},
    {"a record",
     [](sdbus::MethodCall& call) { call << sdbus::make_struct(Number{1}, std::string("odd")); }},
    {"a map",
     [](sdbus::MethodCall& call) {
         call << std::map<std::string, sdbus::Variant>{{"odd", sdbus::Variant(Number{1})}};
     }},
    {"a variant of numbers",
     [](sdbus::MethodCall& call) { call << sdbus::Variant(std::vector<Number>{1}); }},
    {"lists of lists", [](sdbus::MethodCall& call) {
         call << std::vector<std::vector<Number>>{{1}, {}};
     }}};

struct Method {
    const char* path;
    const char* interface;
    const char* name;
};

constexpr const char* menuPath = "/MenuBar";
constexpr const char* pathOfItem = "/StatusNotifierItem";
constexpr const char* menu = "com.canonical.dbusmenu";
constexpr const char* itemCalls = "org.kde.StatusNotifierItem";
constexpr const char* propertyCalls = "org.freedesktop.DBus.Properties";

const std::vector<Method> methods{{menuPath, menu, "GetLayout"},
                                  {menuPath, menu, "GetGroupProperties"},
                                  {menuPath, menu, "GetProperty"},
                                  {menuPath, menu, "Event"},
                                  {menuPath, menu, "EventGroup"},
                                  {menuPath, menu, "AboutToShow"},
                                  {menuPath, menu, "AboutToShowGroup"},
                                  {menuPath, propertyCalls, "Get"},
                                  {menuPath, propertyCalls, "GetAll"},
                                  {menuPath, propertyCalls, "Set"},
                                  {pathOfItem, itemCalls, "SecondaryActivate"},
                                  {pathOfItem, itemCalls, "ContextMenu"},
                                  {pathOfItem, itemCalls, "Scroll"},
                                  {pathOfItem, itemCalls, "Activate"},
                                  {pathOfItem, propertyCalls, "Get"},
                                  {pathOfItem, propertyCalls, "GetAll"},
                                  {pathOfItem, propertyCalls, "Set"}};

/// The icon is with a panel, and some program of the user's calls it with whatever it likes.
class ItemArgumentsTest : public IconTest {
protected:
    ItemArgumentsTest() {
        ask(NotificationArea::add);
        EXPECT_TRUE(spinUntil([this] { return !panel.items.empty(); }));
    }

    /// Whether anything is answered, be it an error. The argument is passed so many times.
    bool isAnswered(const Method& method, const OddArgument& argument, int times) {
        const std::string name = panel.items.back().toStdString();
        auto answer = std::async(std::launch::async, [&] {
            const auto bus = sdbus::createSessionBusConnection();
            const auto proxy = sdbus::createProxy(*bus, name, method.path);
            auto call = proxy->createMethodCall(method.interface, method.name);
            for (int i = 0; i < times; ++i) {
                argument.put(call);
            }
            try {
                proxy->callMethod(call, std::chrono::microseconds(std::chrono::seconds(5)).count());
            } catch (const sdbus::Error& error) {
                return error.getName().find("NoReply") == std::string::npos &&
                       error.getName().find("Time") == std::string::npos;
            }
            return true;
        });
        return spinUntil([&] {
                   return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
               }) &&
               answer.get();
    }

    PanelStandIn panel;
};

TEST_F(ItemArgumentsTest, NoneOfThemEndsTheProgram) {
    for (const Method& method : methods) {
        for (const OddArgument& argument : oddArguments) {
            for (int times = 1; times <= 2; ++times) {
                SCOPED_TRACE(std::string(method.name) + ": " + argument.name);
                EXPECT_TRUE(isAnswered(method, argument, times));
            }
        }
    }
}

} // namespace
} // namespace tarvik
