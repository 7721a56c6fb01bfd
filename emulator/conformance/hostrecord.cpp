#include "conformance/hostrecord.h"

#include <algorithm>

namespace emulator {

namespace {

// A host that goes on for days with a new reason each time fills no memory.
constexpr qsizetype mostKinds = 1000;

template <typename Entry, typename Same>
Entry* findOrAdd(QList<Entry>& entries, const Entry& fresh, const Same& isSame)
{
    const auto found = std::find_if(entries.begin(), entries.end(), isSame);
    if (found != entries.end())
        return &*found;
    if (entries.size() >= mostKinds)
        return nullptr;
    entries.append(fresh);
    return &entries.last();
}

} // namespace

void HostRecord::addCommand(const Exchange& exchange)
{
    ++exchanges;
    Command* const command
        = findOrAdd(commands, Command{exchange.protocol, exchange.command, exchange.name, 0, 0},
            [&exchange](const Command& candidate) {
                return candidate.protocol == exchange.protocol && candidate.code == exchange.command;
            });
    if (command == nullptr)
        return;
    ++command->count;
    command->refused += exchange.isRefused() ? 1 : 0;
}

void HostRecord::addRefusal(const Exchange& exchange)
{
    ++refused;
    Refused* const refusal = findOrAdd(refusals, Refused{exchange, 0}, [&exchange](const Refused& candidate) {
        const Exchange& first = candidate.first;
        return first.protocol == exchange.protocol && first.command == exchange.command
            && first.error == exchange.error && first.reason == exchange.reason;
    });
    if (refusal != nullptr)
        ++refusal->count;
}

} // namespace emulator
