#pragma once

#include "ports/Clock.h"
#include "ports/CommonDialogs.h"
#include "ports/InternetState.h"
#include "ports/Locale.h"
#include "ports/NotificationArea.h"
#include "ports/Program.h"
#include "ports/SingleInstance.h"
#include "ports/Sockets.h"
#include "ports/SystemErrorText.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// A wall clock that stands still until the test moves it, or moves by itself at each reading.
class ScriptedClock : public Clock {
public:
    Date now = Date::fromCivil({2026, 11, 16, 8, 15, 22});
    /// Seconds that pass at each reading, after it.
    int secondsPerReading = 0;

    /// What nobody sets: goes on with `advanceSeconds` alone.
    std::uint64_t steady = 1'000'000;
    /// Goes on with `advanceSeconds` as well, milliseconds.
    std::int64_t universal = 1'794'816'922'000;
    /// Minutes ahead of universal time, by the moment; without one, as far as `now` is.
    std::function<int(std::int64_t universal)> zone;

    void set(const CivilTime& civil) { now = Date::fromCivil(civil); }
    void advanceSeconds(double seconds) {
        now = Date(now.serial() + seconds / 86400.0);
        steady += seconds > 0 ? static_cast<std::uint64_t>(seconds * 1000) : 0;
        universal += static_cast<std::int64_t>(seconds * 1000);
    }

    Date currentDate() override { return read().dateOnly(); }
    Date currentTime() override { return read().timeOnly(); }
    std::uint64_t steadyMilliseconds() override { return steady; }
    std::int64_t universalMilliseconds() override { return universal; }
    int minutesAhead(std::int64_t moment) override;

private:
    Date read() {
        const Date result = now;
        advanceSeconds(secondsPerReading);
        return result;
    }
};

class ScriptedLocale : public Locale {
public:
    LocaleData conventions;
    const LocaleData& data() override { return conventions; }
};

/// Day.month.year, 24 hours, decimal comma.
LocaleData germanLocale();
/// Month/day/year, 12 hours with AM and PM, decimal point.
LocaleData americanLocale();
/// Day/month/year, 24 hours, decimal point.
LocaleData britishLocale();
/// Year-month-day, 24 hours, decimal comma, a no-break space between thousands.
LocaleData swedishLocale();
/// Day/month/year, 24 hours, decimal comma, a narrow no-break space between thousands.
LocaleData frenchLocale();
/// Day.month.year, 24 hours, decimal point, an apostrophe that is not ASCII between thousands.
LocaleData swissLocale();
/// Day.month.year with dots in the time too, decimal comma.
LocaleData finnishLocale();
/// Names of months, words for the half days that are not ASCII, other letters between the numbers.
LocaleData japaneseLocale();

class ScriptedProgram : public Program {
public:
    std::string folderPath = "C:\\Prog";
    char separator = '\\';
    std::string arguments;

    /// A program that was started, with the variables that it was given.
    struct Launch {
        std::string path;
        std::vector<std::pair<std::string, std::string>> variables;
    };
    /// What was started, the oldest first.
    std::vector<Launch> launches;
    /// Nothing can be started: the process has other rights than its user, or there is no room.
    bool launchFails = false;

    std::string folder() override { return folderPath; }
    char pathSeparator() override { return separator; }
    std::string commandLine() override { return arguments; }
    bool launch(const std::string& path,
                const std::vector<std::pair<std::string, std::string>>& variables) override;
};

class ScriptedInstances : public SingleInstance {
public:
    using Names = std::multiset<std::string>;

    /// The next handle; 0 when nothing can be held, with the error that tells why.
    std::int32_t handle = 41;
    /// What is told whoever holds the name, unless it is 0: 183 for another program that has it.
    std::uint32_t error = 0;
    /// What is held on the machine; another program of the same machine is given the same.
    std::shared_ptr<Names> held = std::make_shared<Names>();
    std::vector<std::string> namesAsked;
    std::vector<std::int32_t> handlesClosed;

    std::int32_t CreateMutexA(const std::string& name, std::uint32_t* lastError) override;
    bool CloseHandle(std::int32_t closed) override;
    /// The program ends, in whatever way: the system closes what it holds.
    void endProgram();

private:
    std::map<std::int32_t, std::string> names_; ///< under their handles
};

class ScriptedNotificationArea : public NotificationArea {
public:
    struct Request {
        std::uint32_t request;
        NOTIFYICONDATAA data;
    };

    bool present = true;
    /// The desktop has no notification area but shows notes.
    bool onlyNotes = false;
    std::uint32_t version = 5;
    std::vector<Request> requests;
    std::vector<std::uint32_t> foregroundWindows;
    /// The notes that were shown and can be answered, the oldest first.
    std::vector<DesktopNote> notes;
    /// False where the desktop's notes have no buttons, whatever is asked for.
    bool notesHaveButtons = true;

    bool Shell_NotifyIconA(std::uint32_t request, NOTIFYICONDATAA* data) override;
    bool tell(const DesktopNote& note, std::function<void(int)> answered) override;
    /// The user answers the newest note, as `tell` says; false where that is not there any more,
    /// was answered before or has no such button.
    bool answer(int how);
    /// The newest note goes away without an answer: its time is over, or the user closes it.
    void closeNote() { answered_ = {}; }
    bool SetForegroundWindow(std::uint32_t window) override {
        foregroundWindows.push_back(window);
        return true;
    }
    std::uint32_t GetVersion() override { return version; }

private:
    std::function<void(int)> answered_; ///< empty where no answer is waited for
};

/// File dialogs that are left with a name, or not.
class ScriptedDialogs : public CommonDialogs {
public:
    /// What the user chooses; empty cancels. Several files are their folder and their names, with
    /// NULs between them.
    std::string chosen;
    /// What the user chooses where the dialog for saving comes again with that name; empty cancels.
    std::string chosenAgain;
    /// The name without folder that the dialog tells beside it.
    std::string chosenTitle;
    /// The filter that the user changes to; 0 leaves it.
    std::uint32_t chosenFilter = 0;
    std::uint32_t extendedError = 0;
    /// The window that the dialog stands over; without a size there is none.
    ScreenRect owner{200, 300, 400, 250};

    /// The record that a dialog was opened with, its texts copied.
    OPENFILENAMEA seen{};
    /// It was the dialog for saving.
    bool saving = false;
    std::string filter;
    std::string title;
    std::string initialFolder;
    std::string defaultExtension;
    /// The whole buffer of the file name, as it was given.
    std::string buffer;
    /// Where the program put a dialog of 100 by 50 over the owner.
    ScreenRect placed;

    bool GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override;
    bool GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override;
    std::uint32_t CommDlgExtendedError() override { return extendedError; }
};

class ScriptedInternetState : public InternetState {
public:
    bool connected = false;
    std::uint32_t flagWord = 0;
    std::string name;

    bool InternetGetConnectedState(std::uint32_t* flags, std::uint32_t reserved) override;
    bool InternetGetConnectedStateExA(std::uint32_t* flags, char* buffer, std::uint32_t size,
                                      std::uint32_t reserved) override;
};

class ScriptedSockets : public Sockets {
public:
    int startupError = 0;
    int cleanupError = 0;
    int lastError = 0;
    WSADATA started{0x0101, 0x0101, 32};
    std::string hostName = "testhost";
    bool hostNameFails = false;
    bool hostFound = true;
    HOSTENT host;

    int WSAStartup(std::uint16_t version, WSADATA* data) override;
    int WSACleanup() override;
    int WSAGetLastError() override { return lastError; }
    int gethostname(char* name, int size) override;
    /// Only the machine itself is known.
    bool gethostbyname(const char* name, HOSTENT* found) override;

private:
    int starts_ = 0;
};

class ScriptedErrorTexts : public SystemErrorText {
public:
    std::map<std::uint32_t, std::string> texts{{5, "Access is denied.\r\n"}};

    std::uint32_t FormatMessageA(std::uint32_t flags, const void* source, std::uint32_t code,
                                 std::uint32_t language, char* buffer, std::uint32_t size,
                                 const void* arguments) override;
};

} // namespace tarvik
