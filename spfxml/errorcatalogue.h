#pragma once

#include <QString>
#include <tr.h>

namespace spf::utils {

/// Category and message of an error that the register reports over XML, in this order. A code that the
/// catalogue does not know keeps the register's own description.
tr::TrList getErrorMessage(int category, int code, const QString& description);
/// Text of a printer error, empty for a code without one of its own.
tr::Tr getPrinterError(int code);
/// Text of a code whatever its category: the catalogue's, or the description, or a text for neither.
tr::Tr getErrorStr(int code, const QString& description);
/// Text of a category, empty for one not known.
tr::Tr getErrorCategoryStr(int category);

} // namespace spf::utils
