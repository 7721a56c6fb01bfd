#include "fdrequisitenames.h"

#include <algorithm>
#include <array>

namespace {

struct Name
{
    EFrDriver::RequisiteTypes tag;
    QStringView text;
};

using Tag = EFrDriver;

constexpr std::array names{
    Name{Tag::TransferOperatorAddress, u"адрес оператора перевода"},
    Name{Tag::CustomerAddress, u"телефон или электронный адрес покупателя"},
    Name{Tag::TransferOperatorInn, u"ИНН оператора перевода"},
    Name{Tag::UserInn, u"ИНН пользователя"},
    Name{Tag::CashierName, u"кассир"},
    Name{Tag::ItemQuantity, u"количество предмета расчета"},
    Name{Tag::TransferOperatorName, u"наименование оператора перевода"},
    Name{Tag::ItemName, u"наименование предмета расчета"},
    Name{Tag::CashSum, u"сумма по чеку (БСО) наличными"},
    Name{Tag::RegistrationNumber, u"регистрационный номер ККТ"},
    Name{Tag::ShiftNumber, u"номер смены"},
    Name{Tag::ItemSum, u"стоимость предмета расчета с учетом скидок и наценок"},
    Name{Tag::AgentOperation, u"операция банковского платежного агента"},
    Name{Tag::SettlementType, u"признак расчета"},
    Name{Tag::TaxSystem, u"применяемая система налогообложения"},
    Name{Tag::Item, u"предмет расчета"},
    Name{Tag::TaxSystems, u"системы налогообложения"},
    Name{Tag::AgentPhone, u"телефон платежного агента"},
    Name{Tag::PaymentOperatorPhone, u"телефон оператора по приему платежей"},
    Name{Tag::TransferOperatorPhone, u"телефон оператора перевода"},
    Name{Tag::ItemPrice, u"цена за единицу предмета расчета с учетом скидок и наценок"},
    Name{Tag::ElectronicSum, u"сумма по чеку (БСО) безналичными"},
    Name{Tag::SaleCounters, u"счетчики операций «приход»"},
    Name{Tag::ReturnCounters, u"счетчики операций «возврат прихода»"},
    Name{Tag::ReceiptCount, u"количество чеков (БСО) по признаку расчетов"},
    Name{Tag::CashTotal, u"итоговая сумма в чеках (БСО) наличными денежными средствами"},
    Name{Tag::ElectronicTotal, u"итоговая сумма в чеках (БСО) безналичными"},
    Name{Tag::FnTotals, u"счетчики итогов ФН"},
    Name{Tag::ProductCode, u"код товара"},
    Name{Tag::ProductCodeBlock, u"код товара"},
    Name{Tag::SupplierPhone, u"телефон поставщика"},
    Name{Tag::SettlementPlace, u"место расчетов"},
    Name{Tag::AdditionalReceiptRequisite, u"дополнительный реквизит чека (БСО)"},
    Name{Tag::ShiftTotals, u"счетчики итогов смены"},
    Name{Tag::MeasureName, u"единица измерения предмета расчета"},
    Name{Tag::TaxRate, u"ставка НДС"},
    Name{Tag::ReceiptsSum, u"общая итоговая сумма в чеках (БСО)"},
    Name{Tag::CashierInn, u"ИНН кассира"},
    Name{Tag::RegistrationChangeReasons, u"коды причин изменения сведений о ККТ"},
    Name{Tag::PaymentObject, u"признак предмета расчета"},
    Name{Tag::PaymentMethod, u"признак способа расчета"},
    Name{Tag::PrepaymentSum, u"сумма по чеку (БСО) предоплатой (зачет аванса и (или) предыдущих платежей)"},
    Name{Tag::CreditSum, u"сумма по чеку (БСО) постоплатой (в кредит)"},
    Name{Tag::OtherSum, u"сумма по чеку (БСО) встречным предоставлением"},
    Name{Tag::PrepaymentTotal, u"итоговая сумма в чеках (БСО) предоплатами (авансами)"},
    Name{Tag::CreditTotal, u"итоговая сумма в чеках (БСО) постоплатами (кредитами)"},
    Name{Tag::OtherTotal, u"итоговая сумма в чеках (БСО) встречными предоставлениями"},
    Name{Tag::ItemAgentType, u"признак агента по предмету расчета"},
    Name{Tag::AgentData, u"данные агента"},
    Name{Tag::SupplierData, u"данные поставщика"},
    Name{Tag::SupplierName, u"наименование поставщика"},
    Name{Tag::SupplierInn, u"ИНН поставщика"},
    Name{Tag::CustomerName, u"покупатель (клиент)"},
    Name{Tag::CustomerInn, u"ИНН покупателя (клиента)"},
    Name{Tag::CountryOfOrigin, u"код страны происхождения товара"},
    Name{Tag::CustomsDeclaration, u"номер декларации на товар"},
    Name{Tag::CustomerBlock, u"сведения о покупателе (клиенте)"},
    Name{Tag::IndustryRequisite, u"отраслевой реквизит предмета расчета"},
    Name{Tag::IndustryAuthority, u"идентификатор ФОИВ"},
    Name{Tag::IndustryDocumentDate, u"дата документа основания"},
    Name{Tag::IndustryDocumentNumber, u"номер документа основания"},
    Name{Tag::IndustryValue, u"значение отраслевого реквизита"},
    Name{Tag::ProductCodeUnknown, u"КТ Н"},
    Name{Tag::ProductCodeEan8, u"КТ EAN-8"},
    Name{Tag::ProductCodeEan13, u"КТ EAN-13"},
    Name{Tag::ProductCodeItf14, u"КТ ITF-14"},
    Name{Tag::ProductCodeGs1, u"КТ GS1.0"},
    Name{Tag::ProductCodeGs1M, u"КТ GS1.M"},
    Name{Tag::ProductCodeShort, u"КТ КМК"},
    Name{Tag::ProductCodeFur, u"КТ МИ"},
    Name{Tag::ProductCodeExcise20, u"КТ ЕГАИС-2.0"},
    Name{Tag::ProductCodeExcise30, u"КТ ЕГАИС-3.0"},
    Name{Tag::MarkingCode, u"код маркировки"},
    Name{Tag::PlannedItemStatus, u"планируемый статус товара"},
    Name{Tag::MarkingProcessingMode, u"режим обработки кода маркировки"},
    Name{Tag::MarkingCheckResult, u"результат проверки сведений о товаре"},
    Name{Tag::MeasureUnit, u"мера количества предмета расчета"},
    Name{Tag::AssignedItemStatus, u"присвоенный статус товара"},
};

} // namespace

QStringView fdRequisiteName(EFrDriver::RequisiteTypes tag)
{
    const auto found
        = std::find_if(names.cbegin(), names.cend(), [tag](const Name& name) { return name.tag == tag; });
    return found == names.cend() ? QStringView() : found->text;
}
