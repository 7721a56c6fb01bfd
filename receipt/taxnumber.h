#pragma once

class QString;

namespace receipt {

/// True for a tax number (INN) as it is given out: 10 digits of a company or 12 of a person, whose check
/// digits are right. Twelve zeros count too: they stand for a supplier or a buyer who has no number.
bool isInn(const QString& text);

} // namespace receipt
