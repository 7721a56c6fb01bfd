#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace frctl {

/// A parameter of the register as its driver lists it.
struct ParameterEntry
{
    /// "20.0" over HEX, "OFD.OFD.OFD_Host" over XML; empty for one that has no name here.
    QString id;
    /// Rows of an array without a caption of their own carry that of the array.
    QString caption;
    QString value;

    /// By the id, the beginning of the id up to a point, or, unless it is a number, a part of the caption.
    bool matches(const QString& wanted) const;
};

/// Reads the parameters back out of a driver's printout of that width: captions left, values right, long ones
/// continued on further lines.
QList<ParameterEntry> readHexDescription(const QStringList& lines, int width);
QList<ParameterEntry> readXmlDescription(const QStringList& lines, int width);

} // namespace frctl
