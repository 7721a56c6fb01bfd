// A preview is what the software register prints when the receipt is really sold to it.

#include "programs.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

/// From the heading to the number of the receipt: what follows is of that drive and minute.
QString receiptPart(const QString& tape)
{
    return tape.section(QStringLiteral("КАССОВЫЙ ЧЕК"), 1).section(QStringLiteral("ЧЕК: "), 0, 0);
}

QString exampleFile(const char* name)
{
    return QStringLiteral(FRSPF_EXAMPLES "/") + name;
}

QString receiptFile(const QTemporaryDir& folder, const QJsonObject& receipt)
{
    return written(folder, "receipt.json", QJsonDocument(receipt).toJson());
}

QJsonObject longReceipt(int positions)
{
    QJsonObject receipt = QJsonDocument::fromJson(readAll(exampleFile("sale.json"))).object();
    QJsonArray items;
    for (int number = 0; number < positions; ++number)
        items.append(QJsonObject{{"type", "position"}, {"name", "Хлеб"}, {"price", 1}, {"quantity", 1},
            {"amount", 1}, {"tax", QJsonObject{{"type", "none"}}}});
    receipt["items"] = items;
    receipt["payments"] = QJsonArray{QJsonObject{{"type", "cash"}, {"sum", positions}}};
    return receipt;
}

} // namespace

TEST(Preview, IsWhatTheRegisterPrints)
{
    const std::tuple<const char*, const char*, const char*, const char*> rows[]
        = {{"XML", "44", "sell", "sale.json"}, {"XML", "48", "refund", "return.json"},
            {"HEX", "44", "sell", "barcodes-hex.json"}, {"HEX", "48", "sell", "marked-sale.json"}};
    for (const auto& [protocol, width, command, file] : rows) {
        const Emulator emulator({"--width", width});
        const Result sold
            = runFrctl({"--port", emulator.port(), "--protocol", protocol, command, exampleFile(file)});
        ASSERT_EQ(sold.status, 0) << sold.errors.toStdString();
        const Result preview = runFrctl({"--protocol", protocol, "--width", width, "--journal",
            "/dev/null/journal", "preview", exampleFile(file)});
        ASSERT_EQ(preview.status, 0) << preview.errors.toStdString();
        const QString part = receiptPart(QString::fromUtf8(preview.output));
        EXPECT_TRUE(part.contains(QStringLiteral("ИТОГ"))) << file;
        EXPECT_EQ(part.toStdString(), receiptPart(emulator.tape()).toStdString());
    }
}

TEST(Preview, ReceiptWithoutTaxSystemOrPaperIsShown)
{
    QJsonObject receipt = QJsonDocument::fromJson(readAll(exampleFile("electronic-sale.json"))).object();
    receipt.remove("taxationType");
    const QTemporaryDir folder;
    const Result preview = runFrctl({"--json", "preview", receiptFile(folder, receipt)});
    EXPECT_TRUE(preview.output.contains("СНО: ОСН")) << preview.errors.toStdString();
    EXPECT_TRUE(preview.errors.contains("electronically: a register prints nothing of it"));
}

TEST(Preview, WhatTheRegisterRefusesIsToldAsWhatTheChecksFind)
{
    const QTemporaryDir folder;
    // More positions than a register takes, which no rule of the receipt says.
    const QString file = receiptFile(folder, longReceipt(1001));
    const QPair<const char*, const char*> rows[]{
        {"HEX", "the register refuses it: Кол-во позиций в документе превысило допустимый предел"},
        {"XML", "the register refuses it: Внутренняя ошибка. Некорректный документ (8: too many positions)"}};
    for (const auto& [protocol, text] : rows) {
        const Result preview = runFrctl({"--json", "--protocol", protocol, "preview", file});
        EXPECT_EQ(preview.status, 2);
        const QJsonObject error = preview.json()["error"].toObject();
        EXPECT_EQ(error["exception"], "ReceiptError");
        const QString told = error["findings"].toArray().at(0)["text"].toString();
        EXPECT_TRUE(told.startsWith(text)) << told.toStdString();
    }
}

TEST(Preview, PictureHasCodesThatAScannerReads)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("receipt.png");
    const Result preview = runFrctl(
        {"--json", "--protocol", "HEX", "--png", file, "preview", exampleFile("barcodes-hex.json")});
    ASSERT_EQ(preview.status, 0) << preview.errors.toStdString();
    const QByteArray read = runShell("zbarimg -q " + file).output;
    EXPECT_TRUE(read.contains("CODE-128:TICKET-000123\n")) << read.toStdString();
    EXPECT_TRUE(read.contains("QR-Code:TICKET-000123\n"));
    EXPECT_TRUE(read.contains("&s=450.00&fn=9999078900001234&"));
    const Result tooLong = runFrctl({"--png", file, "preview", receiptFile(folder, longReceipt(700))});
    EXPECT_TRUE(tooLong.errors.contains("the page is too long for a PNG")) << tooLong.errors.toStdString();
    EXPECT_EQ(runFrctl({"--png", "/dev/null/a.png", "preview", exampleFile("sale.json")}).status, 1);
    // A drawing program may say so before it has read all.
    const Result early = runShell(QStringLiteral(
        "cd %1; cp " FRCTL " frctl; printf '#!/bin/sh\\nexit 3\\n' > frspf-draw; "
        "chmod +x frspf-draw; exec ./frctl --plugin " SPF_PLUGIN " --png a.png preview receipt.json")
                                      .arg(folder.path()));
    EXPECT_TRUE(early.errors.contains("the page is too long for a PNG")) << early.errors.toStdString();
}
