#pragma once

#include <QRectF>
#include <QString>

namespace tape {

/// Characters in a row that are printed alike.
struct DrawnText
{
    /// The cells, all of one width; the letters are stretched to fill them.
    QRectF box;
    QString text;
    bool isBold = false;
    /// On black that is drawn before.
    bool isWhite = false;
};

} // namespace tape
