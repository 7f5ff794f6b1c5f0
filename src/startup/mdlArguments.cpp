#include "startup/mdlArguments.h"

#include "ports/Platform.h"
#include "ports/Program.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "types/Text.h"

#include <utility>

namespace tarvik {

namespace {

constexpr int maxArgs = 10;

/// The command line as the arguments are cut from it, one character at a time.
class ArgumentReader {
public:
    ArgumentReader(bool quoteAware, std::size_t maxCount)
        : quoteAware_(quoteAware), maxCount_(maxCount) {}

    /// False when the argument that this character begins would be one too many.
    bool take(char character) {
        const bool quote = quoteAware_ && character == '"';
        if (quote) {
            insideQuotes_ = !insideQuotes_;
        }
        if ((character == ' ' || character == '\t') && !insideQuotes_) {
            insideArgument_ = false;
            return true;
        }
        if (!insideArgument_) {
            if (arguments_.size() - 1 == maxCount_) {
                return false;
            }
            arguments_.emplace_back();
            insideArgument_ = true;
        }
        if (!quote) {
            arguments_.back() += character;
        }
        return true;
    }

    std::vector<std::string> arguments() && { return std::move(arguments_); }

private:
    bool quoteAware_;
    std::size_t maxCount_;
    bool insideQuotes_ = false;
    bool insideArgument_ = false;
    std::vector<std::string> arguments_{1};
};

/// False for a switch that the program does not know.
bool applySwitch(const std::string& argument) {
    const std::string upper = upperCase(argument);
    if (upper == "/H" || upper == "/HELP" || argument == "/?") {
        state().ArgHelp = true;
    } else if (upper == "/RUN" || upper == "/R") {
        state().ArgRun = true;
    } else if (upper == "/M" || upper == "/MIN") {
        state().ArgMinimise = true;
    } else {
        return false;
    }
    return true;
}

} // namespace

std::vector<std::string> ParseArgs(bool QuoteAware, int MaxArgs) {
    return guarded("ParseArgs", std::vector<std::string>(), [&](std::vector<std::string>& result) {
        ArgumentReader reader(QuoteAware, static_cast<std::size_t>(MaxArgs));
        for (const char character : platform().program.commandLine()) {
            if (!reader.take(character)) {
                break;
            }
        }
        result = std::move(reader).arguments();
    });
}

void InitArgs() {
    guarded("InitArgs", [] {
        std::string invalid;
        for (const std::string& argument : ParseArgs(true, maxArgs)) {
            if (!applySwitch(argument)) {
                invalid = invalid.empty() ? argument : invalid + CR + argument;
            }
        }
        if (!invalid.empty()) {
            MsgBox(std::string("Warning:") + CR + "Invalid command-line switches detected:" + CR +
                       invalid + CR + "Try /? or /h for help.",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
        }
    });
}

void OperateArgs() {
    guarded("OperateArgs", [] {
        if (state().ArgHelp) {
            MsgBox(std::string("Available command-line arguments:") + CR + CR + "/?, /h, /help" +
                       CR + "\t- Show this help" + CR + "/m, /min" + CR +
                       "\t- Minmise after startup" + CR + "/r, /run" + CR + "\t- Run after startup",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::Information);
        }
    });
}

} // namespace tarvik
