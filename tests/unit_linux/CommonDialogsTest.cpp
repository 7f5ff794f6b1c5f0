#include "FileDialogTest.h"

#include <QAbstractItemView>
#include <QLocale>
#include <QStyledItemDelegate>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvik {
namespace {

constexpr std::uint32_t overwritePrompt = 0x2;
constexpr std::uint32_t allowMultiselect = 0x200;
constexpr std::uint32_t extensionDifferent = 0x400;
constexpr std::uint32_t fileMustExist = 0x1000;

const char* const filters = "Text files\0*.txt;*.log\0All files\0*.*\0";

class CommonDialogsTest : public FileDialogTest {
protected:
    static QAbstractItemView& listOf(const QFileDialog& dialog) {
        return *dialog.findChild<QAbstractItemView*>(QStringLiteral("listView"));
    }
    static int rowsOf(const QAbstractItemView& list) {
        return list.model()->rowCount(list.rootIndex());
    }
    static QModelIndex rowOf(const QAbstractItemView& list, int row) {
        return list.model()->index(row, 0, list.rootIndex());
    }
};

TEST_F(CommonDialogsTest, ATitleBeyondAsciiIsShown) {
    data.lpstrTitle = "Export \u00fc";
    QString shown;

    open([&](const QFileDialog& dialog) { shown = dialog.windowTitle(); });

    EXPECT_EQ(shown, QStringLiteral("Export \u00fc"));
}

TEST_F(CommonDialogsTest, TheDialogOpensInTheInitialFolder) {
    QString shown;

    open([&](const QFileDialog& dialog) { shown = dialog.directory().absolutePath(); });

    EXPECT_EQ(shown.toStdString(), folder.path());
}

TEST_F(CommonDialogsTest, TheProposedNameStandsInTheDialog) {
    file.replace(0, 8, "data.csv");
    QString shown;

    save([&](const QFileDialog& dialog) { shown = nameOf(dialog).text(); });

    EXPECT_EQ(shown, QStringLiteral("data.csv"));
}

TEST_F(CommonDialogsTest, TheFiltersAreWrittenAsThisDesktopWantsThem) {
    data.lpstrFilter = filters;
    QStringList shown;

    open([&](const QFileDialog& dialog) { shown = dialog.nameFilters(); });

    EXPECT_EQ(shown, QStringList({QStringLiteral("Text files (*.txt *.log)"),
                                  QStringLiteral("All files (*)")}));
}

TEST_F(CommonDialogsTest, TheListOfFiltersShowsTheDescriptionsAlone) {
    data.lpstrFilter = filters;
    QStringList shown;

    open([&](const QFileDialog& dialog) {
        shown = {typeOf(dialog).itemText(0), typeOf(dialog).itemText(1)};
    });

    EXPECT_EQ(shown, QStringList({QStringLiteral("Text files"), QStringLiteral("All files")}));
}

TEST_F(CommonDialogsTest, TheFilterOfTheIndexIsChosenFirst) {
    data.lpstrFilter = filters;
    data.nFilterIndex = 2;
    QString shown;

    open([&](const QFileDialog& dialog) { shown = typeOf(dialog).currentText(); });

    EXPECT_EQ(shown, QStringLiteral("All files"));
}

struct ListCase {
    std::uint32_t filter;
    std::vector<std::string> names;
};

class ListTest : public CommonDialogsTest, public testing::WithParamInterface<ListCase> {};

TEST_P(ListTest, TheFilterDecidesWhatIsListed) {
    for (const char* name : {"a.txt", "b.log", "c.csv", "plain"}) {
        makeFile(name);
    }
    data.lpstrFilter = filters;
    data.nFilterIndex = GetParam().filter;
    bool listed = false;

    open([&](const QFileDialog& dialog) {
        const QAbstractItemView& list = listOf(dialog);
        listed = spinUntil([&] {
            std::vector<std::string> names;
            for (int i = 0; i < rowsOf(list); ++i) {
                names.push_back(rowOf(list, i).data().toString().toStdString());
            }
            return names == GetParam().names;
        });
    });

    EXPECT_TRUE(listed);
}

INSTANTIATE_TEST_SUITE_P(All, ListTest,
                         testing::Values(ListCase{1, {"a.txt", "b.log"}},
                                         ListCase{2, {"a.txt", "b.log", "c.csv", "plain"}}));

TEST_F(CommonDialogsTest, TheIndexOfTheChosenFilterComesBack) {
    const std::string path = makeFile("a.txt");
    data.lpstrFilter = filters;
    data.nFilterIndex = 1;

    const bool chosen = open([&](QFileDialog& dialog) {
        typeOf(dialog).setCurrentIndex(1);
        choose(path)(dialog);
    });

    EXPECT_TRUE(chosen);
    EXPECT_EQ(data.nFilterIndex, 2U);
}

TEST_F(CommonDialogsTest, AFilterThatIsLeftAsItWasKeepsItsIndex) {
    data.lpstrFilter = filters;
    data.nFilterIndex = 2;

    EXPECT_TRUE(open(choose(makeFile("a.txt"))));

    EXPECT_EQ(data.nFilterIndex, 2U);
}

TEST_F(CommonDialogsTest, TheChosenFileFillsTheRecord) {
    const std::string path = makeFile("data.csv");

    EXPECT_TRUE(open(choose("data.csv")));

    EXPECT_EQ(dialogs.CommDlgExtendedError(), 0U);
    EXPECT_STREQ(file.c_str(), path.c_str());
    EXPECT_STREQ(title.c_str(), "data.csv");
    EXPECT_EQ(data.nFileOffset, folder.path().size() + 1);
    EXPECT_EQ(data.nFileExtension, folder.path().size() + 6);
}

TEST_F(CommonDialogsTest, ADotInAFolderBeginsNoExtension) {
    makeFile("a.b/plain");

    EXPECT_TRUE(open(choose("a.b/plain")));

    EXPECT_STREQ(title.c_str(), "plain");
    EXPECT_EQ(data.nFileExtension, 0);
}

TEST_F(CommonDialogsTest, ANameBeyondAsciiComesAsItsBytes) {
    const std::string path = makeFile("Daten f\u00fcr M\u00e4rz.txt");

    EXPECT_TRUE(open(choose("Daten f\u00fcr M\u00e4rz.txt")));

    EXPECT_STREQ(file.c_str(), path.c_str());
    EXPECT_STREQ(title.c_str(), "Daten f\u00fcr M\u00e4rz.txt");
}

TEST_F(CommonDialogsTest, ATitleThatDoesNotFitIsCut) {
    makeFile("data.csv");
    data.nMaxFileTitle = 5;

    EXPECT_TRUE(open(choose("data.csv")));

    EXPECT_STREQ(title.c_str(), "data");
}

TEST_F(CommonDialogsTest, AFileThatMustExistIsRefusedWhereThereIsNone) {
    data.Flags = fileMustExist;
    answerWith(QMessageBox::Ok);

    EXPECT_FALSE(open(choose("missing.txt")));

    EXPECT_EQ(asked, 1);
    EXPECT_STREQ(file.c_str(), "");
}

TEST_F(CommonDialogsTest, AFileToOpenNeedNotExistOtherwise) {
    EXPECT_TRUE(open(choose("missing.txt")));

    EXPECT_EQ(std::string(file.c_str()), folder.path() + "/missing.txt");
}

TEST_F(CommonDialogsTest, ANameWithoutAnExtensionIsSavedWithTheDefaultOne) {
    data.lpstrDefExt = "csv";

    EXPECT_TRUE(save(choose("data")));

    EXPECT_EQ(std::string(file.c_str()), folder.path() + "/data.csv");
}

struct ExtensionCase {
    const char* standard;
    const char* name;
    std::uint32_t flag;
};

class ExtensionTest : public CommonDialogsTest,
                      public testing::WithParamInterface<ExtensionCase> {};

TEST_P(ExtensionTest, AnExtensionOtherThanTheDefaultOneIsTold) {
    data.lpstrDefExt = GetParam().standard;

    EXPECT_TRUE(save(choose(GetParam().name)));

    EXPECT_EQ(data.Flags & extensionDifferent, GetParam().flag);
}

INSTANTIATE_TEST_SUITE_P(All, ExtensionTest,
                         testing::Values(ExtensionCase{"csv", "data.txt", extensionDifferent},
                                         ExtensionCase{"csv", "data.csv", 0},
                                         ExtensionCase{"csv", "data", 0},
                                         ExtensionCase{nullptr, "data.txt", 0}));

TEST_F(CommonDialogsTest, AfterNoTheDialogIsStillOpen) {
    makeFile("data.csv");
    data.Flags = overwritePrompt;
    answerWith(QMessageBox::No);
    bool stillOpen = false;

    save([&](QFileDialog& dialog) {
        choose("data.csv")(dialog);
        stillOpen = dialog.isVisible();
    });

    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(stillOpen);
}

/// The text of the question before overwriting a file of that name, and in what format it stands.
class OverwriteTest : public CommonDialogsTest {
protected:
    bool overwrite(const std::string& name) {
        const std::string path = makeFile(name);
        data.Flags = overwritePrompt;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [this] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                format = box->textFormat();
                question = box->text();
                caption = box->windowTitle();
                box->button(QMessageBox::Yes)->click();
            }
        });
        look.start(5);
        return save(choose(path)) && file.substr(0, file.find('\0')) == path;
    }

    Qt::TextFormat format = Qt::AutoText;
    QString question;
    QString caption;
};

TEST_F(OverwriteTest, ANameThatLooksLikeMarkupIsAskedForAsItStands) {
    const bool saved = overwrite("<h1>Big<u>name.csv");

    EXPECT_TRUE(saved);
    EXPECT_EQ(format, Qt::PlainText);
    EXPECT_TRUE(question.startsWith(QStringLiteral("<h1>Big<u>name.csv already exists")))
        << question.toStdString();
}

TEST_F(OverwriteTest, LineBreaksInANameAreToldAndBreakNoLine) {
    const bool saved = overwrite("s\n\r\u2028\u200b.exe");

    EXPECT_TRUE(saved);
    EXPECT_EQ(question.toStdString(), "s[U+000A][U+000D][U+2028][U+200B].exe already exists.\n"
                                      "Do you want to replace it?");
}

TEST_F(OverwriteTest, TheQuestionHasTheCaptionOfAllBoxes) {
    overwrite("data.csv");

    EXPECT_EQ(caption, QStringLiteral("Velmars Tarvik."));
}

TEST_F(CommonDialogsTest, TheListTellsOfATurnOfDirectionInAName) {
    makeFile("a\u202evsc.exe");
    QString listed;

    open([&](const QFileDialog& dialog) {
        const QAbstractItemView& list = listOf(dialog);
        ASSERT_TRUE(spinUntil([&] { return rowsOf(list) == 1; }));
        const QModelIndex index = rowOf(list, 0);
        const auto* delegate = qobject_cast<QStyledItemDelegate*>(list.itemDelegateForIndex(index));
        ASSERT_NE(delegate, nullptr);
        listed = delegate->displayText(index.data(), QLocale::c());
    });

    EXPECT_EQ(listed, QStringLiteral("a[U+202E]vsc.exe"));
}

TEST_F(CommonDialogsTest, SeveralFilesComeAsFolderAndNames) {
    makeFile("a.txt");
    makeFile("b.txt");
    data.Flags = allowMultiselect;

    EXPECT_TRUE(open(choose("\"a.txt\" \"b.txt\"")));

    const std::string expected = folder.path() + '\0' + std::string("a.txt\0b.txt\0", 12) + '\0';
    EXPECT_EQ(file.substr(0, expected.size()), expected);
    EXPECT_EQ(data.nFileOffset, folder.path().size() + 1);
}

TEST_F(CommonDialogsTest, OneOfSeveralPossibleFilesComesAsItsPath) {
    const std::string path = makeFile("a.txt");
    data.Flags = allowMultiselect;

    EXPECT_TRUE(open(choose("\"a.txt\"")));

    EXPECT_EQ(file.substr(0, path.size() + 2), path + '\0' + '\0');
    EXPECT_STREQ(title.c_str(), "a.txt");
}

TEST_F(CommonDialogsTest, ASelectionLargerThanTheBufferTellsTheNeededSize) {
    const std::string name(250, 'n');
    const std::size_t needed = makeFile(name).size() + 2;
    data.nMaxFile = 16;

    EXPECT_FALSE(open(choose(name)));

    EXPECT_EQ(dialogs.CommDlgExtendedError(), 0x3003U);
    EXPECT_EQ(static_cast<unsigned char>(file[0]) + 256U * static_cast<unsigned char>(file[1]),
              needed);
    EXPECT_EQ(file.substr(2, 14), std::string(14, '\0'));
}

TEST_F(CommonDialogsTest, ABufferOfTheNeededSizeIsLargeEnough) {
    const std::string path = makeFile("data.csv");
    data.nMaxFile = static_cast<std::uint32_t>(path.size() + 2);

    EXPECT_TRUE(open(choose("data.csv")));

    EXPECT_STREQ(file.c_str(), path.c_str());
}

TEST_F(CommonDialogsTest, ABufferWithoutRoomForTheSizeStaysAsItIs) {
    makeFile("data.csv");
    file[0] = '\0';
    file[1] = 'x';
    data.nMaxFile = 1;

    EXPECT_FALSE(open(choose("data.csv")));

    EXPECT_EQ(dialogs.CommDlgExtendedError(), 0x3003U);
    EXPECT_EQ(file.substr(0, 2), std::string("\0x", 2));
}

TEST_F(CommonDialogsTest, TheNextDialogClearsTheError) {
    makeFile("data.csv");
    data.nMaxFile = 4;
    open(choose("data.csv"));
    ASSERT_EQ(dialogs.CommDlgExtendedError(), 0x3003U);
    file.assign(2048, '\0');

    open(cancel);

    EXPECT_EQ(dialogs.CommDlgExtendedError(), 0U);
}

} // namespace
} // namespace tarvik
