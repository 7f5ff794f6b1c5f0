#include "types/Escape.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(EscapeTest, WhatAnyLineCanHoldStays) {
    EXPECT_EQ(escaped(" Ridge \xC3\xA4\"|"), " Ridge \xC3\xA4\"|");
}

TEST(EscapeTest, ControlsAndThePerCentSignAreToldByTheirNumbers) {
    EXPECT_EQ(escaped(std::string_view("a\r\n\0 100%\x7F", 10)), "a%0D%0A%00 100%25%7F");
}

TEST(EscapeTest, SoIsWhatTheCallerNames) {
    EXPECT_EQ(escaped("a|b", "|"), "a%7Cb");
    EXPECT_EQ(unescaped("a%7Cb", "|"), "a|b");
}

TEST(EscapeTest, EveryByteComesBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }

    EXPECT_EQ(unescaped(escaped(bytes)), bytes);
}

TEST(EscapeTest, WhatIsWrittenInAnotherWayIsNothing) {
    for (const char* text : {"%", "%0", "%0a", "%G0", "%41", "a\nb", "%7C"}) {
        EXPECT_FALSE(unescaped(text)) << text;
    }
    EXPECT_FALSE(unescaped("a|b", "|"));
}

} // namespace
} // namespace tarvik
