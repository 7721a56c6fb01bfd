// What the marks of the library of sales cost in exchanges. Nothing is measured by a clock: the bytes tell.

#include "exchanges.h"

#include "bodies.h"
#include "memoryline.h"
#include "peer.h"

#include "abstractfrdriver.h"
#include "frspfsettings.h"
#include "receiptissuer.h"

#include <cstdio>
#include <functional>

namespace {

receipt::Receipt smallSale()
{
    receipt::ReceiptItem item;
    item.position = FrPosition(QStringLiteral("Хлеб бородинский 400 г"), 45.50, 2);
    item.position.setTaxCode(1);
    receipt::Receipt sale;
    sale.requisites = {FdRequisite(EFrDriver::TaxSystem, hw::fr::common::TaxSystemGeneral)};
    sale.cashier = FrUser{QStringLiteral("Иванова"), {}, {}};
    sale.items = {item};
    sale.payments = {FrPayment(0, 91.0)};
    sale.total = sale.paid = 9100;
    return sale;
}

void printRow(Language language, const char* what, const QList<MemoryLine::Exchange>& exchanges)
{
    qsizetype bytes = 0;
    for (const MemoryLine::Exchange& exchange : exchanges)
        bytes += exchange.request.size() + exchange.answer.size();
    std::printf("| %s %s | %d | %.1f |\n", qPrintable(languageName(language)), what,
        static_cast<int>(exchanges.size()), 1e3 * static_cast<double>(bytes) * Peer::secondsPerByte);
}

QList<MemoryLine::Exchange> recorded(MemoryLine& line, const std::function<void()>& work)
{
    const qsizetype before = line.exchanges().size();
    work();
    return line.exchanges().mid(before);
}

void printSales(Language language)
{
    MemoryLine line(liveRegister(language));
    line.setRecording(true);
    FrSpfSettings settings;
    const auto driver = makeDriver(language, line, settings);
    driver->portOpen();
    driver->connect();
    driver->init();
    printRow(language, "connection", recorded(line, [&] {
        driver->connect();
        driver->init();
    }));
    const bool isHex = language == Language::Hex;
    sale::IssueOptions options{{isHex ? receipt::Protocol::Hex : receipt::Protocol::Xml, true}};
    for (const char* what : {"first sale of a connection", "each further one, exclusive register"}) {
        sale::IssueResult result;
        const auto exchanges
            = recorded(line, [&] { result = sale::issueReceipt(*driver, smallSale(), options); });
        printRow(language, what, exchanges);
        if (!result.isIssued() || !result.after)
            std::printf("the sale failed\n");
        else
            options.known = sale::KnownMark{*result.after, true};
    }
}

} // namespace

void printExchanges()
{
    std::printf("\n| sale of one position | exchanges | on the line at 115200 baud, ms |\n|---|--:|--:|\n");
    for (const Language language : {Language::Hex, Language::Xml})
        printSales(language);
}
