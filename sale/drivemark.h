#pragma once

#include "documentkind.h"
#include "paymentsums.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QtGlobal>

#include <optional>

namespace sale {

/// Number and sum (kopecks) of the shift's operations of one kind.
struct OperationCount
{
    bool operator==(const OperationCount&) const = default;

    qint64 count = 0;
    qint64 sum = 0;
};

/// What the register tells of its documents at some moment: which fiscal drive it has, how far it has
/// counted, and which sums stand in its counters. What a protocol does not tell, or the register did not, is
/// empty, which is never the same as zero. Two of them, before and after a document, are judged by judge.
struct DriveMark
{
    /// False when the register did not tell enough to judge a numbered document by.
    bool isKnown() const { return !drive.isEmpty() && (lastDocument != 0 || (shift && nextReceipt)); }
    bool operator==(const DriveMark&) const = default;

    /// One field for each value that is told; sums in kopecks.
    QJsonObject toJson() const;
    static DriveMark fromJson(const QJsonObject& json);

    /// Number of the drive itself; empty when it was not told.
    QString drive = {};
    /// Number of the drive's last document; 0 when it was not told.
    quint32 lastDocument = 0;
    /// False when the number was counted on from an earlier mark, and not read.
    bool isNumberRead = true;
    std::optional<bool> isShiftOpen = {};
    /// A number that is another one for another shift.
    std::optional<qint64> shift = {};
    /// Number that the shift's next receipt will have.
    std::optional<qint64> nextReceipt = {};
    /// Of the shift's receipts, by kind. A kind that is missing was not told.
    QMap<DocumentKind, PaymentSums> sums = {};
    /// False when sums were counted on from an earlier mark, and not read. What does not fit them proves
    /// nothing.
    bool areSumsRead = true;
    /// Of the shift's cash in and cash out. A kind that is missing was not told.
    QMap<DocumentKind, OperationCount> cash = {};
    /// Kopecks.
    std::optional<qint64> drawer = {};
};

} // namespace sale
