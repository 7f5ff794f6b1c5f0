#include "history/mdlHistoryImport.h"

#include "history/mdlHistoryLog.h"
#include "history/mdlHistoryWork.h"
#include "history/mdlIPAddresses.h"
#include "history/mdlListViewEx.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlTools.h"
#include "startup/mdlVar.h"
#include "ui/Forms.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>

namespace tarvik {

namespace {

/// Reads the records of the selected file, one after the other.
class LogReader {
public:
    explicit LogReader(Long count)
        : count_(static_cast<std::size_t>(count.value())), file_(state().IniFileName) {
        log_.sent.resize(count_);
        log_.rcvd.resize(count_);
        log_.duration.resize(count_);
        log_.address.resize(count_, ImportedHistory::noAddress);
        log_.date.reserve(count_, count_ * std::string_view("31.12.2026").size());
        log_.time.reserve(count_, count_ * std::string_view("23:59:59").size());
    }

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
    /// Records that were not read have empty texts.
    ImportedHistory takeLog() {
        while (log_.time.size() < count_) {
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
            readRecord(read_);
        }
    }

    void readRecord(std::size_t place) {
        const Long number = static_cast<std::int32_t>(place + 1);
        log_.sent[place] = GetBytesSent(number);
        log_.rcvd[place] = GetBytesRcvd(number);
        log_.duration[place] = GetDuration(number);
        const std::string address = GetIPAddress(number);
        if (!address.empty()) {
            log_.address[place] = log_.addresses.add(address);
        }
        const std::string stamp = GetDate(number);
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
    std::size_t read_ = 0;
    ImportedHistory log_;
};

void takeOver(LogReader& reader) {
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
