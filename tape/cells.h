#pragma once

#include "tape/attribute.h"

#include <QString>

namespace tape {

/// Neighbouring cells of a line that are printed alike: a character each.
struct Cells
{
    QString text;
    Attributes attributes;

    bool operator==(const Cells&) const = default;
};

} // namespace tape
