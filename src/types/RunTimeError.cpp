#include "types/RunTimeError.h"

namespace tarvik {

const char* descriptionOf(ErrorNumber number) {
    switch (number) {
    case ErrorNumber::InvalidProcedureCall:
        return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
        return "Overflow";
    case ErrorNumber::OutOfMemory:
        return "Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
        return "Subscript out of range";
    case ErrorNumber::DivisionByZero:
        return "Division by zero";
    case ErrorNumber::TypeMismatch:
        return "Type mismatch";
    case ErrorNumber::Internal:
        return "Internal error";
    case ErrorNumber::FileNotFound:
        return "File not found";
    case ErrorNumber::FileAlreadyExists:
        return "File already exists";
    case ErrorNumber::DiskFull:
        return "Disk full";
    case ErrorNumber::PermissionDenied:
        return "Permission denied";
    case ErrorNumber::PathFileAccess:
        return "Path/File access error";
    case ErrorNumber::PathNotFound:
        return "Path not found";
    }
    return "Application-defined or object-defined error";
}

void raise(ErrorNumber number) {
    throw RunTimeError(number);
}

} // namespace tarvik
