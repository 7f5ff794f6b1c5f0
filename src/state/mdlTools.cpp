#include "state/mdlTools.h"

#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "state/mdlVar.h"
#include "types/Convert.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace tarvik {

namespace {
constexpr const char* contactTheAuthor = "Please contact the author for support.";
} // namespace

MsgBoxAnswer MsgBox(const std::string& Text, MsgBoxButtons Buttons, MsgBoxIcon Icon) {
    return platform().desktop.messageBox(
        {.text = Text, .buttons = Buttons, .icon = Icon, .caption = ApplicationTitle});
}

void ReportError(const char* FunctionName, ErrorNumber Number, const char* Description) {
    const std::string text = "Error " + wholeToText(static_cast<int>(Number)) + " (" + Description +
                             ")" + CR + "occured in function \"" + FunctionName + "\"." + CR +
                             contactTheAuthor;
    if (state().ErrorsOfTicks.isNews(text)) {
        MsgBox(text, MsgBoxButtons::OkOnly, MsgBoxIcon::Critical);
    }
}

void ReportCurrentError(const char* FunctionName) {
    try {
        throw;
    } catch (const RunTimeError& error) {
        ReportError(FunctionName, error.number(), error.what());
    } catch (const std::out_of_range&) {
        ReportError(FunctionName, ErrorNumber::SubscriptOutOfRange,
                    descriptionOf(ErrorNumber::SubscriptOutOfRange));
    } catch (const std::bad_alloc&) {
        ReportError(FunctionName, ErrorNumber::OutOfMemory,
                    descriptionOf(ErrorNumber::OutOfMemory));
    } catch (const std::exception& error) {
        ReportError(FunctionName, ErrorNumber::Internal, error.what());
    } catch (...) {
        ReportError(FunctionName, ErrorNumber::Internal, descriptionOf(ErrorNumber::Internal));
    }
}

void FatalError(const std::string& FunctionName, FatalKind Kind) {
    guarded("FatalError", [&] {
        const char* line = "Unhandled error.";
        switch (Kind) {
        case FatalKind::General:
            line = contactTheAuthor;
            break;
        case FatalKind::Assertion:
            line = "Internal assertion failure!";
            break;
        case FatalKind::NotImplemented:
            line = "The function you've requested is not (yet) implemented!";
            break;
        }
        MsgBox("Error occured in: " + FunctionName + CR + line, MsgBoxButtons::OkOnly,
               MsgBoxIcon::Critical);
    });
}

std::string StringWithoutBlanks(const std::string& Text, bool Flag) {
    return guarded("StringWithoutBlanks", std::string(), [&](std::string& result) {
        constexpr std::size_t lengthLimit = 32000;
        if (Text.empty() || Text.size() >= lengthLimit) {
            return;
        }
        std::copy_if(Text.begin(), Text.end(), std::back_inserter(result),
                     [Flag](char character) { return !Flag && character == ' '; });
    });
}

std::string StripNull(std::string_view Text) {
    return guarded("StripNull", std::string(), [&](std::string& result) {
        const std::size_t end = Text.find('\0');
        if (end == std::string_view::npos) {
            raise(ErrorNumber::InvalidProcedureCall);
        }
        result = Text.substr(0, end);
    });
}

} // namespace tarvik
