#pragma once

#include "register/fiscalrecord.h"
#include "register/refusal.h"

#include <QJsonObject>

namespace emulator {

struct Cashier;
struct Parts;
struct Registration;

/// The documents of the fiscal drive that are no receipts.
class Reports
{
public:
    explicit Reports(Parts& parts)
        : m_parts(parts)
    {
    }

    Refusal printAccounting(const Cashier& cashier, bool shiftMayBeOpen = false);
    /// The reasons are bits that the host gives; they are stored and not judged.
    Refusal changeRegistration(const Registration& registration, const Cashier& cashier, int reasons);
    Refusal printStored(quint32 number);
    /// Stores and prints a report, whatever the state. The details are those of its entry in the journal.
    Refusal issue(FiscalType type, const Cashier& cashier, QJsonObject details = {});

private:
    Parts& m_parts;
};

} // namespace emulator
