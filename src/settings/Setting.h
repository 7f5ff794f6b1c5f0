#pragma once

#include "forms/frmMain.h"
#include "forms/frmOptions.h"
#include "journal/JournalEntry.h"
#include "state/mdlVar.h"
#include "types/LocaleData.h"

#include <array>
#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <variant>

namespace tarvik {

/// 0 or 1, a tick in the options dialog; 0 unless set.
struct FlagSetting {
    std::uint8_t State::*value;
    CheckBox FrmOptions::*box;
};

/// A unit of display; bytes unless set.
struct UnitSetting {
    TransferUnit State::*value;
    ComboBox FrmOptions::*list;
    /// Of the main window, where the unit stands behind these words.
    Label FrmMain::*label;
    const char* prefix;
};

/// The moment of the resets; the first of the list unless set.
struct CriterionSetting {
    enDateCalc State::*value;
    ComboBox FrmOptions::*list;
};

/// A number of bytes, in the locale's form in the file and in its field.
struct BytesSetting {
    Currency State::*value;
    TextBox FrmOptions::*field;
    /// What the field is set back to when a key leaves no number in it.
    Currency FrmOptions::*remembered;
    Long standard;
};

/// A whole number. One outside the range becomes the standard one, without a word.
struct NumberSetting {
    Long State::*value;
    TextBox FrmOptions::*field;
    Long FrmOptions::*remembered;
    Long standard;
    Long least = Long(-2'147'483'647) - 1;
    Long most = 2'147'483'647;

    Long within(Long number) const { return number < least || number > most ? standard : number; }
};

/// A day that the program notes itself, in the locale's form in the file.
struct DaySetting {
    Date State::*value;
};

/// What is kept of the user's choices: its key in the file, and by its kind its place in the state,
/// its control and what it is unless set.
struct Setting {
    const char* key;
    std::variant<FlagSetting, UnitSetting, CriterionSetting, BytesSetting, NumberSetting,
                 DaySetting>
        kind;

    /// Whether its value stands in that member of the state.
    template <class Value>
    bool isKeptIn(Value State::*member) const {
        const auto isTheOne = [member](const auto& known) {
            if constexpr (std::is_same_v<decltype(known.value), Value State::*>) {
                return known.value == member;
            } else {
                return false;
            }
        };
        return std::visit(isTheOne, kind);
    }
};

/// Sets what the state keeps as a number of one byte: a flag, a unit or a criterion.
template <class Value>
void setSmall(Value& place, std::uint8_t number) {
    static_assert(sizeof(Value) == sizeof number);
    place = static_cast<Value>(number);
}

/// That number.
template <class Value>
std::uint8_t smallOf(Value value) {
    static_assert(sizeof(Value) == sizeof(std::uint8_t));
    return static_cast<std::uint8_t>(value);
}

/// One function for each kind, for std::visit; one that takes any stands for those without their
/// own.
template <class... Kinds>
struct ByKind : Kinds... {
    using Kinds::operator()...;
};
template <class... Kinds>
ByKind(Kinds...) -> ByKind<Kinds...>;

/// As many as an entry of the journal holds.
using Settings = std::array<Setting, JournalEntry::settingCount>;

/// All settings, in the order in which a load reads them and the dialog applies them.
const Settings& settings();
/// The same in other orders.
using SettingsInOrder = std::array<const Setting*, std::tuple_size_v<Settings>>;
/// In which they are written to the file.
const SettingsInOrder& settingsAsWritten();
/// In which the dialog shows them when it is opened.
const SettingsInOrder& settingsAsShown();

/// Makes each of them what it is unless set.
void setDefaults(State& state, const LocaleData& locale);
/// The value as it stands in the file.
std::string textOf(const Setting& setting, const State& state, const LocaleData& locale);
/// Shows the value in its control; what has none is not shown.
void show(const Setting& setting, const State& state, FrmOptions& options);

} // namespace tarvik
