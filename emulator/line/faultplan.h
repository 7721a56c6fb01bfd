#pragma once

#include "line/fault.h"
#include "line/language.h"

#include <QList>
#include <QMap>
#include <QStringList>

#include <optional>

namespace emulator {

/// Tells for each exchange which fault it suffers. Exchanges are counted from 1.
class FaultPlan
{
public:
    /// A fault and where it stands.
    struct Entry
    {
        int exchange = 0;
        /// That exchange and all that follow.
        bool isLasting = false;
        Fault fault;

        bool isAt(const Entry& other) const
        {
            return exchange == other.exchange && isLasting == other.isLasting;
        }
        /// As parse() reads it.
        QString words() const;
    };

    /// Reads "mode[:argument]@exchange", several with commas between them; "@5+" means the fifth and all that
    /// follow.
    static std::optional<FaultPlan> parse(const QString& text, QString* error);
    /// Reads "mode[:argument]", or the name of a cut of the power; no value for what is neither.
    static std::optional<Fault> parseFault(const QString& text);
    /// What the mode takes that such a text names; empty when there is no such mode.
    static QString mistake(const QString& text);
    /// Those that a plan has not: there is nobody to switch the power on again.
    static const QString powerOffBefore;
    static const QString powerOffAfter;
    static QString modeName(FaultMode mode);
    /// "mode" or "mode:argument", as parseFault reads it.
    static QString words(const Fault& fault);
    /// What the mode takes behind its name; empty for nothing.
    static QString argumentName(FaultMode mode);
    static const QList<FaultMode>& allModes();
    /// All modes in words as they are written in a plan, with what they take.
    static QStringList usage();
    /// The protocol has what the fault is about.
    static bool fits(const Fault& fault, Language language);
    /// Why the fault cannot happen on a line of that protocol.
    static QString misfitWords(const Fault& fault, Language language);

    void add(int exchange, const Fault& fault) { m_faults[exchange] = fault; }
    void addFrom(int exchange, const Fault& fault) { m_lasting[exchange] = fault; }
    Fault at(int exchange) const { return entryAt(exchange).fault; }
    /// One without a fault where there is none.
    Entry entryAt(int exchange) const;
    QList<Entry> entries() const;
    /// Why the plan is not one for that protocol, empty when it is.
    QString misfit(Language language) const;

private:
    QMap<int, Fault> m_faults;
    QMap<int, Fault> m_lasting;
};

} // namespace emulator
