#include "common/RasErrorText.h"

#include <algorithm>
#include <iterator>

namespace tarvik {

namespace {

struct CodeText {
    std::uint32_t code;
    const char* text;
};

constexpr CodeText texts[] = {
    {600, "An operation is pending."},
    {601, "The port handle is invalid."},
    {602, "The port is already open."},
    {603, "The caller's buffer is too small."},
    {604, "Wrong information was specified."},
    {608, "The device does not exist."},
    {619, "The port is disconnected."},
    {621, "The phone book file cannot be opened."},
    {623, "The phone book entry cannot be found."},
    {628, "The port was disconnected."},
    {629, "The remote machine closed the connection."},
    {630, "The port was disconnected because of a hardware failure."},
    {631, "The user disconnected the port."},
    {632, "The structure size is incorrect."},
    {633, "The port is already in use or is not set up for dialling out."},
    {635, "An unknown error has occurred."},
    {638, "The request has timed out."},
    {645, "An internal authentication error has occurred."},
    {651, "The modem or other device has reported an error."},
    {652, "There was an unrecognised response from the device."},
    {668, "The connection was dropped."},
    {676, "The phone line is busy."},
    {677, "A person answered instead of a modem."},
    {678, "There was no answer."},
    {679, "No carrier was detected."},
    {680, "There was no dial tone."},
    {691, "Access was denied because the user name or the password was not valid on the domain."},
    {692, "There was a hardware failure in the modem or other device."},
    {718, "The remote computer did not answer in time."},
    {719, "The remote computer ended the connection."},
    {720, "The connection to the remote computer could not be completed."},
    {721, "The remote computer did not respond."},
    {734, "The link control protocol was ended."},
    {756, "This connection is already being dialled."},
    {797, "The modem or other connecting device was not found."},
};

} // namespace

const char* rasErrorText(std::uint32_t code) {
    const auto* found = std::lower_bound(
        std::begin(texts), std::end(texts), code,
        [](const CodeText& entry, std::uint32_t wanted) { return entry.code < wanted; });
    return found != std::end(texts) && found->code == code ? found->text : nullptr;
}

} // namespace tarvik
