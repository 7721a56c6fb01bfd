#pragma once

#include <QString>

#include <optional>

namespace tape {

/// Kinds of code. Other stands for one that is known by its number alone, or not at all.
enum class Symbology { UpcA, UpcE, Ean13, Ean8, Code39, Itf, Codabar, Code93, Code128, Qr, Other };

/// As people write it, "EAN-13" for one.
QString symbologyName(Symbology symbology);
/// No value for a name that there is not.
std::optional<Symbology> symbologyOf(const QString& name);

} // namespace tape
