#pragma once

#include "trace/frame.h"

#include <QSet>

namespace trace {

/// Puts stand-ins of the same length in the place of what tells of people, or may: telephones, addresses,
/// names and tax numbers of customers, cashiers, agents and suppliers, lines that a host prints, what is in
/// its bar and QR codes, additional requisites, the password of the line and the setting that holds it. Check
/// digits that were right are right again. Masking what is masked changes nothing.
///
/// Goods, sums, numbers of documents, marking codes, settings, and the shop's own name and number stay as
/// they are.
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
