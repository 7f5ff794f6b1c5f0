#include "contracts/ConnectionsUnderTest.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

/// How a record tells another size than its own.
struct SizeCase {
    const char* name;
    std::uint32_t (*told)(std::uint32_t size);
};

class RecordSizeContract : public testing::TestWithParam<SizeCase> {
protected:
    /// A record with nothing but a size that is not its own.
    template <class Record>
    static Record foreign() {
        Record record{};
        record.dwSize = GetParam().told(Record::size);
        return record;
    }
    template <class Record>
    static Record right() {
        Record record{};
        record.dwSize = Record::size;
        return record;
    }

    std::vector<ConnectionsUnderTest> all = connectionsUnderTest();
    std::uint32_t bytes = 4096;
    std::uint32_t count = 0;
};

TEST_P(RecordSizeContract, AForeignOneIsRefusedByListings) {
    auto entry = foreign<RASENTRYNAMEA>();
    auto line = foreign<RASCONNA>();

    for (const ConnectionsUnderTest& one : all) {
        EXPECT_EQ(one.connections->RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count), 632U)
            << one.name;
        EXPECT_EQ(one.connections->RasEnumConnectionsA(&line, &bytes, &count), 632U) << one.name;
    }
}

TEST_P(RecordSizeContract, AForeignOneIsRefusedForAConnection) {
    auto status = foreign<RASCONNSTATUSA>();
    auto statistics = foreign<RAS_STATS>();

    for (const ConnectionsUnderTest& one : all) {
        EXPECT_EQ(one.connections->RasGetConnectStatusA(one.handle, &status), 632U) << one.name;
        EXPECT_EQ(one.connections->RasGetConnectionStatistics(one.handle, &statistics), 632U)
            << one.name;
    }
}

TEST_P(RecordSizeContract, AForeignOneIsRefusedByADial) {
    auto asked = foreign<RASDIALPARAMSA>();
    auto parameters = right<RASDIALPARAMSA>();
    auto extensions = foreign<RASDIALEXTENSIONS>();
    auto rightExtensions = right<RASDIALEXTENSIONS>();
    bool found = false;
    std::uint32_t handle = 0;

    for (const ConnectionsUnderTest& one : all) {
        ConnectionProvider& service = *one.connections;
        EXPECT_EQ(service.RasGetEntryDialParamsA(nullptr, &asked, &found), 632U) << one.name;
        EXPECT_EQ(service.RasDialA(&extensions, nullptr, &parameters, 0, nullptr, &handle), 632U)
            << one.name;
        EXPECT_EQ(service.RasDialA(&rightExtensions, nullptr, &asked, 0, nullptr, &handle), 632U)
            << one.name;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, RecordSizeContract,
    testing::Values(SizeCase{"None", [](std::uint32_t) { return 0U; }},
                    SizeCase{"OneLess", [](std::uint32_t size) { return size - 1; }},
                    SizeCase{"OneMore", [](std::uint32_t size) { return size + 1; }}),
    [](const auto& test) { return test.param.name; });

} // namespace
} // namespace tarvik
