#include "history/HistoryTest.h"
#include "history/mdlHistoryImport.h"
#include "history/mdlHistoryLog.h"
#include "wiring/frmHistoryEvents.h"

#include <algorithm>
#include <functional>

namespace tarvik {
namespace {

/// A log that is long enough for its import and export to be shown and stopped.
class LongWorkTest : public HistoryTest {
protected:
    static constexpr int many = 5000;
    static constexpr const char* csvPath = "E:\\out.csv";

    LongWorkTest() { frmMain().cmdHistory.press(); }

    /// Acts each time that events are handled while work goes on.
    void meanwhile(std::function<void()> act) {
        machine.desktop.whileProcessing = [this, act] {
            if (window().prgWork.visible()) {
                ++rounds;
                act();
            }
        };
    }
    /// Acts once, when so many percent are done.
    void at(int percent, std::function<void()> act) {
        meanwhile([this, percent, act] {
            if (!acted && window().prgWork.value() >= percent) {
                acted = true;
                act();
            }
        });
    }

    /// The file of many records, which takes its time to be made.
    static const std::string& manyRecords() {
        static const std::string text = fileOf(numberedLog(many));
        return text;
    }
    void importMany() {
        setIni(manyRecords());
        import();
    }
    /// What an import of many records leaves behind, made faster.
    void holdMany() {
        ImportedHistory log;
        for (int number = 1; number <= many; ++number) {
            const Row fields = numberedRow(number);
            log.date.add(fields[1]);
            log.time.add(fields[2]);
            log.duration.emplace_back(number);
            log.sent.emplace_back(8000 + number);
            log.rcvd.emplace_back(9000 + number);
            log.address.push_back(log.addresses.add(fields[6]));
        }
        log.addressCount = log.addresses.size();
        data().log = std::move(log);
        ListRecords(many);
        data().imported = true;
        data().start = 1;
        data().stop = many;
        ToggleControls(true);
    }

    void exportTo(const std::string& path) {
        machine.dialogs.chosen = path;
        window().cmdExport.press();
    }
    void expectExported() { expectInformation("All records have been successfully exported."); }

    bool wasTold(const std::string& control) const {
        const Texts& changes = machine.desktop.changesTold;
        return std::count(changes.begin(), changes.end(), "frmHistory." + control) != 0;
    }

    /// Controls that the user could use now.
    Texts usableControls() {
        Texts names;
        for (const Control* control : window().controls()) {
            const bool used = control->kind() != ControlKind::Label &&
                              control->kind() != ControlKind::Frame &&
                              control->kind() != ControlKind::ProgressBar;
            if (used && control->enabled()) {
                names.push_back(control->name());
            }
        }
        return names;
    }

    bool acted = false;
    int rounds = 0;
};

TEST_F(LongWorkTest, ALongImportBringsEveryRecord) {
    importMany();

    ASSERT_EQ(window().lvwCompleteLog.rowCount(), many);
    for (int number = 1; number <= many; ++number) {
        ASSERT_EQ(row(number), numberedRow(number));
    }
    EXPECT_EQ(data().stop, Long(many));
    EXPECT_EQ(window().mscHistory.rowCount(), many);
}

TEST_F(LongWorkTest, ALongExportWritesEveryRecord) {
    importMany();
    std::string expected =
        "\"ID\";\"Date\";\"Time\";\"Duration\";\"Bytes sent\";\"Bytes rcvd\";\"IP address\"\r\n";
    for (int number = 1; number <= many; ++number) {
        const Row fields = numberedRow(number);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            expected += (i == 0 ? "" : ";") + fields[i];
        }
        expected += "\r\n";
    }
    expectExported();

    exportTo(csvPath);

    EXPECT_TRUE(machine.files.file(csvPath) == expected);
}

TEST_F(LongWorkTest, AShortImportShowsNothing) {
    meanwhile([] {});

    import(numberedLog(many - 1));

    EXPECT_EQ(rounds, 0);
    EXPECT_FALSE(wasTold("prgWork"));
    EXPECT_FALSE(wasTold("cmdStop"));
    EXPECT_FALSE(wasTold("cmdImport"));
}

TEST_F(LongWorkTest, AShortExportShowsNothing) {
    import(numberedLog(many - 1));
    machine.desktop.changesTold.clear();
    machine.desktop.eventRounds = 0;
    expectExported();

    exportTo(csvPath);

    EXPECT_EQ(machine.desktop.eventRounds, 0);
    EXPECT_EQ(machine.desktop.changesTold, Texts{});
}

enum class Work { Import, Export };

/// An import of many records over three earlier ones, or an export of many.
class EitherWorkTest : public LongWorkTest {
protected:
    void prepare(Work work) {
        if (work == Work::Import) {
            import(numberedLog(3));
        } else {
            holdMany();
        }
        select(2);
        setIni(manyRecords());
        machine.dialogs.chosen = csvPath;
        machine.desktop.boxesShown.clear();
        machine.files.replacements = 0;
    }

    /// The user orders it; how it ends is announced by the test.
    void begin(Work work) {
        if (work == Work::Import) {
            import();
        } else {
            window().cmdExport.press();
        }
    }
    void complete(Work work) {
        if (work == Work::Export) {
            expectExported();
        }
        begin(work);
    }
};

class ShownWorkTest : public EitherWorkTest, public testing::WithParamInterface<Work> {
protected:
    ShownWorkTest() { prepare(GetParam()); }
};

TEST_P(ShownWorkTest, ShowsItsProgressAndHowToStopIt) {
    bool stopSeen = true;
    meanwhile([&] { stopSeen = stopSeen && window().cmdStop.visible(); });

    complete(GetParam());

    EXPECT_GE(rounds, 3);
    EXPECT_TRUE(stopSeen);
    EXPECT_FALSE(window().prgWork.visible());
    EXPECT_FALSE(window().cmdStop.visible());
}

TEST_P(ShownWorkTest, ItsProgressGrowsUpToTheEnd) {
    std::vector<int> percents;
    meanwhile([&] { percents.push_back(window().prgWork.value()); });

    complete(GetParam());

    ASSERT_GE(percents.size(), 3U);
    EXPECT_GT(percents.front(), 0);
    EXPECT_LT(percents.front(), 50);
    EXPECT_EQ(percents.back(), 100);
    EXPECT_EQ(std::adjacent_find(percents.begin(), percents.end(), std::greater_equal<>()),
              percents.end());
    EXPECT_EQ(window().prgWork.value(), 0);
}

TEST_P(ShownWorkTest, TakesNoOtherOrderThanToStopOrToClose) {
    std::vector<Texts> usable;
    meanwhile([&] { usable.push_back(usableControls()); });

    complete(GetParam());

    ASSERT_FALSE(usable.empty());
    for (const Texts& each : usable) {
        EXPECT_EQ(each, (Texts{"cmdStop", "cmdCancel"}));
    }
}

TEST_P(ShownWorkTest, EnablesAfterwardsWhatWasEnabled) {
    const Texts before = enabledControls();

    complete(GetParam());

    EXPECT_EQ(enabledControls(), before);
}

TEST_P(ShownWorkTest, NeitherStartsASecondTimeNorLetsTheOtherStart) {
    machine.desktop.boxesShown.clear();
    machine.dialogs.title.clear();
    std::size_t boxes = 0;
    meanwhile([&] {
        machine.dialogs.title = "none";
        boxes = machine.desktop.boxesShown.size();
        cmdImport_Click();
        cmdExport_Click();
        window().cmdImport.press();
        window().cmdExport.press();
        boxes = machine.desktop.boxesShown.size() - boxes;
    });

    complete(GetParam());

    ASSERT_GT(rounds, 0);
    EXPECT_EQ(boxes, 0U);
    EXPECT_EQ(machine.dialogs.title, "none");
    EXPECT_EQ(window().lvwCompleteLog.rowCount(), many);
}

TEST_P(ShownWorkTest, IsNotStoppedByAnEarlierStop) {
    window().cmdStop.press();
    cmdStop_Click();

    complete(GetParam());

    EXPECT_EQ(window().lvwCompleteLog.rowCount(), many);
    EXPECT_EQ(machine.files.exists(csvPath), GetParam() == Work::Export);
}

INSTANTIATE_TEST_SUITE_P(Each, ShownWorkTest, testing::Values(Work::Import, Work::Export),
                         [](const auto& given) {
                             return given.param == Work::Import ? "Import" : "Export";
                         });

enum class Way { Stop, Cancel, CloseBox, CancelAndOpen, StopAndImport, Unload };

struct Stopping {
    const char* name;
    Way way;
    int percent;
    bool visible;
};

class StoppedWorkTest : public EitherWorkTest,
                        public testing::WithParamInterface<std::tuple<Work, Stopping>> {
protected:
    Work work() const { return std::get<0>(GetParam()); }
    const Stopping& stopping() const { return std::get<1>(GetParam()); }

    void beginAndStop() {
        at(stopping().percent, [this] { stop(); });
        begin(work());
        ASSERT_TRUE(acted);
        machine.desktop.whileProcessing = {};
    }

private:
    void stop() {
        switch (stopping().way) {
        case Way::Stop:
            return window().cmdStop.press();
        case Way::Cancel:
            return window().cmdCancel.press();
        case Way::CloseBox:
            window().unload(UnloadMode::FormControlMenu);
            return;
        case Way::CancelAndOpen:
            window().cmdCancel.press();
            return frmMain().cmdHistory.press();
        case Way::StopAndImport:
            window().cmdStop.press();
            return cmdImport_Click();
        case Way::Unload:
            window().unload();
            return;
        }
    }
};

TEST_P(StoppedWorkTest, LeavesEverythingAsItWas) {
    prepare(work());
    const Texts before = everything();

    beginAndStop();

    EXPECT_TRUE(everything() == before);
    EXPECT_TRUE(data().imported);
}

TEST_P(StoppedWorkTest, ShowsNothing) {
    prepare(work());

    beginAndStop();

    EXPECT_EQ(machine.desktop.boxesShown.size(), work() == Work::Import ? 1U : 0U);
    EXPECT_EQ(window().visible(), stopping().visible);
    EXPECT_EQ(window().loaded(), stopping().way != Way::Unload);
}

TEST_P(StoppedWorkTest, WritesNothing) {
    prepare(work());
    machine.files.setFile(csvPath, "old");

    beginAndStop();

    EXPECT_EQ(machine.files.file(csvPath), "old");
    EXPECT_EQ(machine.files.replacements, 0);
}

TEST_P(StoppedWorkTest, HandlesNoMoreEvents) {
    prepare(work());
    machine.desktop.eventRounds = 0;

    beginAndStop();

    EXPECT_EQ(machine.desktop.eventRounds, rounds);
}

TEST_P(StoppedWorkTest, CanBeDoneAgain) {
    prepare(work());
    beginAndStop();
    frmMain().cmdHistory.press();

    complete(work());

    EXPECT_EQ(window().lvwCompleteLog.rowCount(), many);
    EXPECT_EQ(machine.files.exists(csvPath), work() == Work::Export);
}

TEST_P(StoppedWorkTest, LeavesTheUnitOfPercentsDisabled) {
    prepare(work());
    window().cboDataType.setListIndex(2);
    ASSERT_FALSE(window().cboTransferUnit.enabled());

    beginAndStop();

    EXPECT_FALSE(window().cboTransferUnit.enabled());
}

const Stopping stoppings[]{{"Stop", Way::Stop, 1, true},
                           {"StopAtTheEnd", Way::Stop, 100, true},
                           {"Cancel", Way::Cancel, 30, false},
                           {"CloseBox", Way::CloseBox, 30, false},
                           {"CancelAndOpen", Way::CancelAndOpen, 30, true},
                           {"StopAndImport", Way::StopAndImport, 30, true},
                           {"Unload", Way::Unload, 30, false}};

std::string nameOf(const testing::TestParamInfo<std::tuple<Work, Stopping>>& given) {
    return (std::get<0>(given.param) == Work::Import ? "Import" : "Export") +
           std::string(std::get<1>(given.param).name);
}

INSTANTIATE_TEST_SUITE_P(Each, StoppedWorkTest,
                         testing::Combine(testing::Values(Work::Import, Work::Export),
                                          testing::ValuesIn(stoppings)),
                         nameOf);

using StoppedFirstImportTest = StoppedWorkTest;

TEST_P(StoppedFirstImportTest, LeavesTheWindowAsBeforeIt) {
    setIni(manyRecords());
    const Texts before = everything();

    beginAndStop();

    EXPECT_EQ(everything(), before);
    EXPECT_FALSE(data().imported);
}

INSTANTIATE_TEST_SUITE_P(Each, StoppedFirstImportTest,
                         testing::Combine(testing::Values(Work::Import),
                                          testing::ValuesIn(stoppings)),
                         nameOf);

} // namespace
} // namespace tarvik
