#include "measures.h"

#include <QCoreApplication>
#include <QUuid>

#include <cstdio>
#include <exception>

namespace {

/// One position, as most sales of a kiosk have: the shortest on the line, so that all else counts most.
const QByteArray saleText = R"({"type": "sell", "taxationType": "osn",
    "operator": {"name": "Иванова А. П.", "vatin": "772100000040"},
    "items": [{"type": "position", "name": "Хлеб Бородинский 400 г", "price": 64.90, "quantity": 2,
        "amount": 129.80, "tax": {"type": "vat10"}}],
    "payments": [{"type": "cash", "sum": 500.00}]})";

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
            compare(arguments, saleText);
        else if (what == QStringLiteral("load"))
            load(arguments, saleText);
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
