#include "Later.h"
#include "Win32FaceTest.h"
#include "support/FormOn.h"

#include <string>
#include <vector>

namespace tarvik {
namespace {

/// Fields to type into and labels of both kinds.
class FieldForm : public Form {
public:
    FieldForm() : Form("frmFields", "Fields") {
        setLayout(column({
            item(lblWrapped).wide(20).tall(4),
            item(lblPlain),
            item(txtField).wide(12),
            item(txtFixed).wide(12),
            item(cmdOther),
        }));
        setInitialFocus(cmdOther);
    }

    Label lblWrapped{*this, "lblWrapped", {.caption = "HH\r\nHH", .wrapped = true}};
    Label lblPlain{*this, "lblPlain", {.caption = "HH"}};
    TextBox txtField{*this, "txtField", {.text = "first"}};
    TextBox txtFixed{*this, "txtFixed", {.text = "first", .readOnly = true}};
    CommandButton cmdOther{*this, "cmdOther", {.caption = "Other"}};
};

/// What is selected in an edit, from and up to.
struct Selected {
    int from = 0;
    int to = 0;

    friend bool operator==(const Selected&, const Selected&) = default;
};

Selected selectedIn(HWND edit) {
    DWORD from = 0;
    DWORD to = 0;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    return {.from = static_cast<int>(from), .to = static_cast<int>(to)};
}

void selectIn(HWND edit, Selected part) {
    SendMessageA(edit, EM_SETSEL, static_cast<WPARAM>(part.from), part.to);
}

/// A form with fields, of which a test writes down what they raise.
class TextFieldTest : public Win32FaceTest {
protected:
    TextFieldTest() {
        fields.setVisible(true);
        settle();
    }
    ~TextFieldTest() override {
        fields.unload();
        settle();
    }

    /// Shows the form; the focus is where nothing is typed.
    void showFields() {
        fields.setVisible(true);
        ASSERT_TRUE(spinUntil([this] { return GetFocus() == windowOf(fields.cmdOther); }));
    }

    /// Shows the form; the focus is in that field.
    void showWithFocusIn(const TextBox& textBox) {
        ASSERT_NO_FATAL_FAILURE(showFields());
        SetFocus(windowOf(textBox));
        ASSERT_EQ(GetFocus(), windowOf(textBox));
    }

    /// Writes down each event of the field with the text it has then.
    void writeDownEvents() {
        TextBox& field = fields.txtField;
        const auto note = [this](const char* event) {
            seen.push_back(std::string(event) + " " + fields.txtField.text());
        };
        field.GotFocus.connect([note] { note("GotFocus"); });
        field.KeyDown.connect([note] { note("KeyDown"); });
        field.Change.connect([note] { note("Change"); });
        field.KeyUp.connect([note] { note("KeyUp"); });
    }

    /// A letter is typed into the edit: down, in, and up again.
    static void type(HWND edit, char letter) {
        constexpr LPARAM comesUp = 0xC0000001;
        const auto key = static_cast<WPARAM>(letter - 'a' + 'A');
        SendMessageA(edit, WM_KEYDOWN, key, 1);
        SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(letter), 1);
        SendMessageA(edit, WM_KEYUP, key, comesUp);
    }

    FormOn<FieldForm> fields{machine.platform.desktop};
    std::vector<std::string> seen;
};

TEST_F(TextFieldTest, NothingIsPastedWhereNothingCanBeWritten) {
    ASSERT_NO_FATAL_FAILURE(showWithFocusIn(fields.txtFixed));
    copyText(" 9");

    SendMessageA(windowOf(fields.txtFixed), WM_PASTE, 0, 0);

    EXPECT_EQ(textOf(windowOf(fields.txtFixed)), "first");
}

TEST_F(TextFieldTest, LeavingAFieldIsNotToldAsComing) {
    ASSERT_NO_FATAL_FAILURE(showWithFocusIn(fields.txtField));
    writeDownEvents();

    SetFocus(windowOf(fields.txtFixed));

    EXPECT_TRUE(seen.empty());
}

TEST_F(TextFieldTest, ComingToAWindowThatWasHiddenIsComingToItsField) {
    ASSERT_NO_FATAL_FAILURE(showWithFocusIn(fields.txtField));
    writeDownEvents();

    fields.setVisible(false);
    settle();
    fields.setVisible(true);
    ASSERT_TRUE(spinUntil([this] { return GetFocus() == windowOf(fields.txtField); }));

    EXPECT_EQ(seen, std::vector<std::string>{"GotFocus first"});
}

TEST_F(TextFieldTest, AKeyReachesTheFieldAfterTheBoxThatItBroughtUp) {
    ASSERT_NO_FATAL_FAILURE(showWithFocusIn(fields.txtField));
    selectIn(windowOf(fields.txtField), {5, 5});
    fields.txtField.KeyDown.connect([this] { desktop.messageBox({.text = "!", .caption = "T"}); });
    int boxes = 0;
    const Later answer([&] {
        const OpenBox open = openBox(GetCurrentProcessId());
        boxes += open.window != nullptr && open.press(MsgBoxAnswer::Ok) ? 1 : 0;
        return false;
    });

    press('3');
    press('0');

    EXPECT_EQ(textOf(windowOf(fields.txtField)), "first30");
    EXPECT_EQ(fields.txtField.text(), "first30");
    EXPECT_GE(boxes, 2);
}

TEST_F(TextFieldTest, AKeyThatRemovesALetterIsToldWhileTheLetterIsThere) {
    writeDownEvents();

    SendMessageA(windowOf(fields.txtField), WM_KEYDOWN, VK_DELETE, 1);

    EXPECT_EQ(seen, (std::vector<std::string>{"KeyDown first", "Change irst"}));
}

TEST_F(TextFieldTest, TypingGoesOnBehindATextThatTheProgramPutIn) {
    ASSERT_NO_FATAL_FAILURE(showWithFocusIn(fields.txtField));

    fields.txtField.setText("second");

    EXPECT_EQ(selectedIn(windowOf(fields.txtField)), (Selected{6, 6}));
}

TEST_F(TextFieldTest, AHandlerThatPutsAnotherTextInLetsTypingGoOnBehindIt) {
    fields.txtField.KeyUp.connect([this] { fields.txtField.setText("back"); });
    ASSERT_NO_FATAL_FAILURE(showWithFocusIn(fields.txtField));

    type(windowOf(fields.txtField), 'x');

    EXPECT_EQ(textOf(windowOf(fields.txtField)), "back");
    EXPECT_EQ(selectedIn(windowOf(fields.txtField)), (Selected{4, 4}));
}

TEST_F(TextFieldTest, TypingWithinTheTextGoesOnThere) {
    ASSERT_NO_FATAL_FAILURE(showWithFocusIn(fields.txtField));
    selectIn(windowOf(fields.txtField), {2, 2});

    type(windowOf(fields.txtField), 'x');

    EXPECT_EQ(textOf(windowOf(fields.txtField)), "fixrst");
    EXPECT_EQ(selectedIn(windowOf(fields.txtField)), (Selected{3, 3}));
}

TEST_F(TextFieldTest, ATextPutIntoAFieldWithoutTheFocusIsSeenFromItsBeginning) {
    ASSERT_NO_FATAL_FAILURE(showFields());

    fields.txtField.setText("second");

    EXPECT_EQ(selectedIn(windowOf(fields.txtField)), (Selected{0, 0}));
}

TEST_F(TextFieldTest, ATextPutIntoAFieldThatTakesNoTypingIsSeenFromItsBeginning) {
    ASSERT_NO_FATAL_FAILURE(showWithFocusIn(fields.txtFixed));

    fields.txtFixed.setText("second");

    EXPECT_EQ(selectedIn(windowOf(fields.txtFixed)), (Selected{0, 0}));
}

TEST_F(TextFieldTest, WhileACallBlocksAFieldTellsNothing) {
    writeDownEvents();
    const HWND field = windowOf(fields.txtField);

    desktop.runBlocking([field] {
        SendMessageA(field, WM_SETFOCUS, 0, 0);
        type(field, 'x');
    });

    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(textOf(field), "first");
}

TEST_F(TextFieldTest, OnlyALabelOfOneLineStandsInTheMiddleOfItsHeight) {
    const auto inTheMiddle = [this](const Label& label) {
        return (GetWindowLongPtrA(windowOf(label), GWL_STYLE) & SS_CENTERIMAGE) != 0;
    };

    EXPECT_TRUE(inTheMiddle(fields.lblPlain));
    EXPECT_FALSE(inTheMiddle(fields.lblWrapped));
}

} // namespace
} // namespace tarvik
