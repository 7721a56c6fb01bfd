#pragma once

#include "tape/cells.h"

#include <QList>

namespace tape {

/// One line of characters; without cells it is a blank one.
struct TextLine
{
    QList<Cells> cells;

    static TextLine of(const QString& text, Attributes attributes = {}) { return {{{text, attributes}}}; }

    bool operator==(const TextLine&) const = default;
};

} // namespace tape
