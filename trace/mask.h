#pragma once

#include "trace/frame.h"

#include <QSet>

namespace trace {

/// Puts stand-ins of the same length in the place of what tells of people: telephones and addresses
/// of customers, names and tax numbers of customers, cashiers and suppliers, the password of the line and the
/// setting that holds it. Check digits that were right are right again. Masking what is masked changes
/// nothing.
///
/// What a host prints as free text, marking codes, and the shop's own name and number stay as they are.
class Mask
{
public:
    /// In the order in which the frames went over the line.
    QByteArray masked(const Frame& frame);

private:
    QByteArray maskedHex(const Frame& frame);
    QByteArray maskedHexFields(
        const QByteArray& bytes, Direction direction, const QByteArray& question) const;

    /// The password of the last request: what comes back with it is an echo.
    QByteArray m_password;
    /// Ids of the requests that asked for the setting with the password.
    QSet<char> m_secretIds;
};

} // namespace trace
