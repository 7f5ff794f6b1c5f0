#include "connection/DialRecord.h"

#include "connection/mdlCode.h"

namespace tarvik {

namespace {

template <std::size_t size>
void fillField(char (&field)[size], const std::string& text) {
    CopyStringToByte(field, text, size - 1);
}

} // namespace

DialRecord::DialRecord(const std::string& entryName) {
    parameters_.dwSize = RASDIALPARAMSA::size;
    fillField(parameters_.szPhoneNumber, "");
    fillField(parameters_.szCallbackNumber, "");
    fillField(parameters_.szEntryName, entryName);
    fillField(parameters_.szUserName, "");
    fillField(parameters_.szPassword, "");
    fillField(parameters_.szDomain, "");
}

DialRecord::~DialRecord() {
    wipe();
}

/// Through a volatile pointer, since nobody reads what is written here: a compiler would leave it
/// out.
void DialRecord::wipe() {
    volatile char* const bytes = reinterpret_cast<char*>(&parameters_);
    for (std::size_t i = 0; i < sizeof parameters_; ++i) {
        bytes[i] = '\0';
    }
}

} // namespace tarvik
