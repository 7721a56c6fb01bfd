#pragma once

#include "errorkind.h"

#include <optional>

namespace sale {

/// Kind of a register's error by the text that the driver has for it, or of a refusal of the driver itself.
/// The contract's exceptions carry their class and this text and nothing else; each row of the drivers'
/// error tables has one text, in which they put the register's code. Over XML the text of the category
/// stands in front. Nothing for a text that is in no table, such as the register's own words for a code that
/// the driver does not know.
std::optional<ErrorKind> errorKindOfText(const QString& text);
/// Kind of whatever has that category over XML; nothing for a text that begins with none.
std::optional<ErrorKind> errorKindOfCategory(const QString& text);
/// Whether the register says that its state forbids the command: it has not begun to do it.
bool isRefusalOfState(const QString& text);

} // namespace sale
