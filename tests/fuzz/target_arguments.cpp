// The command line: any text. Held against its rules stated a second time.
//
// Input: the most arguments as one byte, whether quotes count as one byte, then the line.

#include "FuzzWorld.h"
#include "startup/mdlArguments.h"
#include "types/Text.h"

#include <algorithm>

namespace tarvik::fuzz {
namespace {

using Texts = std::vector<std::string>;

/// Every blank outside quotes becomes a mark, quotes go, and the line is cut at the marks.
Texts cutAtBlanks(const std::string& line, bool quotes, std::size_t most) {
    std::vector<int> marked;
    bool inside = false;
    bool quoted = false;
    Texts arguments{""};
    for (const char character : line) {
        const bool quote = quotes && character == '"';
        quoted = quote ? !quoted : quoted;
        const bool blank = !quoted && (character == ' ' || character == '\t');
        if (!blank && !inside) {
            arguments.emplace_back();
        }
        inside = !blank;
        if (inside && !quote) {
            arguments.back() += character;
        }
    }
    arguments.resize(std::min(arguments.size(), most + 1));
    return arguments;
}

bool isOneOf(const std::string& argument, const Texts& switches) {
    return std::find(switches.begin(), switches.end(), upperCase(argument)) != switches.end();
}

bool anyIsOneOf(const Texts& arguments, const Texts& switches) {
    return std::any_of(arguments.begin(), arguments.end(),
                       [&](const std::string& argument) { return isOneOf(argument, switches); });
}

void play(Input input) {
    FuzzWorld fuzz;
    const std::uint8_t most = input.below(12);
    const bool quotes = input.flag();
    const std::string line = input.everything();
    fuzz.machine.program.arguments = line;
    require(ParseArgs(quotes, most) == cutAtBlanks(line, quotes, most),
            "the line is cut at blanks outside quotes");

    InitArgs();
    OperateArgs();
    const Texts arguments = cutAtBlanks(line, true, 10);
    const State& state = fuzz.world.state;
    require(state.ArgHelp == anyIsOneOf(arguments, {"/H", "/HELP", "/?"}), "help is asked for");
    require(state.ArgRun == anyIsOneOf(arguments, {"/R", "/RUN"}), "running is asked for");
    require(state.ArgMinimise == anyIsOneOf(arguments, {"/M", "/MIN"}), "hiding is asked for");
    require(fuzz.told("Available command-line arguments:") == state.ArgHelp, "help is shown");
    require(!fuzz.toldError(), "a command line is no error");
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
