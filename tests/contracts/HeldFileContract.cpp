#include "contracts/FilesUnderTest.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tarvik {
namespace {

using Outcome = Holding::Outcome;

/// A file that one program has for itself.
class HeldFileContract : public testing::Test {
protected:
    std::string in(const std::string& name) const {
        return machine->folder() + machine->separator() + name;
    }
    /// It is made, and let go when what is returned goes.
    std::unique_ptr<HeldFile> made(std::size_t size = 16) {
        Holding held = files.holdOrMake(path, size, ini);
        EXPECT_EQ(held.outcome, Outcome::Held);
        return std::move(held.file);
    }

    std::unique_ptr<FilesUnderTest> machine = filesUnderTest();
    Files& files = machine->files();
    std::string path = in("Tarvik.journal");
    std::string ini = in("Tarvik.ini");
};

TEST_F(HeldFileContract, WhatIsNotThereIsNotHeldAndNotMade) {
    const Holding held = files.hold(path);

    EXPECT_EQ(held.outcome, Outcome::Absent);
    EXPECT_EQ(held.file, nullptr);
    EXPECT_EQ(files.Dir(path), FileKind::None);
}

TEST_F(HeldFileContract, ANewOneIsZeros) {
    const auto file = made(16);
    std::string bytes = "before";

    EXPECT_FALSE(file->read(bytes));

    EXPECT_EQ(bytes, std::string(16, '\0'));
}

TEST_F(HeldFileContract, WhatIsThereIsTakenAsItIs) {
    files.replace(path, {"what was there"});

    const auto file = made(4);
    std::string bytes;
    file->read(bytes);

    EXPECT_EQ(bytes, "what was there");
}

TEST_F(HeldFileContract, AWriteLeavesWhatStandsBesideIt) {
    files.replace(path, {"0123456789"});
    const auto file = made();

    EXPECT_FALSE(file->write(3, "abc"));
    EXPECT_FALSE(file->flush());

    std::string bytes;
    EXPECT_FALSE(file->read(bytes));
    EXPECT_EQ(bytes, "012abc6789");
    EXPECT_FALSE(file->write(0, "x"));
    EXPECT_FALSE(file->read(bytes));
    EXPECT_EQ(bytes, "x12abc6789");
}

TEST_F(HeldFileContract, WhatWasWrittenIsThereAfterwards) {
    made(6)->write(2, "ab");

    std::string bytes;
    EXPECT_FALSE(files.read(path, bytes));
    EXPECT_EQ(bytes, std::string("\0\0ab\0\0", 6));
}

TEST_F(HeldFileContract, OneProgramHasItAtATime) {
    auto file = made();

    EXPECT_EQ(machine->others().hold(path).outcome, Outcome::Busy);
    EXPECT_EQ(machine->others().holdOrMake(path, 16, ini).outcome, Outcome::Busy);

    file.reset();
    EXPECT_EQ(machine->others().hold(path).outcome, Outcome::Held);
}

TEST_F(HeldFileContract, AFolderIsRefused) {
    machine->makeFolder(path);

    EXPECT_EQ(files.hold(path).outcome, Outcome::Refused);
    EXPECT_EQ(files.holdOrMake(path, 16, ini).outcome, Outcome::Refused);
}

TEST_F(HeldFileContract, AFileOfTwoNamesIsRefused) {
    files.replace(path, {"somebody's"});
    if (!machine->giveSecondName(path, in("target"))) {
        GTEST_SKIP() << "no second name can be given";
    }

    EXPECT_EQ(files.hold(path).outcome, Outcome::Refused);
    EXPECT_EQ(files.holdOrMake(path, 16, ini).outcome, Outcome::Refused);
}

TEST_F(HeldFileContract, OneWithoutAByteMayBeMadeAndGrows) {
    const auto file = made(0);
    std::string bytes = "any";
    EXPECT_FALSE(file->read(bytes));
    EXPECT_EQ(bytes, "");

    EXPECT_FALSE(file->write(0, "one\n"));
    EXPECT_FALSE(file->write(4, "two\n"));

    EXPECT_FALSE(file->flush());
    EXPECT_FALSE(file->read(bytes));
    EXPECT_EQ(bytes, "one\ntwo\n");
}

TEST_F(HeldFileContract, ItIsInPlaceAsLongAsItHasSoManyBytes) {
    const auto file = made(16);

    EXPECT_TRUE(file->isInPlace(16));
    EXPECT_FALSE(file->isInPlace(17));

    file->write(16, "x");
    EXPECT_TRUE(file->isInPlace(17));
}

TEST_F(HeldFileContract, WhatIsTooLongIsNotRead) {
    files.replace(path, {std::string(HeldFile::longest + 1, 'x')});
    const Holding held = files.hold(path);
    std::string bytes;

    EXPECT_EQ(held.file->read(bytes), ErrorNumber::PathFileAccess);
}

TEST_F(HeldFileContract, InAFolderThatIsNotThereNoneIsMade) {
    const std::string nowhere = in("none") + machine->separator() + "Tarvik.journal";

    EXPECT_EQ(files.hold(nowhere).outcome, Outcome::Absent);
    EXPECT_EQ(files.holdOrMake(nowhere, 16, ini).outcome, Outcome::Failed);
}

TEST_F(HeldFileContract, TheUsersOwnFolderIsMadeForIt) {
    const std::string home = in("Velmars Tarvik");
    const std::string inside = home + machine->separator() + "Tarvik.journal";

    EXPECT_EQ(machine->withHome(home).holdOrMake(inside, 16, {}).outcome, Outcome::Held);
}

TEST_F(HeldFileContract, WhatIsRemovedIsGoneAndMayBeMadeAnew) {
    auto file = made();

    EXPECT_FALSE(file->remove());

    file.reset();
    EXPECT_EQ(files.Dir(path), FileKind::None);
    EXPECT_NE(made(), nullptr);
}

TEST_F(HeldFileContract, ANewOneIsAsPrivateAsTheFileItIsMadeLike) {
    files.replace(ini, {"[Settings]\n"});
    machine->makePrivate(ini);

    const auto file = made();

    EXPECT_TRUE(machine->isPrivate(path));
}

} // namespace
} // namespace tarvik
