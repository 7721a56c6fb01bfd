#pragma once

#include <QString>

#include <array>

class WireTrace;

/// What has become of hosts that were ended at work.
class KillCounts
{
public:
    /// How a host is ended. ClosedPipe: nobody reads any more what it says.
    enum Way { Kill, Terminate, Interrupt, HangUp, ClosedPipe };
    static constexpr int ways = ClosedPipe + 1;
    /// How far its work on the register had come.
    enum Phase { BeforeFirstByte, BeforeDocument, InDocument, InClose, AfterClose };
    static constexpr int phases = AfterClose + 1;

    static Phase phaseOf(const WireTrace& trace);

    void note(Way way, Phase phase);
    /// Hosts that were ended.
    int kills() const;
    void add(const KillCounts& other);
    /// A line for each way; the title stands above.
    void print(const QString& title) const;

private:
    std::array<std::array<int, phases>, ways> m_kills{};
};
