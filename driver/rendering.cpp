#include "basicfrdriver.h"
#include "driverlogger.h"

#include <memory>

#include <qrencode.h>

namespace {

using Rows = std::vector<std::vector<unsigned char>>;

std::vector<unsigned char> packedRow(const std::vector<unsigned char>& modules)
{
    std::vector<unsigned char> packed((modules.size() + 7) / 8, 0);
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const unsigned bit = modules[i] & 1U;
        packed[i / 8] = static_cast<unsigned char>(packed[i / 8] | (bit << (7 - i % 8)));
    }
    return packed;
}

Rows moduleMap(const QRcode& code)
{
    const auto width = static_cast<std::size_t>(code.width);
    Rows rows(width, std::vector<unsigned char>(width));
    for (std::size_t row = 0; row < width; ++row) {
        for (std::size_t column = 0; column < width; ++column) {
            const bool dark = (code.data[row * width + column] & 1U) != 0;
            rows[row][column] = dark ? 0xFF : 0;
        }
    }
    return rows;
}

} // namespace

Rows BasicFrDriver::generateQR(const QString& text) const
{
    if (text.isEmpty())
        return {};
    logger->info(QStringLiteral("Генерируем qr-code"));
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
        QRcode_encodeString(text.toLocal8Bit().constData(), 0, QR_ECLEVEL_H, QR_MODE_8, 1), &QRcode_free);
    if (!code) {
        logger->error(QStringLiteral("Не удалось сгенерировать QR код!"));
        return {};
    }
    Rows rows = moduleMap(*code);
    logger->info(QStringLiteral("qr-code сгенерирован"));
    return rows;
}

Rows BasicFrDriver::convertBytes2Bits(const Rows& rows, bool reverse) const
{
    Rows bits;
    bits.reserve(rows.size());
    for (const auto& row : rows)
        bits.push_back(packedRow(row));
    if (reverse) {
        for (auto& row : bits) {
            for (unsigned char& byte : row)
                byte = reverseBits(byte);
        }
    }
    return bits;
}

unsigned char reverseBits(unsigned char byte)
{
    const unsigned halves = (byte & 0xF0U) >> 4U | (byte & 0x0FU) << 4U;
    const unsigned pairs = (halves & 0xCCU) >> 2U | (halves & 0x33U) << 2U;
    return static_cast<unsigned char>((pairs & 0xAAU) >> 1U | (pairs & 0x55U) << 1U);
}
