#include "trace/tagtable.h"

#include <algorithm>
#include <iterator>

namespace trace::tagtable {

namespace {

struct TagRow
{
    const char* tag;
    const char* name;
    bool isPersonal = false;
};

// clang-format off
constexpr TagRow tagRows[] = {
    {"1005", "operatorAddress", true}, {"1008", "customer", true}, {"1009", "address"}, {"1012", "time"},
    {"1013", "serialNumber"}, {"1016", "operatorInn", true}, {"1017", "ofdInn"}, {"1018", "userInn"}, {"1020", "total"},
    {"1021", "cashier", true}, {"1023", "quantity"}, {"1026", "operatorName", true}, {"1030", "name"}, {"1031", "cash"},
    {"1037", "registrationNumber"}, {"1038", "shift"}, {"1040", "document"}, {"1041", "drive"}, {"1042", "receipt"},
    {"1043", "sum"}, {"1044", "agentOperation", true}, {"1046", "ofdName"}, {"1048", "userName"}, {"1054", "kind"},
    {"1055", "taxSystem"}, {"1059", "item"}, {"1062", "taxSystems"}, {"1073", "agentPhone", true}, {"1074", "receiverPhone", true},
    {"1075", "operatorPhone", true}, {"1077", "sign"}, {"1079", "price"}, {"1081", "electronic"}, {"1084", "userRequisite", true},
    {"1085", "userRequisiteName", true}, {"1086", "userRequisiteValue", true}, {"1097", "unsent"}, {"1117", "senderEmail"},
    {"1162", "goodsCode"}, {"1163", "goodsCode"}, {"1171", "supplierPhone", true}, {"1187", "place", true}, {"1192", "receiptRequisite", true},
    {"1197", "unitName"}, {"1199", "tax"}, {"1203", "cashierInn", true}, {"1205", "changeReasons"}, {"1209", "formatVersion"},
    {"1212", "object"}, {"1214", "method"}, {"1215", "prepaid"}, {"1216", "credit"}, {"1217", "other"}, {"1222", "agent"},
    {"1223", "agentData"}, {"1224", "supplierData"}, {"1225", "supplierName", true}, {"1226", "supplierInn", true},
    {"1227", "customerName", true}, {"1228", "customerInn", true}, {"1229", "excise"}, {"1230", "country"},
    {"1231", "declaration"}, {"1243", "customerBirthday", true}, {"1244", "customerCitizenship", true},
    {"1245", "customerDocumentKind", true}, {"1246", "customerDocument", true}, {"1254", "customerAddress", true},
    {"1256", "customerData", true}, {"1260", "industry"}, {"1262", "industryId"}, {"1263", "industryDate"},
    {"1264", "industryNumber"}, {"1265", "industryValue", true}, {"2000", "markingCode"}, {"2003", "plannedStatus"},
    {"2102", "markingMode"}, {"2106", "markResult"}, {"2108", "unit"}, {"2110", "markStatus"},
    {"1191", "itemRequisite", true}, {"1270", "operationRequisite", true}, {"1271", "operationId", true},
    {"1272", "operationData", true}, {"HeaderText", "HeaderText", true}, {"NonFiscalText", "NonFiscalText", true},
    {"TextAfterDoc", "TextAfterDoc", true},
};
// clang-format on

const TagRow* rowOf(const QString& node)
{
    const auto* const found = std::find_if(std::begin(tagRows), std::end(tagRows),
        [&node](const TagRow& row) { return node == QLatin1String(row.tag); });
    return found == std::end(tagRows) ? nullptr : found;
}

} // namespace

QMap<QString, QString> names()
{
    QMap<QString, QString> names;
    for (const TagRow& row : tagRows)
        names.insert(QString::fromLatin1(row.tag), QString::fromLatin1(row.name));
    return names;
}

QString name(const QString& node)
{
    const TagRow* const row = rowOf(node);
    return row == nullptr ? node : QString::fromLatin1(row->name);
}

bool isPersonal(const QString& node)
{
    const TagRow* const row = rowOf(node);
    return row == nullptr ? node.contains(QLatin1String("password"), Qt::CaseInsensitive) : row->isPersonal;
}

} // namespace trace::tagtable
