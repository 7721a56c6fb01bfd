#include "tape/codemodules.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <qrencode.h>
#include <zint.h>

namespace tape {

namespace {

/// Where the library has one kind for several lengths, or fills up what is short, the length decides.
struct BarcodeRule
{
    Symbology symbology;
    int zintNumber;
    /// Of digits; 0 for any text.
    int leastDigits;
    int mostDigits;
};

constexpr BarcodeRule barcodeRules[] = {{Symbology::UpcA, BARCODE_UPCA, 11, 12},
    {Symbology::UpcE, BARCODE_UPCE, 6, 8}, {Symbology::Ean13, BARCODE_EANX, 12, 13},
    {Symbology::Ean8, BARCODE_EANX, 7, 8}, {Symbology::Code39, BARCODE_CODE39, 0, 0},
    {Symbology::Itf, BARCODE_C25INTER, 0, 0}, {Symbology::Codabar, BARCODE_CODABAR, 0, 0},
    {Symbology::Code93, BARCODE_CODE93, 0, 0}, {Symbology::Code128, BARCODE_CODE128, 0, 0}};

const BarcodeRule* ruleOf(const Code& code)
{
    const auto* const found = std::find_if(std::begin(barcodeRules), std::end(barcodeRules),
        [&code](const BarcodeRule& rule) { return rule.symbology == code.symbology; });
    if (found == std::end(barcodeRules))
        return nullptr;
    const auto isDigit
        = [](QChar letter) { return letter >= QLatin1Char('0') && letter <= QLatin1Char('9'); };
    const bool fits = found->mostDigits == 0
        || (code.data.size() >= found->leastDigits && code.data.size() <= found->mostDigits
            && std::all_of(code.data.begin(), code.data.end(), isDigit));
    return fits ? found : nullptr;
}

/// What the library is given: eight digits would be the first ones of a longer code to it.
QByteArray encoded(const Code& code)
{
    constexpr int digitsBeforeCheck = 7;
    return (code.symbology == Symbology::Ean8 ? code.data.left(digitsBeforeCheck) : code.data).toUtf8();
}

QList<QRect> barsOf(const zint_vector& vector)
{
    QList<QRect> bars;
    for (const zint_vector_rect* bar = vector.rectangles; bar != nullptr; bar = bar->next)
        bars.append({static_cast<int>(std::lround(bar->x)), 0, static_cast<int>(std::lround(bar->width)), 1});
    return bars;
}

/// From the first bar to the last one.
CodeModules trimmed(const QList<QRect>& bars, const QString& caption)
{
    QRect all;
    for (const QRect& bar : bars)
        all |= bar;
    CodeModules modules{all.width(), 1, {}, caption};
    for (const QRect& bar : bars)
        modules.black.append(bar.translated(-all.left(), 0));
    return modules;
}

std::optional<CodeModules> barcode(const Code& code)
{
    const BarcodeRule* const rule = ruleOf(code);
    if (rule == nullptr || code.data.isEmpty())
        return std::nullopt;
    const QByteArray data = encoded(code);
    const std::unique_ptr<zint_symbol, void (*)(zint_symbol*)> symbol(ZBarcode_Create(), ZBarcode_Delete);
    symbol->symbology = rule->zintNumber;
    symbol->input_mode = UNICODE_MODE;
    symbol->show_hrt = 0;
    // A module becomes one unit of the vectors.
    symbol->scale = 0.5F;
    const auto* const source = reinterpret_cast<const unsigned char*>(data.constData());
    const int result
        = ZBarcode_Encode_and_Buffer_Vector(symbol.get(), source, static_cast<int>(data.size()), 0);
    if (result >= ZINT_ERROR || symbol->vector == nullptr || symbol->vector->rectangles == nullptr)
        return std::nullopt;
    const QString caption = QString::fromUtf8(reinterpret_cast<const char*>(symbol->text));
    // The check digit that was left out has to be the one that was given.
    if (code.symbology == Symbology::Ean8 && !caption.startsWith(code.data))
        return std::nullopt;
    return trimmed(barsOf(*symbol->vector), caption);
}

std::optional<CodeModules> qrCode(const Code& code)
{
    constexpr int smallestVersion = 0;
    const QByteArray data = code.data.toUtf8();
    const auto* const bytes = reinterpret_cast<const unsigned char*>(data.constData());
    const std::unique_ptr<QRcode, void (*)(QRcode*)> qr(
        QRcode_encodeData(static_cast<int>(data.size()), bytes, smallestVersion, QR_ECLEVEL_M), QRcode_free);
    if (!qr)
        return std::nullopt;
    CodeModules modules{qr->width, qr->width, {}, code.data};
    for (int place = 0; place < qr->width * qr->width; ++place) {
        if ((qr->data[place] & 1) != 0)
            modules.black.append({place % qr->width, place / qr->width, 1, 1});
    }
    return modules;
}

} // namespace

std::optional<CodeModules> modulesOf(const Code& code)
{
    return code.symbology == Symbology::Qr ? qrCode(code) : barcode(code);
}

} // namespace tape
