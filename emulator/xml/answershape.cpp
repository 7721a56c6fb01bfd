#include "xml/answershape.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace emulator::xmlanswershape {

namespace {

struct Shape
{
    FaultMode mode;
    const char* pattern;
    const char* replacement;
};

constexpr Shape shapes[] = {
    {FaultMode::ShapeAbsent, "<ResponseData>.*</ResponseData>", ""},
    {FaultMode::ShapeNoValues, R"((<!\[CDATA\[<pa [^>]*>).*(</pa>\]\]>))", R"(\1\2)"},
    {FaultMode::ShapeBrokenData, R"(<!\[CDATA\[.*\]\]>)", "<![CDATA[<pa]]>"},
    {FaultMode::ShapeFlat, "</?ResponseBody>", ""},
    {FaultMode::ShapeBlanks, "^(.*)$", "\r\n \\1 \r\n"},
    {FaultMode::ShapeNoDeclaration, R"(^<\?xml[^>]*>)", ""},
    {FaultMode::ShapeResult00, "(<Result>)[01]", R"(\100)"},
    {FaultMode::ShapeFractions, R"((n="1135" t="4">\d+))", R"(\1.0)"},
    {FaultMode::ShapeShift01, R"((n="ShiftState" t="4">))", R"(\10)"},
    {FaultMode::ShapeOverflow2, R"((n="StatusOverflow" t="4">)\d)", R"(\12)"},
};

// The section becomes text of the envelope, as other writers of XML put it.
QString withPlainData(const QString& answer)
{
    static const QRegularExpression section(
        QStringLiteral(R"(<!\[CDATA\[(.*)\]\]>)"), QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = section.match(answer);
    return QString(answer).replace(
        match.capturedStart(), match.capturedLength(), match.captured(1).toHtmlEscaped());
}

} // namespace

QByteArray apply(const QByteArray& answer, FaultMode mode)
{
    const auto text = QString::fromUtf8(answer);
    if (mode == FaultMode::ShapePlain)
        return withPlainData(text).toUtf8();
    const auto* const shape = std::find_if(std::begin(shapes), std::end(shapes),
        [mode](const Shape& candidate) { return candidate.mode == mode; });
    if (shape == std::end(shapes))
        return answer;
    const QRegularExpression pattern(
        QLatin1String(shape->pattern), QRegularExpression::DotMatchesEverythingOption);
    return QString(text).replace(pattern, QLatin1String(shape->replacement)).toUtf8();
}

} // namespace emulator::xmlanswershape
