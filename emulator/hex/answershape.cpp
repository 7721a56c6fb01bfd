#include "hex/answershape.h"

#include "hex/framer.h"

namespace emulator::hexanswershape {

namespace {

constexpr qsizetype codeOffset = 4;
constexpr qsizetype fieldsOffset = 6;
constexpr qsizetype checkDigits = 2;

// The frame without its fields and with that code.
QByteArray bare(const QByteArray& answer, const QByteArray& code)
{
    const QByteArray body = answer.mid(1, codeOffset - 1) + code + HexFramer::endOfText;
    return answer.first(1) + body + HexFramer::twoDigits(HexFramer::checkValue(body));
}

} // namespace

QByteArray apply(const QByteArray& answer, FaultMode mode)
{
    switch (mode) {
    case FaultMode::ShapeAckInside:
        return QByteArray(answer).insert(fieldsOffset, HexFramer::acknowledge);
    case FaultMode::ShapeSmallCheck:
        return answer.chopped(checkDigits) + answer.last(checkDigits).toLower();
    case FaultMode::ShapeNoFields:
        return bare(answer, answer.mid(codeOffset, fieldsOffset - codeOffset));
    case FaultMode::ShapeNoCode:
        return bare(answer, "ZZ");
    default:
        return answer;
    }
}

} // namespace emulator::hexanswershape
