#include "connection/DialRecord.h"

#include "support/WorldTest.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <new>

namespace tarvik {
namespace {

using DialRecordTest = WorldTest;

TEST_F(DialRecordTest, HoldsTheEntryAndNothingElse) {
    DialRecord record("Harbour");

    const RASDIALPARAMSA& parameters = record.parameters();
    EXPECT_EQ(parameters.dwSize, RASDIALPARAMSA::size);
    EXPECT_STREQ(parameters.szEntryName, "Harbour");
    EXPECT_STREQ(parameters.szUserName, "");
    EXPECT_STREQ(parameters.szPassword, "");
}

TEST_F(DialRecordTest, NothingOfItStaysInMemory) {
    alignas(DialRecord) std::array<std::byte, sizeof(DialRecord)> memory{};
    DialRecord* const record = new (memory.data()) DialRecord("Harbour");
    std::strcpy(record->parameters().szPassword, "secret");

    record->~DialRecord();

    EXPECT_TRUE(std::all_of(memory.begin(), memory.end(),
                            [](std::byte each) { return each == std::byte{0}; }));
}

} // namespace
} // namespace tarvik
