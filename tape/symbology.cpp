#include "tape/symbology.h"

#include <algorithm>
#include <iterator>

namespace tape {

namespace {

struct SymbologyName
{
    Symbology symbology;
    const char* name;
};

constexpr SymbologyName symbologyNames[] = {{Symbology::UpcA, "UPC-A"}, {Symbology::UpcE, "UPC-E"},
    {Symbology::Ean13, "EAN-13"}, {Symbology::Ean8, "EAN-8"}, {Symbology::Code39, "CODE39"},
    {Symbology::Itf, "ITF"}, {Symbology::Codabar, "CODABAR"}, {Symbology::Code93, "CODE93"},
    {Symbology::Code128, "CODE128"}, {Symbology::Qr, "QR"}, {Symbology::Other, "other"}};

} // namespace

QString symbologyName(Symbology symbology)
{
    const auto* const found = std::find_if(std::begin(symbologyNames), std::end(symbologyNames),
        [symbology](const SymbologyName& candidate) { return candidate.symbology == symbology; });
    return QLatin1String(found->name);
}

std::optional<Symbology> symbologyOf(const QString& name)
{
    const auto* const found = std::find_if(std::begin(symbologyNames), std::end(symbologyNames),
        [&name](const SymbologyName& candidate) { return name == QLatin1String(candidate.name); });
    return found == std::end(symbologyNames) ? std::nullopt : std::optional<Symbology>(found->symbology);
}

} // namespace tape
