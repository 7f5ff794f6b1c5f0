#pragma once

#include <functional>
#include <string>

namespace sdbus {
class IConnection;
} // namespace sdbus

namespace tarvik {

/// What is asked of a service on the bus once that has greeted. Whatever it throws of the bus's
/// errors is an answer as well.
using BusQuestion = std::function<void(sdbus::IConnection&)>;

/// False where something takes the connection at that D-Bus address and does not greet as a bus
/// should; waits for it without end, and for the answer to the question. True where the toolkit
/// finds out at once that none is there, and for everything that is no socket of this machine.
bool busGreets(const std::string& address, const BusQuestion& question = {});

/// Asks the bus itself as often, for one answer after the other. A question is to ask as often as
/// the toolkit will: a bus that is slow with each answer is found out before it is waited for.
void askBus(sdbus::IConnection& bus, int times);

} // namespace tarvik
