#include "xml/verdict.h"

#include <algorithm>
#include <iterator>

namespace emulator {

namespace {

constexpr int internal = 1;
constexpr int drive = 2;
constexpr int printer = 3;
constexpr int operatorLink = 4;
constexpr int terminal = 5;

struct Row
{
    Refusal refusal;
    int category;
    int code;
    const char16_t* description;
};

constexpr Row rows[] = {
    {Refusal::WrongState, internal, 1002, u"Команда не может быть выполнена в текущем состоянии"},
    {Refusal::UnknownFunction, terminal, 5009, u"Команда не поддерживается"},
    {Refusal::BadValue, internal, 1004, u"Недопустимое значение параметра"},
    {Refusal::NoPaper, printer, 8, u"Нет бумаги"},
    {Refusal::PrinterNotReady, printer, 9, u"Принтер не готов"},
    {Refusal::ShiftTooLong, drive, 22, u"Смена длится более 24 часов"},
    {Refusal::DateTooEarly, operatorLink, 4002, u"Время раньше времени последнего документа"},
    {Refusal::NoDocument, internal, 1001, u"Документ не открыт"},
    {Refusal::NegativeResult, internal, 1007, u"В денежном ящике меньше, чем требуется выдать"},
    {Refusal::DriveWrongState, drive, 2005, u"Состояние ФН не позволяет выполнить команду"},
    {Refusal::DriveExpired, drive, 2005, u"Срок действия ФН истек"},
    {Refusal::DriveFull, drive, 2005, u"Архив ФН переполнен"},
    {Refusal::DriveHasNoData, internal, 1005, u"В ФН нет такого документа"},
    {Refusal::TooManyPositions, internal, 1001, u"Слишком много позиций"},
    {Refusal::OperatorSilent, operatorLink, 4004, u"Документы не переданы в ОФД более 30 дней"},
    {Refusal::NotRegistered, internal, 1006, u"Система налогообложения не зарегистрирована"},
    {Refusal::MarkingForbidden, internal, 1004, u"ККТ не зарегистрирована для маркированных товаров"},
    {Refusal::MarkingOutOfOrder, internal, 1002, u"Проверка кода маркировки сейчас невозможна"},
    {Refusal::MarkingTableFull, drive, 2001, u"Таблица проверенных кодов маркировки заполнена"},
    {Refusal::RequisitesMissing, internal, 1004, u"Не указан код маркировки"},
    {Refusal::MarkingNotChecked, internal, 1004, u"Код маркировки не проверен"},
};

} // namespace

XmlVerdict::XmlVerdict(Refusal verdict)
    : refusal(verdict)
{
    if (verdict == Refusal::None)
        return;
    const auto* const row = std::find_if(std::begin(rows), std::end(rows),
        [verdict](const Row& candidate) { return candidate.refusal == verdict; });
    const Row& found = row == std::end(rows) ? rows[0] : *row;
    category = found.category;
    code = found.code;
    description = QString::fromUtf16(found.description);
}

XmlVerdict XmlVerdict::badDocument(const QString& words)
{
    return {internal, 1001, words};
}

XmlVerdict XmlVerdict::badPayments(const QString& words)
{
    return {internal, 1003, words};
}

XmlVerdict XmlVerdict::badValue(const QString& words)
{
    return {internal, 1004, words};
}

XmlVerdict XmlVerdict::badVersion(const QString& words)
{
    return {terminal, 5001, words};
}

XmlVerdict XmlVerdict::badRequest(const QString& words)
{
    return {terminal, 5002, words};
}

XmlVerdict XmlVerdict::badData(const QString& words)
{
    return {terminal, 5003, words};
}

XmlVerdict XmlVerdict::unknownCommand()
{
    return Refusal::UnknownFunction;
}

} // namespace emulator
