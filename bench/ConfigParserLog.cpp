#include "OtherParsers.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>

namespace tarvik {

namespace {

constexpr const char* script = R"(import configparser, sys, time

start = time.perf_counter()
log = configparser.ConfigParser(delimiters=("=",), interpolation=None)
log.read(sys.argv[1])
loaded = time.perf_counter()
settings = log["Settings"]
records = []
for number in range(1, int(settings["LastDateStamp"]) + 1):
    stamp = settings["DateStamp%d" % number]
    section = log[stamp]
    records.append((int(section["Sent"]), int(section["Rcvd"]), int(section["Duration"]),
                    section["IPAddress"], stamp))
read = time.perf_counter()
print((loaded - start) * 1000, (read - loaded) * 1000, sum(sum(r[:3]) for r in records))
)";

} // namespace

LogReading readByConfigParser(const std::string& file, const std::string& folder) {
    const std::string program = folder + "/read_log.py";
    std::ofstream(program) << script;
    const std::string command = "/usr/bin/python3 -B '" + program + "' '" + file + "'";
    const std::unique_ptr<FILE, decltype(&pclose)> output(popen(command.c_str(), "r"), &pclose);
    std::array<char, 256> line{};
    LogReading reading;
    if (output && std::fgets(line.data(), static_cast<int>(line.size()), output.get())) {
        std::istringstream(line.data()) >> reading.load >> reading.values >> reading.sum;
    }
    return reading;
}

} // namespace tarvik
