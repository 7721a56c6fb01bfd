#pragma once

#include "excisemarktype.h"
#include "fdrequisite.h"
#include "frhost_export.h"
#include "taxsystem.h"

#include <QByteArray>
#include <QList>
#include <QString>

class FrPosition;
class QDateTime;

/// Helpers around receipts: texts, times, marking codes, tax systems.
class FRHOST_EXPORT FrUtils
{
public:
    /// The text as CP866, one byte a character; what the code page lacks becomes "?".
    static QByteArray to866(const QString& text);
    /// "dd.MM.yyyy hh:mm:ss" for a log; a text of its own for an invalid time.
    static QString getTimeAsString(const QDateTime& dateTime);
    /// Puts a time read from a device in order: two-digit years, which Qt reads as 19xx, belong to this
    /// century.
    static void fixDateTime(QDateTime& dateTime);
    /// A GS1 marking code with the group separators (0x1D) before its fields 91, 92, 93 and so on, also when
    /// the scanner or the host dropped them. Any other code, and one that has its separators, comes back as
    /// it is.
    static QString getMarkingCodeWithSeparators(const QString& code);
    /// Value of tag 1212 for the position, 0 when none is set.
    static int getPaymentObject(const FrPosition& position, const QString& ffdVersion);
    /// The nomenclature code of FFD 1.2 for a marking code: tag 1300 to 1309 by the family of the code, and
    /// its bytes as source data (QByteArray).
    static FdRequisite createNomenclatureCodeRequisiteFFD12(const QString& code, ExciseMarkType type);
    /// The bits of the systems in one mask.
    static int snoMask(const QList<hw::fr::common::TaxSystemType>& systems);
    /// The systems of a mask in ascending order of their bits.
    static QList<hw::fr::common::TaxSystemType> snoList(int mask);
};
