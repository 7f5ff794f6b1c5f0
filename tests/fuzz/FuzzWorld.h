#pragma once

#include "Fuzz.h"
#include "scripted/ScriptedPlatform.h"
#include "wiring/World.h"

#include <functional>
#include <string>
#include <vector>

namespace tarvik::fuzz {

/// One of the locales that the program is tested with.
LocaleData localeOf(std::uint8_t number);

/// A machine of its own with a world on it. A box may come with a run-time error; one that tells of
/// a fault of the program's own ends the run.
class FuzzWorld {
public:
    static constexpr const char* iniPath = "C:\\Prog\\Tarvik.ini";

    FuzzWorld();

    ScriptedPlatform machine;
    World world{machine.platform};

    /// How boxes are answered.
    std::function<MsgBoxAnswer(const MsgBoxRequest&)> answer;
    /// The texts of the boxes that came.
    std::vector<std::string> boxes;

    /// A box came that begins so: further on it may repeat what was fed.
    bool told(const std::string& beginning) const;
    /// A run-time error was reported.
    bool toldError() const;
};

} // namespace tarvik::fuzz
