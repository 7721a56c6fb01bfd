#pragma once

#include "fruser.h"

#include <QStringList>
#include <QtGlobal>

#include <optional>

namespace sale {

struct DocumentRequest;

/// What a document that is no receipt is made of.
struct PlainDocument
{
    enum Kind { OpenShift, ZReport, XReport, AccountingReport, CashIn, CashOut, Text, Copy };

    Kind kind = OpenShift;
    /// Of cash.
    qint64 kopecks = 0;
    /// Of a text.
    QStringList lines = {};
    /// Of a copy; 0 for the drive's last document.
    quint32 documentNumber = 0;
};

/// By the name that the journal has; nothing for any other document.
std::optional<PlainDocument::Kind> plainKindOf(const QString& name);
/// Reads it from kind and body: "sum" in roubles, "lines", "documentNumber" (missing for the last one).
/// Throws ReceiptError.
PlainDocument plainDocumentOf(const DocumentRequest& request);
/// The one that the body names as "operator", as a receipt does; nothing for none.
std::optional<FrUser> plainCashier(const DocumentRequest& request);

} // namespace sale
