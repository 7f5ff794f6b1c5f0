#include "linux/network/RouteMessages.h"
#include "linux/network/RouteSocket.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <string>
#include <sys/socket.h>
#include <vector>

namespace tarvik {
namespace {

using Progress = RouteAnswer::Progress;

constexpr std::uint32_t number = 7;
constexpr RouteAnswer goesOn{Progress::goesOn, 0};
constexpr RouteAnswer isOver{Progress::over, 0};
constexpr RouteAnswer cannotBeRead{Progress::failed, EIO};

/// A datagram that is put together from messages, and what is read of it.
class RouteMessagesTest : public testing::Test {
protected:
    RouteMessagesTest() {
        request.nlmsg_seq = number;
        request.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    }

    /// The length that the header tells is the whole one where none is given.
    void add(std::uint16_t type, const std::string& content, std::uint32_t length = whole) {
        nlmsghdr header{};
        const auto size = static_cast<std::uint32_t>(NLMSG_HDRLEN + content.size());
        header.nlmsg_len = length == whole ? size : length;
        header.nlmsg_type = type;
        header.nlmsg_seq = sequence;
        header.nlmsg_flags = flags;
        datagram.resize(NLMSG_ALIGN(datagram.size()));
        const auto* bytes = reinterpret_cast<const char*>(&header);
        datagram.insert(datagram.end(), bytes, bytes + sizeof header);
        datagram.insert(datagram.end(), content.begin(), content.end());
    }

    static std::string numberAsBytes(int value) {
        std::string bytes(sizeof value, '\0');
        std::memcpy(bytes.data(), &value, sizeof value);
        return bytes;
    }

    RouteAnswer read() {
        return readRouteMessages(datagram, request, [this](const nlmsghdr& message) {
            taken.emplace_back(reinterpret_cast<const char*>(&message) + NLMSG_HDRLEN,
                               message.nlmsg_len - NLMSG_HDRLEN);
        });
    }

    static constexpr std::uint32_t whole = 0xFFFFFFFF;
    nlmsghdr request{};
    std::uint32_t sequence = number;
    std::uint16_t flags = NLM_F_MULTI;
    std::vector<char> datagram;
    std::vector<std::string> taken;
};

using Contents = std::vector<std::string>;

TEST_F(RouteMessagesTest, AListGoesOnUntilItsEndIsTold) {
    add(RTM_NEWADDR, "one!");
    add(RTM_NEWADDR, "two!");

    EXPECT_EQ(read(), goesOn);
    add(NLMSG_DONE, numberAsBytes(0));
    EXPECT_EQ(read(), isOver);

    EXPECT_EQ(taken, (Contents{"one!", "two!", "one!", "two!"}));
}

TEST_F(RouteMessagesTest, AnyOtherAnswerIsOverWithItsDatagram) {
    request.nlmsg_flags = NLM_F_REQUEST;
    add(RTM_NEWLINK, "one!");

    EXPECT_EQ(read(), isOver);

    EXPECT_EQ(taken, Contents{"one!"});
}

TEST_F(RouteMessagesTest, ALastMessageOfAnOddLengthIsTheLast) {
    add(RTM_NEWADDR, "odd");
    add(RTM_NEWADDR, "longer");

    EXPECT_EQ(read(), goesOn);

    EXPECT_EQ(taken, (Contents{"odd", "longer"}));
}

TEST_F(RouteMessagesTest, AMessageLongerThanItsDatagramCannotBeRead) {
    add(RTM_NEWADDR, "one!");
    add(RTM_NEWADDR, "two!", NLMSG_HDRLEN + 5);

    EXPECT_EQ(read(), cannotBeRead);

    EXPECT_EQ(taken, Contents{"one!"});
}

TEST_F(RouteMessagesTest, AMessageShorterThanItsHeaderCannotBeRead) {
    for (const std::uint32_t length : {std::uint32_t{0}, std::uint32_t{NLMSG_HDRLEN} - 1}) {
        datagram.clear();
        add(RTM_NEWADDR, "one!", length);

        EXPECT_EQ(read(), cannotBeRead) << length;
    }

    EXPECT_TRUE(taken.empty());
}

TEST_F(RouteMessagesTest, APartOfAHeaderCannotBeRead) {
    add(RTM_NEWADDR, "one!");
    datagram.resize(datagram.size() + NLMSG_HDRLEN - 1);

    EXPECT_EQ(read(), cannotBeRead);
}

TEST_F(RouteMessagesTest, TheAnswerToAnotherRequestIsNotTaken) {
    sequence = number - 1;
    add(RTM_NEWADDR, "one!");

    EXPECT_EQ(read(), cannotBeRead);

    EXPECT_TRUE(taken.empty());
}

TEST_F(RouteMessagesTest, AListThatAChangeInterruptedHasFailed) {
    add(RTM_NEWADDR, "one!");
    flags |= NLM_F_DUMP_INTR;
    add(NLMSG_DONE, numberAsBytes(0));

    EXPECT_EQ(read(), cannotBeRead);
}

TEST_F(RouteMessagesTest, WhatTheKernelRefusesWithIsTold) {
    for (const auto type : {std::uint16_t{NLMSG_ERROR}, std::uint16_t{NLMSG_DONE}}) {
        datagram.clear();
        add(type, numberAsBytes(-ENODEV));

        EXPECT_EQ(read(), (RouteAnswer{Progress::refused, ENODEV})) << type;
    }
}

TEST_F(RouteMessagesTest, AnAcknowledgementIsTheEnd) {
    add(NLMSG_ERROR, numberAsBytes(0));

    EXPECT_EQ(read(), isOver);
}

TEST_F(RouteMessagesTest, AnErrorThatIsNoneCannotBeRead) {
    for (const std::string& content :
         {std::string("\1\2\3"), numberAsBytes(1), numberAsBytes(-5000), numberAsBytes(INT_MIN)}) {
        datagram.clear();
        add(NLMSG_ERROR, content);

        EXPECT_EQ(read(), cannotBeRead);
    }
}

/// A message with a header of its own of 8 bytes, and one attribute behind it.
class RouteAttributeTest : public testing::Test {
protected:
    static constexpr std::size_t ownHeader = 8;

    RouteAttributeTest() : bytes(NLMSG_SPACE(ownHeader) + RTA_LENGTH(4)) {
        setLength(RTA_LENGTH(4));
        std::memcpy(bytes.data() + NLMSG_SPACE(ownHeader) + RTA_LENGTH(0), "four", 4);
    }

    void setLength(std::size_t length) {
        const rtattr attribute{static_cast<std::uint16_t>(length), IFA_CACHEINFO};
        std::memcpy(bytes.data() + NLMSG_SPACE(ownHeader), &attribute, sizeof attribute);
    }

    /// What is found of the kind in so many bytes of the message; "" when there is none.
    std::string find(std::uint16_t kind, std::size_t length) {
        std::vector<char> message(bytes.begin(),
                                  bytes.begin() + static_cast<std::ptrdiff_t>(length));
        auto* header = reinterpret_cast<nlmsghdr*>(message.data());
        header->nlmsg_len = static_cast<std::uint32_t>(length);
        std::string content(4, '-');
        const bool found = copyAttribute(*header, ownHeader, kind, content.data(), content.size());
        return found ? content : "";
    }

    std::vector<char> bytes;
};

TEST_F(RouteAttributeTest, TheAttributeOfTheKindIsCopied) {
    EXPECT_EQ(find(IFA_CACHEINFO, bytes.size()), "four");
    EXPECT_EQ(find(IFA_LABEL, bytes.size()), "");
}

TEST_F(RouteAttributeTest, ACutAttributeIsNone) {
    for (std::size_t length = NLMSG_HDRLEN; length < bytes.size(); ++length) {
        EXPECT_EQ(find(IFA_CACHEINFO, length), "") << length;
    }
}

TEST_F(RouteAttributeTest, AnAttributeShorterThanItsHeaderIsNone) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{3}}) {
        setLength(length);

        EXPECT_EQ(find(IFA_CACHEINFO, bytes.size()), "") << length;
    }
}

TEST_F(RouteAttributeTest, ShorterContentFillsInPart) {
    setLength(RTA_LENGTH(2));

    EXPECT_EQ(find(IFA_CACHEINFO, bytes.size()), "fo--");
}

/// The addresses of this program's sockets to the kernel.
std::vector<sockaddr_nl> routeSockets() {
    constexpr int mostDescriptors = 1024;
    std::vector<sockaddr_nl> found;
    for (int descriptor = 0; descriptor < mostDescriptors; ++descriptor) {
        sockaddr_nl own{};
        socklen_t size = sizeof own;
        if (getsockname(descriptor, reinterpret_cast<sockaddr*>(&own), &size) == 0 &&
            own.nl_family == AF_NETLINK) {
            found.push_back(own);
        }
    }
    return found;
}

TEST(RouteSocketTest, WhatAnotherProgramSendsIsDropped) {
    nlmsghdr unknown{};
    unknown.nlmsg_len = sizeof unknown;
    const FileDescriptor other(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
    RouteSocket asking;
    struct {
        nlmsghdr header{};
        rtgenmsg message{};
    } request;
    request.header.nlmsg_len = NLMSG_LENGTH(sizeof request.message);
    request.header.nlmsg_type = RTM_GETADDR;
    request.header.nlmsg_flags = NLM_F_DUMP;
    const auto ask = [&] { return asking.ask(request.header, [](const nlmsghdr&) {}); };
    ASSERT_TRUE(ask());
    bool sent = false;
    for (const sockaddr_nl& to : routeSockets()) {
        sent |= to.nl_pid != 0 &&
                sendto(other.number(), &unknown, sizeof unknown, 0,
                       reinterpret_cast<const sockaddr*>(&to), sizeof to) == sizeof unknown;
    }
    if (!sent) {
        GTEST_SKIP() << "only the superuser may send to others";
    }

    EXPECT_TRUE(ask());
}

} // namespace
} // namespace tarvik
