#pragma once

#include "tape/drawntext.h"

#include <QList>
#include <QRect>
#include <QSize>

namespace tape {

/// What is on the paper, in dots of the printer from the paper's upper left corner.
struct Drawing
{
    /// A printer has eight of them on a millimetre.
    static constexpr int dotsPerMillimetre = 8;

    QSize size;
    QList<QRect> black;
    QList<DrawnText> texts;
};

} // namespace tape
