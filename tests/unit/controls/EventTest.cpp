#include "controls/Event.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tarvik {
namespace {

TEST(EventTest, WithoutAHandlerRaisingDoesNothing) {
    const Event<> event;

    EXPECT_NO_THROW(event.raise());
}

TEST(EventTest, TheHandlerGetsTheArguments) {
    Event<int, std::string> event;
    std::string seen;
    event.connect([&](int number, const std::string& text) { seen = text + char('0' + number); });

    event.raise(7, "seven ");

    EXPECT_EQ(seen, "seven 7");
}

TEST(EventTest, AnArgumentByReferenceComesBack) {
    Event<bool&> event;
    event.connect([](bool& cancel) { cancel = true; });
    bool cancel = false;

    event.raise(cancel);

    EXPECT_TRUE(cancel);
}

TEST(EventTest, ANewHandlerTakesThePlaceOfTheOld) {
    Event<> event;
    int first = 0;
    int second = 0;
    event.connect([&] { ++first; });
    event.connect([&] { ++second; });

    event.raise();

    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST(EventTest, AHandlerMayReplaceItself) {
    Event<> event;
    std::string seen;
    event.connect([&, text = std::string("a text that is too long to stand in place")] {
        event.connect([&] { seen += "second"; });
        seen = text.substr(0, 6) + " ";
    });

    event.raise();
    event.raise();

    EXPECT_EQ(seen, "a text second");
}

TEST(EventTest, AHandlerMayDestroyWhatRaisedIt) {
    auto event = std::make_unique<Event<>>();
    std::string seen;
    event->connect([&, text = std::string("a text that is too long to stand in place")] {
        event.reset();
        seen = text;
    });

    event->raise();

    EXPECT_EQ(seen, "a text that is too long to stand in place");
    EXPECT_EQ(event, nullptr);
}

} // namespace
} // namespace tarvik
