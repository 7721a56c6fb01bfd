#pragma once

#include <QString>

#include <optional>

class HostProcess;
class Random;
class RegisterProcess;
class WireTrace;

/// A moment in the work of a host that sells.
class SaleMoment
{
public:
    /// Most of them lie in the document and its closing, where most is at stake.
    static SaleMoment draw(Random& random, const QString& protocol);
    /// Lets the host work until then and a little longer, or until it ends.
    void wait(HostProcess& host, RegisterProcess& device, Random& random) const;

private:
    explicit SaleMoment(const std::optional<int>& lines)
        : m_lines(lines)
    {
    }
    bool hasCome(const WireTrace& trace) const;

    /// Lines of the trace that come before it; none for the closing of the document.
    std::optional<int> m_lines;
};
