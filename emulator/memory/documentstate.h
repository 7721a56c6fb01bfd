#pragma once

#include "register/opendocument.h"
#include "register/storeddocument.h"

#include <algorithm>
#include <iterator>

namespace emulator {

// A position, an open document and a stored one as the state has them. Archive is StateWriter or StateReader.

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Cashier>& cashier)
{
    archive.field("name", cashier.name);
    archive.field("inn", cashier.inn);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Item>& item)
{
    archive.field("name", item.name);
    archive.field("barcode", item.barcode);
    archive.field("quantity", item.quantity);
    archive.field("price", item.price);
    archive.field("tax", item.tax);
    archive.field("paymentMethod", item.paymentMethod);
    archive.field("paymentObject", item.paymentObject);
    archive.field("unit", item.unit);
    archive.field("measure", item.measure);
    archive.field("country", item.country);
    archive.field("declaration", item.declaration);
    archive.field("markingCode", item.markingCode);
    archive.field("markingStatus", item.markingStatus);
    archive.field("goodsCode", item.goodsCode);
    archive.field("assignedStatus", item.assignedStatus);
    archive.field("agent", item.agent);
    archive.field("industry", item.industry);
    archive.field("rounding", item.rounding);
    archive.field("fullPrice", item.fullPrice);
    archive.field("discount", item.discount);
}

/// A phase that the register can be in.
inline bool isPhase(Phase phase)
{
    constexpr Phase all[] = {Phase::Closed, Phase::Open, Phase::Positions, Phase::Subtotal, Phase::Payment,
        Phase::Unprinted, Phase::CancelImpossible};
    return std::find(std::begin(all), std::end(all), phase) != std::end(all);
}

/// But for positions and body: they grow with each request, and have parts of their own.
template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Document>& document)
{
    archive.field("type", document.type);
    archive.require(document.type >= DocumentType::None && document.type <= DocumentType::CashOut, "type");
    archive.field("phase", document.phase);
    archive.require(isPhase(document.phase), "phase");
    archive.field("cashier", document.cashier);
    archive.field("taxSystem", document.taxSystem);
    archive.field("customer", document.customer);
    archive.field("unprinted", document.unprinted);
    archive.field("payments", document.payments);
    archive.field("money", document.money);
    archive.field("footer", document.footer);
    archive.field("tail", document.tail);
    archive.field("requisites", document.requisites);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<OpenDocument>& open)
{
    archive.field("document", open.document);
    archive.field("agent", open.agent);
    archive.field("marking", open.marking);
    archive.field("held", open.held);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<FiscalRecord>& record)
{
    archive.field("number", record.number);
    archive.field("type", record.type);
    archive.field("dateTime", record.dateTime);
    archive.require(record.dateTime.isValid(), "dateTime");
    archive.field("sign", record.sign);
    archive.field("tags", record.tags);
}

} // namespace emulator
