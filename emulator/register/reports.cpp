#include "register/reports.h"

#include "register/documentname.h"
#include "register/judgement.h"
#include "register/pages.h"
#include "register/parts.h"
#include "register/printing.h"
#include "register/recording.h"

namespace emulator {

Refusal Reports::printAccounting(const Cashier& cashier, bool shiftMayBeOpen)
{
    if (const Refusal refusal = judgement::ready(m_parts.state); refusal != Refusal::None)
        return refusal;
    if (m_parts.state.shift.isOpen && !shiftMayBeOpen)
        return Refusal::WrongState;
    if (const Refusal refusal = judgement::drive(m_parts); refusal != Refusal::None)
        return refusal;
    return issue(
        FiscalType::AccountingReport, cashier, {{QStringLiteral("unsent"), m_parts.drive.queueLength()}});
}

Refusal Reports::changeRegistration(const Registration& registration, const Cashier& cashier, int reasons)
{
    if (const Refusal refusal = judgement::reregistration(registration, m_parts); refusal != Refusal::None)
        return refusal;
    m_parts.state.registration = registration;
    const FiscalType type
        = m_parts.drive.isReady() ? FiscalType::Registration : FiscalType::RegistrationChange;
    return issue(type, cashier,
        {{QStringLiteral("taxSystems"), registration.taxSystems}, {QStringLiteral("reasons"), reasons}});
}

Refusal Reports::printStored(quint32 number)
{
    if (const Refusal refusal = judgement::ready(m_parts.state); refusal != Refusal::None)
        return refusal;
    const FiscalRecord* const record = m_parts.drive.find(number);
    if (record == nullptr)
        return Refusal::DriveHasNoData;
    return printing::printOrQueue(m_parts, pages::copy(m_parts, *record));
}

Refusal Reports::issue(FiscalType type, const Cashier& cashier, QJsonObject details)
{
    const DocumentName name = documentnames::find(type);
    details[QStringLiteral("type")] = name.word;
    const FiscalRecord record = recording::store(m_parts, type, details, cashier);
    const tape::Page page = pages::report(m_parts, name.title, record, cashier);
    m_parts.drive.keepPrint(page);
    return printing::printOrQueue(m_parts, page, record.number);
}

} // namespace emulator
