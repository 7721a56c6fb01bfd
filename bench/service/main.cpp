#include "measures.h"

#include <QCoreApplication>
#include <QUuid>

#include <cstdio>
#include <exception>

/// So many positions of a shop.
QByteArray receiptOf(int positions)
{
    const QByteArray position = R"({"type": "position", "name": "Хлеб Бородинский 400 г", "price": 64.90,
        "quantity": 2, "amount": 129.80, "tax": {"type": "vat10"}})";
    return R"({"type": "sell", "taxationType": "osn", "operator": {"name": "Иванова А. П.",
        "vatin": "772100000040"}, "payments": [{"type": "cash", "sum": 5000.00}], "items": [)"
        + QByteArrayList(positions, position).join(", ") + "]}";
}

namespace {

void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) { }

} // namespace

QByteArray newSaleId()
{
    return "bench:" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(dropMessage);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const QString what = arguments.isEmpty() ? QString() : arguments.takeFirst();
    try {
        if (what == QStringLiteral("compare"))
            compare(arguments, receiptOf(1));
        else if (what == QStringLiteral("load"))
            load(arguments);
        else if (what == QStringLiteral("relay"))
            relay(arguments);
        else
            return 2;
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "servicebench: %s\n", failure.what());
        return 1;
    }
}
