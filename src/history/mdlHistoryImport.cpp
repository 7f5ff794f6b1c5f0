#include "history/mdlHistoryImport.h"

#include "forms/Forms.h"
#include "history/mdlHistoryChart.h"
#include "history/mdlHistoryLog.h"
#include "history/mdlHistoryWork.h"
#include "history/mdlIPAddresses.h"
#include "history/mdlListViewEx.h"
#include "ports/Files.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLog.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tarvik {

namespace {

/// How many records to make room for, where the file tells of so many: a damaged one may tell of
/// any number, but no record takes less of it than its shortest line.
std::size_t roomFor(std::size_t count, const std::string& file) {
    constexpr std::size_t alwaysGranted = 100'000;
    constexpr std::size_t shortestLine = std::string_view("DateStamp1=|\n").size();
    const std::optional<FileStamp> stamp = platform().files.stamp(file);
    const std::uint64_t mayHold = stamp ? stamp->size / shortestLine : 0;
    return static_cast<std::size_t>(
        std::min<std::uint64_t>(count, std::max<std::uint64_t>(mayHold, alwaysGranted)));
}

/// Reads the records of the selected file, one after the other.
class LogReader {
public:
    explicit LogReader(Long count)
        : count_(static_cast<std::size_t>(count.value())), file_(state().IniFileName),
          room_(roomFor(count_, file_)) {
        log_.sent.reserve(room_);
        log_.rcvd.reserve(room_);
        log_.duration.reserve(room_);
        log_.address.reserve(room_);
        log_.date.reserve(room_, room_ * std::string_view("31.12.2026").size());
        log_.time.reserve(room_, room_ * std::string_view("23:59:59").size());
    }

    /// However the reading ended, nothing of the file is kept.
    ~LogReader() { platform().profile.release(); }
    LogReader(const LogReader&) = delete;
    LogReader& operator=(const LogReader&) = delete;

    /// False when the user has stopped it.
    bool readAll() {
        HistoryWork work(static_cast<std::int32_t>(count_));
        bool goesOn = true;
        while (read_ < count_ && goesOn) {
            readSome();
            goesOn = work.goOn(static_cast<std::int32_t>(read_));
            // What was handled meanwhile may have turned to the program's own file.
            state().IniFileName = file_;
        }
        return goesOn;
    }

    Long recordsRead() const { return static_cast<std::int32_t>(read_); }
    /// Records that were not read hold nothing.
    ImportedHistory takeLog() {
        const std::size_t size = std::max(room_, read_);
        log_.sent.resize(size);
        log_.rcvd.resize(size);
        log_.duration.resize(size);
        log_.address.resize(size, ImportedHistory::noAddress);
        while (log_.time.size() < size) {
            log_.date.add({});
            log_.time.add({});
        }
        return std::move(log_);
    }

private:
    /// As many as are read from one state of the file, while nothing else happens.
    void readSome() {
        const ProfileReading reading(platform().profile, file_);
        const std::size_t end = std::min(read_ + HistoryWork::stride, count_);
        for (; read_ < end; ++read_) {
            readRecord(static_cast<std::int32_t>(read_ + 1));
        }
    }

    void readRecord(Long number) {
        const std::string stamp = GetDate(number);
        const Amount record = recordOf(stamp);
        log_.sent.push_back(record.sent);
        log_.rcvd.push_back(record.rcvd);
        log_.duration.push_back(record.duration);
        const std::string address =
            stamp.empty() ? std::string() : GetStringFromINI(stamp, keys::ipAddress);
        log_.address.push_back(address.empty() ? ImportedHistory::noAddress
                                               : log_.addresses.add(address));
        const std::size_t bar = stamp.find('|');
        if (bar == std::string::npos) {
            raise(ErrorNumber::InvalidProcedureCall);
        }
        log_.date.add(std::string_view(stamp).substr(0, bar));
        log_.time.add(std::string_view(stamp).substr(bar + 1));
        log_.addressCount = log_.addresses.size();
    }

    const std::size_t count_;
    const std::string file_;
    const std::size_t room_;
    std::size_t read_ = 0;
    ImportedHistory log_;
};

void takeOver(LogReader& reader) {
    ++forms().frmHistory.data.imports;
    forms().frmHistory.data.log = reader.takeLog();
    ListRecords(reader.recordsRead());
}

} // namespace

bool ImportHistory(Long Count) {
    return guarded("ImportHistory", false, [&](bool& result) {
        LogReader reader(Count);
        try {
            if (!reader.readAll()) {
                return;
            }
        } catch (const RunTimeError&) {
            ClearDiagram();
            takeOver(reader);
            throw;
        }
        takeOver(reader);
        UpdateIPAddresses(false);
        forms().frmHistory.data.start = 1;
        forms().frmHistory.data.stop = Count;
        result = true;
    });
}

void ToggleControls(bool Enabled) {
    guarded("ToggleControls", [&] {
        FrmHistory& history = forms().frmHistory;
        for (Control* control : std::initializer_list<Control*>{
                 &history.cboChartType, &history.cboDataType, &history.cboTransferUnit,
                 &history.cboDataToShow, &history.chkShowXLines, &history.chkShowYLines,
                 &history.lvwCompleteLog, &history.cmdSetStart, &history.cmdSetStop,
                 &history.cmdExport, &history.txtCurrentStart, &history.txtCurrentStop,
                 &history.txtStatisticsIP, &history.cmdSortByIP, &history.cmdSortByTime}) {
            control->setEnabled(Enabled);
        }
        SetOptimalHeaderWidth(history.lvwCompleteLog, false);
    });
}

} // namespace tarvik
