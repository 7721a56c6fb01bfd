#pragma once

#include "tape/code.h"

#include <QList>
#include <QRect>

#include <optional>

namespace tape {

/// A code as a scanner sees it, without the white around it.
struct CodeModules
{
    /// Of a barcode the rows are one, as high as one likes.
    int columns = 0;
    int rows = 1;
    QList<QRect> black;
    /// What stands in it with its check digit, for people.
    QString caption;
};

/// Nothing for a kind that is not known and for data that cannot stand in a code of that kind.
std::optional<CodeModules> modulesOf(const Code& code);

} // namespace tape
