#pragma once

#include <QJsonObject>
#include <QString>

namespace frctl {

/// What has become of a document whose work was broken off. Unasked is the unknown outcome of a document that
/// the fiscal drive does not number, so that there is nothing to ask for.
enum class DocumentOutcome { None, Cancelled, NotCancelled, Unasked, Unknown, Issued, NotIssued };

/// The outcome, and the number of the document in the fiscal drive, 0 where it is not known or has none.
struct DocumentVerdict
{
    // Not explicit: most outcomes have no number.
    DocumentVerdict(DocumentOutcome documentOutcome = DocumentOutcome::None, quint32 documentNumber = 0)
        : outcome(documentOutcome)
        , number(documentNumber)
    {
    }

    bool operator==(const DocumentVerdict&) const = default;

    DocumentOutcome outcome;
    quint32 number;
};

/// The fiscal drive before or after a document: which one, and the number of its last document.
struct DriveMark
{
    QString drive;
    quint32 lastDocument = 0;
};

/// What the drive's marks before and after a close say of the document: issued when the number moved by one,
/// not issued when it did not move, unknown in all other cases.
DocumentVerdict verdictOf(const DriveMark& before, const DriveMark& after);

/// The name that machines read; empty for None.
QString outcomeName(DocumentOutcome outcome);
/// A sentence for the person at the terminal; empty for None.
QString outcomeText(const DocumentVerdict& verdict);
/// Both for machines: "outcome" and, where there is one, "documentNumber"; empty for None.
QJsonObject documentJson(const DocumentVerdict& verdict);

} // namespace frctl
