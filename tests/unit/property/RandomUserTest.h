#pragma once

#include "support/WorldTest.h"

#include <cstdint>
#include <initializer_list>
#include <random>

namespace tarvik {

/// A user who does what a seed says, in front of a program that watches the line.
class RandomUserTest : public WorldTest, public testing::WithParamInterface<unsigned> {
protected:
    /// Starts the program on that phone book.
    void begin(std::initializer_list<const char*> entries) {
        phoneBook(entries);
        machine.desktop.answerAny = [this](const MsgBoxRequest& request) {
            // The only question of this kind is whether a running session counts.
            return request.buttons != MsgBoxButtons::YesNo ? MsgBoxAnswer::Ok
                   : countsTheSession()                    ? MsgBoxAnswer::Yes
                                                           : MsgBoxAnswer::No;
        };
        setIni("[Settings]\r\n");
        start("/r");
    }

    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(random_() % limit);
    }

    /// What he answers.
    virtual bool countsTheSession() = 0;

private:
    std::mt19937_64 random_{GetParam()};
};

} // namespace tarvik
