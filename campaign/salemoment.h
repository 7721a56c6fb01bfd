#pragma once

#include <QString>

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
    enum Part { Anywhere, Document, Closing };

    SaleMoment(Part part, int lines)
        : m_part(part)
        , m_lines(lines)
    {
    }
    bool hasCome(const WireTrace& trace) const;

    /// What is reached, and so many lines of the trace of it.
    Part m_part;
    int m_lines;
};
