// What the kernel answers about interfaces and addresses: datagrams of any bytes, and the
// attributes of their messages.
//
// Input: whether a list was asked for, the header of its messages, the kind of attribute, and how
// many bytes of it are wanted, a byte each; then the datagram. The request has the number 1.

#include "Fuzz.h"
#include "linux/network/RouteMessages.h"

#include <cerrno>
#include <vector>

namespace tarvik::fuzz {
namespace {

constexpr std::size_t mostHeader = 32;
constexpr char untouched = '\x5A';

/// What is copied stays in the room for it, and comes from the message.
void readAttribute(const nlmsghdr& message, std::size_t header, std::uint16_t kind,
                   std::size_t size) {
    std::vector<char> content(size + 1, untouched);
    const bool found = copyAttribute(message, header, kind, content.data(), size);
    require(content.back() == untouched, "an attribute fills no more than its room");
    require(!found || message.nlmsg_len >= NLMSG_SPACE(header) + RTA_LENGTH(0),
            "an attribute is in its message");
}

void play(Input input) {
    nlmsghdr request{};
    request.nlmsg_seq = 1;
    request.nlmsg_flags = input.flag() ? NLM_F_DUMP : 0;
    const std::size_t header = input.below(mostHeader);
    const std::uint16_t kind = input.byte();
    const std::size_t size = input.byte();
    const std::string bytes = input.everything();
    // Memory of its own, and no more: what is read behind it is found.
    const std::vector<char> datagram(bytes.begin(), bytes.end());
    std::size_t next = 0;
    const RouteAnswer answer = readRouteMessages(datagram, request, [&](const nlmsghdr& message) {
        const auto begin =
            static_cast<std::size_t>(reinterpret_cast<const char*>(&message) - datagram.data());
        require(begin == next, "a message begins behind the one before");
        require(message.nlmsg_len >= sizeof message && message.nlmsg_len <= datagram.size() - begin,
                "a message is in its datagram");
        require(message.nlmsg_seq == 1, "only the answer to the request is taken");
        next = begin + NLMSG_ALIGN(std::size_t{message.nlmsg_len});
        readAttribute(message, header, kind, size);
    });
    const bool ended = answer.progress == RouteAnswer::Progress::over ||
                       answer.progress == RouteAnswer::Progress::goesOn;
    require(ended == (answer.error == 0), "only what failed has an error");
    require(answer.error >= 0 &&
                (answer.progress != RouteAnswer::Progress::failed || answer.error == EIO),
            "an error is one of the system's");
    require(answer.progress != RouteAnswer::Progress::goesOn || request.nlmsg_flags != 0,
            "only a list goes on");
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
