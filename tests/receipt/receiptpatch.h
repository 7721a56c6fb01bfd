// Receipts as changes of a good one, and what is found in them.

#pragma once

#include "receiptcheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

inline QJsonObject fromText(const QByteArray& text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << text.constData();
    return document.object();
}

/// The base with the fields of the patch; a null takes a field out.
inline QJsonObject patched(QJsonObject base, const QByteArray& patch)
{
    const QJsonObject changes = fromText(patch);
    for (auto field = changes.constBegin(); field != changes.constEnd(); ++field) {
        if (field.value().isNull())
            base.remove(field.key());
        else
            base.insert(field.key(), field.value());
    }
    return base;
}

/// A good receipt of one item for 100 roubles, with changes in its head and in the item.
inline QJsonObject receiptWith(const QByteArray& headPatch, const QByteArray& itemPatch)
{
    const QJsonObject item = patched(
        fromText(R"({"name": "Чай", "price": 50, "quantity": 2, "amount": 100, "tax": {"type": "vat20"}})"),
        itemPatch);
    QJsonObject head = fromText(R"({"type": "sell", "payments": [{"type": "cash", "sum": 1000}]})");
    head.insert(QStringLiteral("items"), QJsonArray{item});
    return patched(head, headPatch);
}

/// A line each: "W items[0].price: ..." for a warning, E for an error.
inline std::string findingsOf(const receipt::CheckedReceipt& checked)
{
    QStringList lines;
    for (const receipt::Finding& finding : checked.findings)
        lines.append((finding.severity == receipt::Finding::Error ? "E " : "W ") + finding.text());
    return lines.join('\n').toStdString();
}
