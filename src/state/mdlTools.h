#pragma once

#include "ports/Desktop.h"
#include "types/RunTimeError.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <string_view>

namespace tarvik {

/// Shows a message box with the application title as caption and returns the answer.
MsgBoxAnswer MsgBox(const std::string& Text, MsgBoxButtons Buttons, MsgBoxIcon Icon);

/// Shows what every unexpected error is reported with: its number, its description and the name of
/// the procedure that met it. What every tick meets is shown once (see `TickReports`).
void ReportError(const char* FunctionName, ErrorNumber Number, const char* Description);

/// Reports the error being handled, whatever was thrown.
void ReportCurrentError(const char* FunctionName);

/// The error trap around what a procedure does that an event, a tick, the start or the end calls:
/// an error raised in `body` ends it there and is reported under the procedure's name; whoever
/// called the procedure goes on. What `body` did before stays done.
template <class Body>
void guarded(const char* FunctionName, Body&& body) {
    try {
        body();
    } catch (...) {
        ReportCurrentError(FunctionName);
    }
}

/// The same for a function: returns what `result` held at the end or at the moment of the error.
template <class Result, class Body>
Result guarded(const char* FunctionName, Result result, Body&& body) {
    guarded(FunctionName, [&] { body(result); });
    return result;
}

/// What `FatalError` reports: any other number is an unhandled error.
enum class FatalKind : std::uint8_t { General = 0, Assertion = 1, NotImplemented = 2 };

/// Reports a fault that the program found in itself; the program goes on running.
void FatalError(const std::string& FunctionName, FatalKind Kind);

/// The spaces of the text when `Flag` is false, nothing when it is true or the text has 32,000 or
/// more characters. The name promises something else; callers count on this.
std::string StringWithoutBlanks(const std::string& Text, bool Flag);

/// The text before its first NUL; a text without one is an error (5), reported here.
std::string StripNull(std::string_view Text);

} // namespace tarvik
