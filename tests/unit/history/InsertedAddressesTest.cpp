#include "history/InsertedAddresses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tarvik {
namespace {

/// Addresses in an order that somebody chose who knew the seed: each new one goes to the end of the
/// order that their weights have.
std::vector<std::string> chosenFor(std::uint64_t seed, std::size_t count) {
    InsertedAddresses::Random random(seed);
    std::vector<std::uint64_t> weights(count);
    std::generate(weights.begin(), weights.end(), random);
    std::vector<std::uint64_t> sorted = weights;
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::string> addresses;
    for (const std::uint64_t weight : weights) {
        const auto rank = std::lower_bound(sorted.begin(), sorted.end(), weight) - sorted.begin();
        addresses.push_back("10.0.0." + std::to_string(100'000 + rank));
    }
    return addresses;
}

std::size_t depthOf(InsertedAddresses& list, const std::vector<std::string>& addresses) {
    for (const std::string& address : addresses) {
        list.insert(address, *partsOf(address));
    }
    return list.depth();
}

TEST(InsertedAddressesTest, AddressesThatWereChosenForOneSeedDoNotMakeAChainWithAnother) {
    for (std::size_t count = 500; count <= 2000; count *= 2) {
        const std::vector<std::string> addresses = chosenFor(1, count);
        InsertedAddresses known(1);
        InsertedAddresses other(2);

        EXPECT_EQ(depthOf(known, addresses), count); // the choice works
        EXPECT_LT(depthOf(other, addresses), 80U);
    }
}

TEST(InsertedAddressesTest, AListIsSeededWithoutBeingTold) {
    const std::vector<std::string> addresses =
        chosenFor(InsertedAddresses::Random::default_seed, 2000);
    InsertedAddresses list;

    EXPECT_LT(depthOf(list, addresses), 80U);
}

} // namespace
} // namespace tarvik
