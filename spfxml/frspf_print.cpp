// Money documents and texts, and what is printed in documents of all kinds.

#include "frspf.h"

#include <checktypename.h>
#include <decimals.h>

#include <QJsonObject>

namespace spfxml {

namespace {

QString barcodeTypeName(int type)
{
    static const QMap<int, QString> names{
        {Barcode::UpcA, QStringLiteral("UPC-A")},
        {Barcode::UpcE, QStringLiteral("UPC-E")},
        {Barcode::Ean8, QStringLiteral("EAN-8")},
        {Barcode::Code39, QStringLiteral("CODE 39")},
        {Barcode::Itf, QStringLiteral("ITF")},
        {Barcode::Codabar, QStringLiteral("CODABAR")},
        {Barcode::Pdf417, QStringLiteral("PDF417")},
        {Barcode::Code93, QStringLiteral("CODE 93")},
        {Barcode::Code128, QStringLiteral("CODE 128")},
        {Barcode::Code128A, QStringLiteral("CODE 128A")},
        {Barcode::Code128B, QStringLiteral("CODE 128B")},
        {Barcode::Code128C, QStringLiteral("CODE 128C")},
    };
    return names.value(type, QStringLiteral("неизвестный тип штрих-кода"));
}

} // namespace

void FrSpf::moneyCheckOpen(hw::fr::CheckType type, const QString&)
{
    logger->info(QStringLiteral("Открытие чека: ") + checkTypeName(type));
    moneyCheckType = type;
    printLines.clear();
}

QJsonObject FrSpf::moneyCheckClose(double sum)
{
    logger->info(
        QStringLiteral("Закрытие чека %1, сумма %2").arg(checkTypeName(moneyCheckType), moneyText(sum)));
    isPortReady();
    command->moneyOperation(moneyCheckType, sum, printLines);
    return {};
}

void FrSpf::textDocOpen(hw::fr::CheckType)
{
    logger->info(QStringLiteral("Открытие текстового документа"));
    printLines.clear();
}

void FrSpf::textDocPrint(const QList<QString>& lines)
{
    logger->debug(QStringLiteral("Добавление строк текста для печати"));
    printLines.append(FrPrintData::forText(lines));
}

void FrSpf::checkPrint(const QList<QString>& lines)
{
    textDocPrint(lines);
}

void FrSpf::moneyCheckPrint(const QList<QString>& lines)
{
    textDocPrint(lines);
}

void FrSpf::textDocClose()
{
    logger->info(QStringLiteral("Закрытие текстового документа"));
    isPortReady();
    command->nonFiscalDocument(printLines);
}

void FrSpf::barcodePrint(const Barcode& barcode)
{
    logger->info(QStringLiteral("Добавление штрих-кода для печати: ") + barcode.text);
    if (barcode.type == Barcode::Ean13 || barcode.type == Barcode::Qr)
        printLines.append(FrPrintData::forBcode(barcode));
    else
        logger->error(
            QStringLiteral("Тип штрих-кода %1 не поддерживается ФР").arg(barcodeTypeName(barcode.type)));
}

void FrSpf::setFont(const QList<EFrDriver::FontTypes>& fonts)
{
    printLines.append(FrPrintData::forSetFont(fonts));
}

void FrSpf::resetFont()
{
    printLines.append(FrPrintData::forSetFont({EFrDriver::NormalFont}));
}

} // namespace spfxml
