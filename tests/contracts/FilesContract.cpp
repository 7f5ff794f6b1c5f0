#include "contracts/FilesUnderTest.h"

#include "common/ProfileEngine.h"
#include "scripted/ScriptedPlatform.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tarvik {
namespace {

using Names = std::vector<std::string>;

class FilesContract : public testing::Test {
protected:
    std::string in(const std::string& name) const {
        return machine->folder() + machine->separator() + name;
    }
    std::string contentOf(const std::string& file) {
        std::string bytes;
        EXPECT_FALSE(files.read(file, bytes)) << file;
        return bytes;
    }
    std::string content() { return contentOf(path); }
    void givenPrivate(const std::string& file, const std::string& bytes) {
        ASSERT_FALSE(files.replace(file, {bytes}));
        machine->makePrivate(file);
        ASSERT_TRUE(machine->isPrivate(file));
    }

    std::unique_ptr<FilesUnderTest> machine = filesUnderTest();
    Files& files = machine->files();
    std::string path = in("Tarvik.ini");
    std::string copy = in("copy.ini");
};

// Reading and replacing.

TEST_F(FilesContract, AReplacedFileHoldsAllPiecesInOrder) {
    EXPECT_FALSE(files.replace(path, {"one ", "", "two"}));

    EXPECT_EQ(content(), "one two");
}

TEST_F(FilesContract, EveryByteIsKept) {
    std::string bytes("\0\r\n\x1A\xFF", 5);
    bytes.append(3'000'000, 'x');

    files.replace(path, {bytes});

    EXPECT_EQ(content(), bytes);
}

TEST_F(FilesContract, NothingIsLeftBesideTheFile) {
    files.replace(path, {"a"});
    files.replace(path, {"b"});

    EXPECT_EQ(machine->names(), Names{"Tarvik.ini"});
}

TEST_F(FilesContract, AReadOnlyFileStaysAsItWas) {
    files.replace(path, {"old"});
    machine->makeReadOnly(path);

    EXPECT_EQ(files.replace(path, {"new"}), ErrorNumber::PermissionDenied);

    EXPECT_EQ(content(), "old");
    EXPECT_EQ(machine->names(), Names{"Tarvik.ini"});
}

TEST_F(FilesContract, AReadOnlyFileIsNoTargetOfACopy) {
    files.replace(path, {"old"});
    files.replace(copy, {"new"});
    machine->makeReadOnly(path);

    EXPECT_EQ(files.FileCopy(copy, path), ErrorNumber::PermissionDenied);

    EXPECT_EQ(content(), "old");
}

TEST_F(FilesContract, ADirectoryIsNeitherReadNorReplaced) {
    machine->makeFolder(path);
    std::string bytes = "before";

    EXPECT_EQ(files.Dir(path), FileKind::Directory);
    EXPECT_FALSE(files.stamp(path));
    EXPECT_TRUE(files.read(path, bytes));
    EXPECT_EQ(bytes, "");
    EXPECT_TRUE(files.replace(path, {"x"}));
    EXPECT_EQ(files.Kill(path), ErrorNumber::PathFileAccess);
    EXPECT_EQ(files.Dir(path), FileKind::Directory);
}

TEST_F(FilesContract, ADirectoryAsSettingsHasNoKeysAndStays) {
    machine->makeFolder(path);
    ProfileEngine engine(files, machine->lineEnd());
    std::string buffer(16, '\0');

    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "none", buffer.data(), 16, path), 4U);
    EXPECT_FALSE(engine.WritePrivateProfileStringA("a", "x", "1", path));

    EXPECT_STREQ(buffer.c_str(), "none");
    EXPECT_EQ(files.Dir(path), FileKind::Directory);
    EXPECT_EQ(machine->names(), Names{"Tarvik.ini"});
}

TEST_F(FilesContract, ADeviceIsNeitherReadNorReplaced) {
    const std::string device = machine->device();
    std::string bytes = "before";

    EXPECT_EQ(files.Dir(device), FileKind::Other);
    EXPECT_FALSE(files.stamp(device));
    EXPECT_EQ(files.read(device, bytes), ErrorNumber::PathFileAccess);
    EXPECT_EQ(bytes, "");
    EXPECT_EQ(files.replace(device, {"x"}), ErrorNumber::PathFileAccess);
}

TEST_F(FilesContract, AFileThatIsNotThereIsNotFound) {
    std::string bytes = "before";

    EXPECT_EQ(files.Dir(path), FileKind::None);
    EXPECT_FALSE(files.stamp(path));
    EXPECT_EQ(files.read(path, bytes), ErrorNumber::FileNotFound);
    EXPECT_EQ(bytes, "");
}

TEST_F(FilesContract, AMissingFolderIsToldAndNotMade) {
    const std::string inside = in("none") + machine->separator() + "a";
    std::string bytes;

    EXPECT_EQ(files.replace(inside, {"x"}), machine->missingFolder());
    EXPECT_EQ(files.read(inside, bytes), machine->missingFolder());

    EXPECT_TRUE(machine->names().empty());
}

TEST_F(FilesContract, TheHomeFolderIsMadeWhenSomethingIsFirstWrittenThere) {
    const std::string home = in("Velmars Tarvik");
    const std::string inside = home + machine->separator() + "Tarvik.ini";
    Files& own = machine->withHome(home);
    std::string bytes;
    EXPECT_EQ(own.read(inside, bytes), machine->missingFolder());
    EXPECT_TRUE(machine->names().empty());

    EXPECT_FALSE(own.replace(inside, {"x"}));

    EXPECT_EQ(own.Dir(inside), FileKind::File);
}

TEST_F(FilesContract, TheStampChangesWithEachReplacementAndEachWrite) {
    files.replace(path, {"a"});
    const auto first = files.stamp(path);
    EXPECT_TRUE(first);
    EXPECT_EQ(first, files.stamp(path));

    files.replace(path, {"b"});
    const auto second = files.stamp(path);
    EXPECT_NE(first, second);

    machine->writeInPlace(path, "longer");
    EXPECT_NE(second, files.stamp(path));
}

// Copies, names, deletion.

TEST_F(FilesContract, ACopyIsWholeAndGoesOverWhatWasThere) {
    files.replace(path, {"new"});
    files.replace(copy, {"old"});

    EXPECT_EQ(files.FileCopy(in("none"), copy), ErrorNumber::FileNotFound);
    EXPECT_EQ(contentOf(copy), "old");
    EXPECT_FALSE(files.FileCopy(path, copy));

    EXPECT_EQ(contentOf(copy), "new");
}

TEST_F(FilesContract, ADeletedFileIsGone) {
    files.replace(path, {"a"});

    EXPECT_FALSE(files.Kill(path));

    EXPECT_EQ(files.Dir(path), FileKind::None);
    EXPECT_EQ(files.Kill(path), ErrorNumber::FileNotFound);
}

TEST_F(FilesContract, AFileGetsANameThatNothingHas) {
    givenPrivate(path, "text");

    EXPECT_FALSE(files.Name(path, copy));

    EXPECT_EQ(machine->names(), Names{"copy.ini"});
    EXPECT_EQ(contentOf(copy), "text");
    EXPECT_TRUE(machine->isPrivate(copy));
}

TEST_F(FilesContract, ANameThatSomethingHasIsNotGivenAndBothStay) {
    files.replace(path, {"mine"});
    files.replace(copy, {"other"});

    EXPECT_EQ(files.Name(path, copy), ErrorNumber::FileAlreadyExists);

    EXPECT_EQ(content(), "mine");
    EXPECT_EQ(contentOf(copy), "other");
}

TEST_F(FilesContract, AFileThatIsNotThereGetsNoName) {
    EXPECT_EQ(files.Name(path, copy), ErrorNumber::FileNotFound);
}

// The last look.

TEST_F(FilesContract, TheLastLookIsTakenWhenTheNewFileIsComplete) {
    files.replace(path, {"old"});
    std::size_t names = 0;

    EXPECT_FALSE(files.replaceIf(path, {"new"}, [&] {
        names = machine->names().size();
        return content() == "old";
    }));

    EXPECT_EQ(names, 2U);
    EXPECT_EQ(content(), "new");
}

TEST_F(FilesContract, ALastLookThatFindsAnotherFileLeavesIt) {
    files.replace(path, {"old"});

    EXPECT_EQ(files.replaceIf(path, {"new"},
                              [&] {
                                  machine->others().replace(path, {"another's"});
                                  return false;
                              }),
              ErrorNumber::PathFileAccess);

    EXPECT_EQ(content(), "another's");
    EXPECT_EQ(machine->names(), Names{"Tarvik.ini"});
}

// Who may read what is made of a file.

TEST_F(FilesContract, ASaveLeavesAPrivateFilePrivate) {
    givenPrivate(path, "old");

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_TRUE(machine->isPrivate(path));
    EXPECT_EQ(content(), "new");
}

TEST_F(FilesContract, ACopyMayBeReadByThoseWhoMayReadTheOriginal) {
    givenPrivate(path, "secret");

    EXPECT_FALSE(files.FileCopy(path, copy));

    EXPECT_TRUE(machine->isPrivate(copy));
    EXPECT_EQ(contentOf(copy), "secret");
}

TEST_F(FilesContract, ACopyOverAFileOfAllHasTheRightsOfTheOriginal) {
    givenPrivate(path, "secret");
    files.replace(copy, {"old"});

    EXPECT_FALSE(files.FileCopy(path, copy));

    EXPECT_TRUE(machine->isPrivate(copy));
    EXPECT_EQ(contentOf(copy), "secret");
}

TEST_F(FilesContract, TheFileThatFollowsADeletedOneHasItsRights) {
    givenPrivate(path, "secret");
    files.Kill(path);

    EXPECT_FALSE(files.replace(path, {"next"}));

    EXPECT_TRUE(machine->isPrivate(path));
}

TEST_F(FilesContract, BackupAndFreshFileAreAsPrivateAsTheOldOne) {
    std::string text;
    for (const char* line : {"[Settings]", "IsLocked=0", "LastState=r", "DateStamp1=r",
                             "LastDateStamp=1", "[r]", "Rcvd=7"}) {
        text.append(line).append(machine->lineEnd());
    }
    givenPrivate(path, text);
    ScriptedPlatform played;
    played.program.folderPath = machine->folder();
    played.program.separator = machine->separator();
    ProfileEngine profile(files, machine->lineEnd());
    Platform platform = played.withFiles(profile, files);
    World world(platform);
    InitApplicationStatus();

    EXPECT_TRUE(BackupINIFile());
    world.state.BytesRcvdTotal = 9;
    EXPECT_TRUE(SaveState());

    EXPECT_TRUE(machine->isPrivate(in("Tarvik.2026-11-16.ini")));
    EXPECT_TRUE(machine->isPrivate(path));
}

// What others leave and do in the folder.

TEST_F(FilesContract, WhatIsLeftOfAnInterruptedWriteGoesWithTheNext) {
    machine->beginWriting(in(machine->temporaryName())).reset();
    ASSERT_EQ(machine->names(), Names{machine->temporaryName()});

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_EQ(machine->names(), Names{"Tarvik.ini"});
}

TEST_F(FilesContract, WhatAnotherProgramStillWritesIsNotSweptUp) {
    const auto writing = machine->beginWriting(in(machine->temporaryName()));

    EXPECT_FALSE(files.replace(path, {"new"}));

    Names expected{"Tarvik.ini", machine->temporaryName()};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(machine->names(), expected);
}

TEST_F(FilesContract, OtherNamesAreNotSweptUp) {
    const Names others = machine->similarNames();
    for (const std::string& name : others) {
        ASSERT_FALSE(machine->others().replace(in(name), {"mine"}));
    }

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_EQ(machine->names().size(), others.size() + 1);
}

TEST_F(FilesContract, AFolderUnderATemporaryNameStays) {
    machine->makeFolder(in(machine->temporaryName()));

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_EQ(machine->names().size(), 2U);
}

} // namespace
} // namespace tarvik
