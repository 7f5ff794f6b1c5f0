#include "linux/network/LinkReader.h"
#include "linux/network/LinkAge.h"
#include "linux/network/LinkFiles.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <set>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>

namespace tarvik {
namespace {

constexpr const char* interfaces = "/sys/class/net";

std::set<std::uint32_t> indexesOf(const LinkReadings& readings) {
    std::set<std::uint32_t> indexes;
    for (const auto& [index, reading] : readings) {
        indexes.insert(index);
    }
    return indexes;
}

/// From here on this process gets no socket, as in a closed container.
bool forbidSockets() {
    std::array<sock_filter, 4> steps{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EAFNOSUPPORT),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog filter{.len = steps.size(), .filter = steps.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

TEST(LinkReaderTest, TheKernelAnswersWithWhatItsFilesTell) {
    LinkReader reader;

    const auto before = readLink(interfaces, "lo");
    const auto answered = reader.read("lo");
    const auto after = readLink(interfaces, "lo");

    ASSERT_TRUE(before && answered && after);
    EXPECT_EQ(answered->index, before->index);
    EXPECT_GE(answered->received, before->received);
    EXPECT_LE(answered->received, after->received);
    EXPECT_GE(answered->packetsSent, before->packetsSent);
    EXPECT_LE(answered->packetsSent, after->packetsSent);
}

TEST(LinkReaderTest, EveryInterfaceIsAnsweredFor) {
    LinkReader reader;

    const LinkReadings readings = reader.readAll();

    EXPECT_EQ(indexesOf(readings), indexesOf(readLinks(interfaces)));
    const auto own = reader.read("lo");
    ASSERT_TRUE(own);
    EXPECT_LE(readings.at(own->index).received, own->received);
}

TEST(LinkReaderTest, AnInterfaceThatIsNotThereHasNoReading) {
    LinkReader reader;

    EXPECT_FALSE(reader.read("none0"));
    EXPECT_FALSE(reader.read(""));
    EXPECT_FALSE(reader.read("sixteen.letters0"));
    EXPECT_TRUE(reader.read("lo"));
}

TEST(LinkReaderTest, WhereTheKernelMayNotBeAskedItsFilesAreRead) {
    EXPECT_EXIT(
        {
            const bool forbidden = forbidSockets() && socket(AF_NETLINK, SOCK_RAW, 0) < 0;
            LinkReader reader;
            const bool read = reader.read("lo") && !reader.readAll().empty();
            _Exit(forbidden && read ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(LinkAgeTest, TheMachinesOwnAddressIsOld) {
    const auto reading = LinkReader().read("lo");
    ASSERT_TRUE(reading);

    EXPECT_TRUE(addressAge(reading->index));
    EXPECT_FALSE(addressAge(999'999));
}

} // namespace
} // namespace tarvik
