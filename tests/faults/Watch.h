#pragma once

#include "faults/Disk.h"
#include "faults/Interposer.h"

#include <cerrno>
#include <map>
#include <mutex>
#include <string>

namespace tarvik::faults {

struct Fault {
    std::string kind = "count";
    int call = 0;
    unsigned first = 0;
    unsigned second = 0;
};

struct Watch {
    std::mutex mutex;
    std::string folder;
    std::string parent;
    Fault fault;
    Disk disk;
    std::map<int, std::string> open; ///< descriptors of interest, with their paths
    int calls = 0;
    int flushes = 0; ///< of a file's bytes alone, as the journal's are
    std::string named;
    bool happened = false;
};

/// Null while nothing is watched. It is never freed: a call may come at any moment.
extern Watch* watch;
/// This thread is in here already: what is called now is the harness's own.
extern thread_local bool inside;

/// One call of the program on its way to the system.
class Turn {
public:
    enum Kind { Other, Reads, Writes };

    Turn(const char* call, bool ours, Kind kind = Other);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    bool counted() const { return counted_; }
    /// The call fails, errno is set.
    bool fails() const {
        if (error_ != 0) {
            errno = error_;
        }
        return error_ != 0;
    }
    /// How much of a read or a write is done.
    std::size_t share(std::size_t size) const { return half_ ? (size + 1) / 2 : size; }
    /// After a write: the process may end in its middle.
    void afterWrite() const;

private:
    void decide(const Fault& fault);
    void shorten(const Fault& fault, int since);

    bool counted_;
    Kind kind_;
    int error_ = 0;
    bool half_ = false;
    bool dies_ = false;
};

} // namespace tarvik::faults
