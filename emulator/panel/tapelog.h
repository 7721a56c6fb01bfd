#pragma once

#include "tape/page.h"

#include <QDateTime>
#include <QSize>

#include <deque>
#include <optional>

namespace emulator {
class FiscalDrive;
}

namespace emulator::panel {

/// A page, or a piece of one, as it left the printer.
struct TapeEntry
{
    int number = 0;
    /// By the register's clock.
    QDateTime dateTime;
    /// Of the fiscal drive; 0 for what is none.
    quint32 document = 0;
    /// Its fiscal sign.
    QString sign;
    /// See packedpage.h.
    QByteArray page;
    /// In dots, once it was asked for.
    mutable std::optional<QSize> size;
};

/// The youngest entries of the tape.
class TapeLog
{
public:
    /// Gives its number. The document is of that drive, or 0.
    int add(const QDateTime& dateTime, quint32 document, const FiscalDrive& drive, const tape::Page& page);
    /// A new tape; its numbers count on, so that nobody takes an entry of it for one of before.
    void beginAnew() { m_entries.clear(); }
    /// The register is as at another time: what this drive has not is no document of an entry any more.
    void follow(const FiscalDrive& drive);

    int first() const { return last() - static_cast<int>(m_entries.size()) + 1; }
    int last() const { return m_last; }
    /// Null for one that is not kept.
    const TapeEntry* find(int number) const;

private:
    static constexpr size_t mostEntries = 5000;

    int m_last = 0;
    std::deque<TapeEntry> m_entries;
};

} // namespace emulator::panel
