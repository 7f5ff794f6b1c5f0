// Prints what the journal costs: the processor's time of a tick with and without it, on real files,
// and what is written and flushed in a day of steady traffic and in a day of none.
//
//     bench_journal

#include "FaceUnderTest.h"
#include "common/ProfileEngine.h"
#include "scripted/ScriptedPlatform.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace tarvik {
namespace {

constexpr int secondsOfDay = 24 * 60 * 60;

struct Written {
    long writes = 0;
    long bytes = 0;
    long flushes = 0;
};

/// The face's files; what is done with a file that is held is counted.
class CountedFiles : public FaceFiles {
public:
    using FaceFiles::FaceFiles;
    Written traffic;

    Holding hold(const std::string& path) override { return counted(FaceFiles::hold(path)); }
    Holding holdOrMake(const std::string& path, std::size_t size,
                       const std::string& like) override {
        return counted(FaceFiles::holdOrMake(path, size, like));
    }

private:
    class Counted : public HeldFile {
    public:
        Counted(Written& traffic, std::unique_ptr<HeldFile> real)
            : traffic_(traffic), real_(std::move(real)) {}

        FileResult read(std::string& bytes) override { return real_->read(bytes); }
        FileResult write(std::size_t offset, std::string_view bytes) override {
            ++traffic_.writes;
            traffic_.bytes += static_cast<long>(bytes.size());
            return real_->write(offset, bytes);
        }
        FileResult flush() override {
            ++traffic_.flushes;
            return real_->flush();
        }
        bool isInPlace(std::size_t size) override { return real_->isInPlace(size); }
        FileResult remove() override { return real_->remove(); }

    private:
        Written& traffic_;
        std::unique_ptr<HeldFile> real_;
    };

    Holding counted(Holding held) {
        if (held.file) {
            held.file = std::make_unique<Counted>(traffic, std::move(held.file));
        }
        return held;
    }
};

/// A program that watches a line, a tick each second.
class Machine {
public:
    explicit Machine(const std::string& folder) {
        scripted_.program.folderPath = folder;
        scripted_.program.separator =
            std::filesystem::path::preferred_separator == '/' ? '/' : '\\';
        scripted_.program.arguments = "/r";
        scripted_.connections.entries = {{.name = "Line"}};
        scripted_.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Yes; };
        Main();
        connect();
        second(0);
    }

    void second(std::uint32_t bytes) {
        scripted_.clock.advanceSeconds(1);
        if (scripted_.connections.connection(handle_) != nullptr) {
            scripted_.connections.transfer(handle_, bytes, bytes / 8, 1000);
        }
        world_.forms.frmMain.timUpdateStats.fire();
    }
    void connect() { handle_ = scripted_.connections.connect("Line"); }
    void hangUp() { scripted_.connections.disconnect(handle_); }
    void leaveJournal() { world_.journal.leave(); }
    Written& traffic() { return files_.traffic; }

private:
    ScriptedPlatform scripted_;
    CountedFiles files_;
    ProfileEngine profile_{files_, endOfLine};
    Platform platform_ = scripted_.withFiles(profile_, files_);
    World world_{platform_};
    std::uint32_t handle_ = 0;
};

/// Microseconds of the processor's time.
double processorTimeOf(Machine& machine, int ticks) {
    const std::clock_t begin = std::clock();
    for (int i = 0; i < ticks; ++i) {
        machine.second(15'001);
    }
    return static_cast<double>(std::clock() - begin) * 1e6 / CLOCKS_PER_SEC / ticks;
}

void printDay(const char* name, Machine& machine, std::uint32_t bytesEachSecond) {
    machine.traffic() = {};
    for (int i = 0; i < secondsOfDay; ++i) {
        machine.second(bytesEachSecond);
    }
    const Written& all = machine.traffic();
    std::printf("a day of %s: %ld writes, %ld bytes, %ld flushes\n", name, all.writes, all.bytes,
                all.flushes);
}

} // namespace
} // namespace tarvik

int main() {
    const auto folder =
        std::filesystem::temp_directory_path() /
        ("tarvik-bench-" +
         std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "Tarvik.ini", std::ios::binary) << "[Settings]\n";
    {
        constexpr int ticks = 100'000;
        tarvik::Machine machine(folder.string());
        const double with = tarvik::processorTimeOf(machine, ticks);
        tarvik::printDay("steady traffic", machine, 15'001);
        machine.hangUp();
        machine.second(0);
        tarvik::printDay("no line", machine, 0);
        machine.connect();
        machine.leaveJournal();
        const double without = tarvik::processorTimeOf(machine, ticks);
        std::printf("processor's time of a tick, us: %.2f with the journal, %.2f without\n", with,
                    without);
    }
    std::filesystem::remove_all(folder);
}
