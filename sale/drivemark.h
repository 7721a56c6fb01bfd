#pragma once

#include <QString>
#include <QtGlobal>

namespace sale {

/// The fiscal drive at some moment: which one it is, and how far it has counted.
struct DriveMark
{
    /// False when the register did not tell, or not twice the same.
    bool isKnown() const { return !drive.isEmpty() && lastDocument != 0; }
    bool operator==(const DriveMark&) const = default;

    /// Number of the drive itself.
    QString drive;
    /// Number of its last document; 0 when it could not be read.
    quint32 lastDocument = 0;
};

} // namespace sale
