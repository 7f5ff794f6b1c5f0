#include "journal/JournalEntry.h"

#include "types/CheckSum.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace tarvik {

namespace {

constexpr std::string_view magic("TARVIKJ\x1a", 8);
constexpr std::size_t headSize = 32; ///< magic, version, length, number, moment
constexpr std::size_t sumSize = 8;
constexpr std::size_t roomOfBody = journalPlace - headSize - sumSize;
/// That of what is not in the ledger yet, without a line of it.
constexpr std::size_t leastOfLedger = sizeof(std::uint64_t) + sizeof(std::uint16_t);
constexpr std::size_t mostText = 512;
constexpr std::size_t mostName = 256;
constexpr std::size_t mostLastState = 127;
constexpr std::size_t mostAddress = 255;

class Writer {
public:
    std::string bytes;

    template <class Number>
    void number(Number value) {
        const auto wide = static_cast<std::uint64_t>(value);
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            bytes += static_cast<char>(wide >> (8 * i));
        }
    }
    void date(Date value) { number(std::bit_cast<std::uint64_t>(value.serial())); }
    void text(std::string_view value, std::size_t most) {
        value = value.substr(0, most);
        number(static_cast<std::uint16_t>(value.size()));
        bytes += value;
    }
    void traffic(const Traffic& value) {
        number(value.rcvd);
        number(value.sent);
        number(value.milliseconds);
    }
    void amount(const Amount& value) {
        number(value.rcvd.scaled());
        number(value.sent.scaled());
        number(value.duration.scaled());
    }
};

/// Takes what a writer has put there; `good` is false once something cannot be meant.
class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    bool good = true;
    bool done() const { return good && rest_.empty(); }

    void demand(bool holds) { good = good && holds; }

    template <class Number>
    Number number() {
        std::uint64_t wide = 0;
        if (rest_.size() < sizeof(Number)) {
            good = false;
            return {};
        }
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            wide |= std::uint64_t{static_cast<unsigned char>(rest_[i])} << (8 * i);
        }
        rest_.remove_prefix(sizeof(Number));
        return static_cast<Number>(wide);
    }
    Date date() {
        const Date value(std::bit_cast<double>(number<std::uint64_t>()));
        demand(canBeKept(value));
        return value;
    }
    std::string text(std::size_t most) {
        const std::size_t size = number<std::uint16_t>();
        if (size > most || size > rest_.size()) {
            good = false;
            return {};
        }
        std::string result(rest_.substr(0, size));
        rest_.remove_prefix(size);
        return result;
    }
    /// A text of a record's field, which ends at its first NUL.
    template <std::size_t size>
    void field(char (&target)[size]) {
        const std::string value = text(size - 1);
        demand(value.find('\0') == std::string::npos);
        std::copy(value.begin(), value.end(), target);
    }
    Traffic traffic() {
        Traffic result;
        result.rcvd = number<std::uint64_t>();
        result.sent = number<std::uint64_t>();
        result.milliseconds = number<std::uint64_t>();
        return result;
    }
    Currency amount() {
        const auto scaled = number<std::int64_t>();
        demand(scaled >= 0 && scaled <= largestKept.scaled());
        return Currency::fromScaled(scaled);
    }
    Amount amounts() {
        Amount result;
        result.rcvd = amount();
        result.sent = amount();
        result.duration = amount();
        return result;
    }
    std::uint8_t bits(std::uint8_t known) {
        const auto value = number<std::uint8_t>();
        demand((value & ~known) == 0);
        return value;
    }

private:
    std::string_view rest_;
};

template <std::size_t size>
std::string_view textOfField(const char (&field)[size]) {
    const std::string_view all(field, size);
    return all.substr(0, std::min(all.find('\0'), size - 1));
}

bool covers(const Amount& whole, const Amount& part) {
    return part.rcvd <= whole.rcvd && part.sent <= whole.sent && part.duration <= whole.duration;
}

constexpr std::uint8_t exists = 1;
constexpr std::uint8_t ended = 2;
constexpr std::uint8_t announced = 4;
constexpr std::uint8_t hasLedger = 8;

void writeSession(Writer& to, const FormerSession& former, bool withLedger) {
    const LineSession& one = former.session;
    to.number(one.connection.hrasconn);
    to.text(textOfField(one.connection.szEntryName), mostName);
    to.text(textOfField(one.connection.szDeviceType), mostName);
    to.text(textOfField(one.connection.szDeviceName), mostName);
    to.number(one.last.dwBytesRcved);
    to.number(one.last.dwBytesXmited);
    to.number(one.last.dwFramesRcved);
    to.number(one.last.dwFramesXmited);
    to.number(one.last.dwConnectDuration);
    to.number(one.readAt);
    to.traffic(one.totals);
    to.amount(one.offset);
    to.amount(one.counted);
    to.text(former.mark, mostText);
    if (withLedger) {
        to.traffic(one.noted);
        to.number(one.notedAt);
    }
}

FormerSession readSession(Reader& from, bool withLedger) {
    FormerSession former;
    LineSession& one = former.session;
    one.connection.dwSize = RASCONNA::size;
    one.connection.hrasconn = from.number<std::uint32_t>();
    from.field(one.connection.szEntryName);
    from.field(one.connection.szDeviceType);
    from.field(one.connection.szDeviceName);
    one.last.dwSize = RAS_STATS::size;
    one.last.dwBytesRcved = from.number<std::uint32_t>();
    one.last.dwBytesXmited = from.number<std::uint32_t>();
    one.last.dwFramesRcved = from.number<std::uint32_t>();
    one.last.dwFramesXmited = from.number<std::uint32_t>();
    one.last.dwConnectDuration = from.number<std::uint32_t>();
    one.readAt = from.number<std::int64_t>();
    one.totals = from.traffic();
    one.offset = from.amounts();
    one.counted = from.amounts();
    former.mark = from.text(mostText);
    if (withLedger) {
        one.noted = from.traffic();
        one.notedAt = from.number<std::int64_t>();
    } else {
        one.noted = one.totals; // no ledger was to be told
        one.notedAt = one.readAt;
    }
    return former;
}

/// What counts of it is in the totals, and every figure can be meant.
bool isTellable(const FormerSession& former, const Amount& left) {
    return canBeKept(former.session.offset) && canBeKept(former.session.counted) &&
           covers(left, former.session.counted) && former.mark.size() <= mostText;
}

void writeSessions(Writer& to, const JournalEntry& entry) {
    const std::size_t place = to.bytes.size();
    const std::size_t forLedger = entry.ledger ? leastOfLedger + entry.ledger->lines.size() : 0;
    const std::size_t room = roomOfBody - std::min(forLedger, roomOfBody);
    std::uint8_t count = 0;
    to.number(count);
    Amount left = entry.totals;
    for (const FormerSession& one : entry.sessions) {
        Writer session;
        writeSession(session, one, entry.ledger.has_value());
        if (isTellable(one, left) && to.bytes.size() + session.bytes.size() <= room &&
            count < std::numeric_limits<std::uint8_t>::max()) {
            to.bytes += session.bytes;
            left = left - one.session.counted; // both at least zero: it fits
            ++count;
        }
    }
    to.bytes[place] = static_cast<char>(count);
}

void readSessions(Reader& from, JournalEntry& entry) {
    Amount left = entry.totals;
    for (auto count = from.number<std::uint8_t>(); count > 0 && from.good; --count) {
        FormerSession one = readSession(from, entry.ledger.has_value());
        from.demand(covers(left, one.session.counted));
        if (from.good) {
            left = left - one.session.counted;
            entry.sessions.push_back(std::move(one));
        }
    }
}

/// As many of the lines as find room.
void writeLedger(Writer& to, const LedgerRemainder& ledger) {
    to.number(ledger.end);
    const std::size_t room = roomOfBody - to.bytes.size() - sizeof(std::uint16_t);
    std::string_view lines = ledger.lines;
    lines = lines.substr(0, std::min(lines.size(), room));
    to.text(lines.substr(0, lines.rfind('\n') + 1), room); // whole ones
}

void readLedger(Reader& from, LedgerRemainder& ledger) {
    ledger.end = from.number<std::uint64_t>();
    ledger.lines = from.text(roomOfBody);
    from.demand(ledger.lines.empty() || ledger.lines.back() == '\n');
}

std::optional<JournalEntry> entryOf(std::string_view body, Date moment) {
    Reader from(body);
    JournalEntry entry;
    entry.moment = moment;
    const std::uint8_t bits = from.bits(exists | ended | announced | hasLedger);
    entry.standsOn.exists = (bits & exists) != 0;
    entry.ended = (bits & ended) != 0;
    entry.standsOn.lastState = from.text(mostLastState);
    entry.standsOn.lastDateStamp = from.number<std::int32_t>();
    from.demand(entry.standsOn.lastDateStamp >= 0);
    if ((bits & announced) != 0) {
        entry.resetIfGone = from.date();
    }
    entry.totals = from.amounts();
    entry.tickerBase = from.amount();
    for (std::int64_t& setting : entry.settings) {
        setting = from.number<std::int64_t>();
    }
    entry.address = from.text(mostAddress);
    if ((bits & hasLedger) != 0) {
        entry.ledger.emplace();
    }
    readSessions(from, entry);
    if (entry.ledger) {
        readLedger(from, *entry.ledger);
    }
    return from.done() ? std::optional(std::move(entry)) : std::nullopt;
}

/// The beginning of an entry, or zeros where a power cut left nothing of it, is one that was begun.
JournalPlace torn(std::string_view bytes) {
    std::string_view beginning = bytes.substr(0, magic.size());
    beginning = beginning.substr(0, beginning.find_last_not_of('\0') + 1);
    const bool begun = magic.starts_with(beginning);
    return {.kind = begun ? JournalPlace::Kind::Torn : JournalPlace::Kind::Foreign,
            .number = 0,
            .entry = {}};
}

} // namespace

bool canBeKept(Date date) {
    constexpr double firstDay = -657'434;
    constexpr double endOfDays = 2'958'466;
    return date.serial() >= firstDay && date.serial() < endOfDays;
}

bool canBeKept(const Amount& amount) {
    const auto fits = [](Currency one) { return one >= Currency(0) && one <= largestKept; };
    return fits(amount.rcvd) && fits(amount.sent) && fits(amount.duration);
}

bool mayHaveSaved(const JournalEntry& entry, const Amount& totals) {
    if (!canBeKept(totals)) {
        return false;
    }
    Amount missing = entry.totals - totals;
    for (const FormerSession& one : entry.sessions) {
        missing = missing - one.session.counted;
    }
    return totals == entry.totals ||
           std::any_of(entry.sessions.begin(), entry.sessions.end(), [&](const auto& shown) {
               return missing + shown.session.counted == Amount();
           });
}

std::string bodyOf(const JournalEntry& entry) {
    Writer to;
    to.bytes.reserve(journalPlace);
    to.number(static_cast<std::uint8_t>(
        (entry.standsOn.exists ? exists : 0U) | (entry.ended ? ended : 0U) |
        (entry.resetIfGone ? announced : 0U) | (entry.ledger ? hasLedger : 0U)));
    to.text(entry.standsOn.lastState, mostLastState);
    to.number(entry.standsOn.lastDateStamp);
    if (entry.resetIfGone) {
        to.date(*entry.resetIfGone);
    }
    to.amount(entry.totals);
    to.number(entry.tickerBase.scaled());
    for (const std::int64_t setting : entry.settings) {
        to.number(setting);
    }
    to.text(entry.address, mostAddress);
    writeSessions(to, entry);
    if (entry.ledger) {
        writeLedger(to, *entry.ledger);
    }
    return std::move(to.bytes);
}

std::size_t roomForLedger(JournalEntry entry) {
    entry.ledger.emplace();
    return roomOfBody - bodyOf(entry).size();
}

std::string placeOf(std::string_view body, Date moment, std::uint64_t number) {
    Writer to;
    to.bytes.reserve(headSize + body.size() + sumSize);
    to.bytes = magic;
    to.number(journalVersion);
    to.number(static_cast<std::uint32_t>(headSize + body.size() + sumSize));
    to.number(number);
    to.date(moment);
    to.bytes += body;
    to.number(checkSum(to.bytes));
    return std::move(to.bytes);
}

JournalPlace readPlace(std::string_view bytes) {
    using Kind = JournalPlace::Kind;
    if (std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == '\0'; })) {
        return {};
    }
    Reader head(bytes.substr(0, headSize));
    if (bytes.size() < headSize + sumSize || !bytes.starts_with(magic)) {
        return torn(bytes);
    }
    head.number<std::uint64_t>();
    const auto version = head.number<std::uint32_t>();
    const std::size_t length = head.number<std::uint32_t>();
    // Another version may have longer places and sum them in another way.
    const bool mayBeOther = version != journalVersion && version != 0;
    JournalPlace place;
    place.kind = mayBeOther ? Kind::Unsure : Kind::Torn;
    place.number = head.number<std::uint64_t>();
    if (length < headSize + sumSize || length > bytes.size()) {
        return place;
    }
    const std::string_view summed = bytes.substr(0, length - sumSize);
    if (Reader(bytes.substr(summed.size(), sumSize)).number<std::uint64_t>() != checkSum(summed)) {
        return place;
    }
    if (version != journalVersion) {
        place.kind = Kind::OtherVersion;
        return place;
    }
    place.kind = Kind::Impossible;
    const Date moment = head.date();
    head.demand(place.number != std::numeric_limits<std::uint64_t>::max()); // none comes after it
    auto entry = head.good ? entryOf(summed.substr(headSize), moment) : std::nullopt;
    if (entry) {
        place.kind = Kind::Whole;
        place.entry = std::move(*entry);
    }
    return place;
}

} // namespace tarvik
