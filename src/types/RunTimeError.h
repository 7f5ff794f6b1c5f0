#pragma once

#include <exception>
#include <string>

namespace tarvik {

/// Run-time error numbers that the program raises or meets.
enum class ErrorNumber : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    Internal = 51,
    FileNotFound = 53,
    FileAlreadyExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
};

/// The description text shown for an error number, in English.
const char* descriptionOf(ErrorNumber number);

/// The one exception type of the program: an error number with its description.
class RunTimeError : public std::exception {
public:
    explicit RunTimeError(ErrorNumber number) : number_(number) {}

    ErrorNumber number() const { return number_; }
    const char* what() const noexcept override { return descriptionOf(number_); }

private:
    ErrorNumber number_;
};

/// Throws the run-time error of that number.
[[noreturn]] void raise(ErrorNumber number);

} // namespace tarvik
