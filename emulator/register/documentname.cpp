#include "register/documentname.h"

#include <QList>

#include <algorithm>

namespace emulator::documentnames {

namespace {

const QList<DocumentName>& all()
{
    static const QString receipt = QStringLiteral("КАССОВЫЙ ЧЕК");
    static const QList<DocumentName> names{
        {FiscalType::Receipt, 1, QStringLiteral("sell"), receipt},
        {FiscalType::Receipt, 2, QStringLiteral("sellReturn"), receipt},
        {FiscalType::Registration, 0, QStringLiteral("registration"), QStringLiteral("ОТЧЕТ О РЕГИСТРАЦИИ")},
        {FiscalType::ShiftOpening, 0, QStringLiteral("openShift"), QStringLiteral("ОТЧЕТ ОБ ОТКРЫТИИ СМЕНЫ")},
        {FiscalType::ShiftClosing, 0, QStringLiteral("closeShift"),
            QStringLiteral("ОТЧЕТ О ЗАКРЫТИИ СМЕНЫ (Z-ОТЧЕТ)")},
        {FiscalType::DriveClosing, 0, QStringLiteral("driveClosing"), QStringLiteral("ОТЧЕТ О ЗАКРЫТИИ ФН")},
        {FiscalType::RegistrationChange, 0, QStringLiteral("registrationChange"),
            QStringLiteral("ОТЧЕТ ОБ ИЗМЕНЕНИИ РЕГИСТРАЦИИ")},
        {FiscalType::AccountingReport, 0, QStringLiteral("accountingReport"),
            QStringLiteral("ОТЧЕТ О СОСТОЯНИИ РАСЧЕТОВ")},
    };
    return names;
}

template <typename Condition>
DocumentName first(Condition isIt)
{
    const auto found = std::find_if(all().cbegin(), all().cend(), isIt);
    return found == all().cend() ? all().constFirst() : *found;
}

} // namespace

DocumentName find(FiscalType type, int settlement)
{
    return first([type, settlement](const DocumentName& name) {
        return name.type == type && (type != FiscalType::Receipt || name.settlement == settlement);
    });
}

DocumentName byWord(const QString& word)
{
    return first([&word](const DocumentName& name) { return name.word == word; });
}

DocumentName byTitle(const QString& title, int settlement)
{
    return first([&title, settlement](const DocumentName& name) {
        return name.title == title && name.settlement == settlement;
    });
}

QStringList words()
{
    QStringList words;
    for (const DocumentName& name : all())
        words.append(name.word);
    return words;
}

QString settlement(int settlement)
{
    return settlement == 2 ? QStringLiteral("ВОЗВРАТ ПРИХОДА") : QStringLiteral("ПРИХОД");
}

} // namespace emulator::documentnames
