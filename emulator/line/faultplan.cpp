#include "line/faultplan.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace emulator {

namespace {

constexpr int onHex = 1;
constexpr int onXml = 2;
constexpr int onBoth = onHex | onXml;

struct ModeName
{
    FaultMode mode;
    const char* name;
    /// What the argument is, null for a mode without one.
    const char* argument;
    /// The argument that the mode takes when none is given.
    int usual;
    int languages;
    int least = 1;
};

constexpr int greatestArgument = 999'999;

// clang-format off
constexpr ModeName modeNames[] = {
    {FaultMode::Silence, "silence", nullptr, 0, onBoth},
    {FaultMode::Lost, "lost", nullptr, 0, onBoth},
    {FaultMode::Late, "late", nullptr, 0, onBoth},
    {FaultMode::Stale, "stale", nullptr, 0, onBoth},
    {FaultMode::Echo, "echo", nullptr, 0, onBoth},
    {FaultMode::BadCheck, "badcheck", nullptr, 0, onBoth},
    {FaultMode::Noise, "noise", nullptr, 0, onBoth},
    {FaultMode::Busy, "busy", "seconds", 5, onBoth},
    {FaultMode::Slow, "slow", "seconds", 1, onBoth},
    {FaultMode::Cut, "cut", nullptr, 0, onBoth},
    {FaultMode::Split, "split", "size", 7, onBoth},
    {FaultMode::Drop, "drop", "byte", 1, onBoth, 0},
    {FaultMode::Flip, "flip", "byte", 1, onBoth, 0},
    {FaultMode::Double, "double", "byte", 1, onBoth, 0},
    {FaultMode::PaperOut, "paper-out", nullptr, 0, onBoth},
    {FaultMode::PaperIn, "paper-in", nullptr, 0, onBoth},
    {FaultMode::PaperEnds, "paper-ends", "lines", 3, onBoth, 0},
    {FaultMode::PaperEndsQuietly, "paper-ends-quietly", "lines", 3, onBoth, 0},
    {FaultMode::Restart, "restart", nullptr, 0, onBoth},
    {FaultMode::Answer, "answer", "[CATEGORY.]CODE", 0, onBoth},
    {FaultMode::ShapeBytes, "answer-shape:bytes", nullptr, 0, onBoth},
    {FaultMode::ShapeBehindForeign, "answer-shape:behind-foreign", nullptr, 0, onBoth},
    {FaultMode::ShapePlain, "answer-shape:plain", nullptr, 0, onXml},
    {FaultMode::ShapeAbsent, "answer-shape:absent", nullptr, 0, onXml},
    {FaultMode::ShapeNoValues, "answer-shape:no-values", nullptr, 0, onXml},
    {FaultMode::ShapeBrokenData, "answer-shape:broken-data", nullptr, 0, onXml},
    {FaultMode::ShapeFlat, "answer-shape:flat", nullptr, 0, onXml},
    {FaultMode::ShapeBlanks, "answer-shape:blanks", nullptr, 0, onXml},
    {FaultMode::ShapeNoDeclaration, "answer-shape:no-declaration", nullptr, 0, onXml},
    {FaultMode::ShapeResult00, "answer-shape:result-00", nullptr, 0, onXml},
    {FaultMode::ShapeCode8, "answer-shape:code-8", nullptr, 0, onXml},
    {FaultMode::ShapeFractions, "answer-shape:fractions", nullptr, 0, onXml},
    {FaultMode::ShapeShift01, "answer-shape:shift-01", nullptr, 0, onXml},
    {FaultMode::ShapeOverflow2, "answer-shape:overflow-2", nullptr, 0, onXml},
    {FaultMode::ShapeAckInside, "answer-shape:ack-inside", nullptr, 0, onHex},
    {FaultMode::ShapeSmallCheck, "answer-shape:small-check", nullptr, 0, onHex},
    {FaultMode::ShapeNoFields, "answer-shape:no-fields", nullptr, 0, onHex},
    {FaultMode::ShapeNoCode, "answer-shape:no-code", nullptr, 0, onHex},
};
// clang-format on

const ModeName* findMode(const QString& name)
{
    const auto* const found = std::find_if(std::begin(modeNames), std::end(modeNames),
        [&name](const ModeName& mode) { return name == QLatin1String(mode.name); });
    return found == std::end(modeNames) ? nullptr : found;
}

const ModeName* findMode(FaultMode mode)
{
    const auto* const found = std::find_if(std::begin(modeNames), std::end(modeNames),
        [mode](const ModeName& candidate) { return candidate.mode == mode; });
    return found == std::end(modeNames) ? nullptr : found;
}

// A code alone is one of HEX, one with a category one of XML.
std::optional<Fault> readAnswer(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(?:([1-9]\\d{0,8})\\.)?([1-9]\\d{0,8})$"));
    const QRegularExpressionMatch match = form.match(text);
    const Fault fault{FaultMode::Answer, match.captured(2).toInt(), match.captured(1).toInt()};
    const bool known = FaultPlan::fits(fault, Language::Hex) || FaultPlan::fits(fault, Language::Xml);
    return known ? std::optional<Fault>(fault) : std::nullopt;
}

std::optional<Fault> readFault(const QString& name, const QString& argument)
{
    if (const ModeName* const shape = findMode(name + QLatin1Char(':') + argument))
        return Fault{shape->mode};
    const ModeName* const mode = findMode(name);
    if (mode == nullptr)
        return std::nullopt;
    if (mode->mode == FaultMode::Answer)
        return readAnswer(argument);
    if (argument.isEmpty())
        return Fault{mode->mode, mode->usual};
    static const QRegularExpression number(QStringLiteral("^\\d{1,6}$"));
    const bool isNumber = mode->argument != nullptr && number.match(argument).hasMatch();
    const int value = argument.toInt();
    return isNumber && value >= mode->least ? std::optional<Fault>(Fault{mode->mode, value}) : std::nullopt;
}

/// What a mode takes; empty for one that there is not.
QString wantedWords(const QString& name)
{
    const ModeName* const mode = findMode(name);
    if (mode == nullptr)
        return {};
    if (mode->mode == FaultMode::Answer)
        return QStringLiteral("answer takes a CODE from 1 to 255 (HEX), or CATEGORY.CODE (XML)");
    if (mode->argument == nullptr)
        return QStringLiteral("%1 takes no N").arg(name);
    return QStringLiteral("%1 takes an N (%2) from %3 to %4")
        .arg(name, QLatin1String(mode->argument))
        .arg(mode->least)
        .arg(greatestArgument);
}

/// Of a known mode that lacks its exchange; empty for anything else.
QString wantedPlace(const QString& text)
{
    static const QRegularExpression name(QStringLiteral("^([a-z-]+)(:[a-z0-9.-]+)?(@0*[+]?)?$"));
    return findMode(name.match(text).captured(1)) == nullptr
        ? QString()
        : QStringLiteral("@ and the number of an exchange, from 1, stand behind it");
}

QString noSuchFault(const QString& text, const QString& why)
{
    const QString words = QStringLiteral("no such fault: \"%1\"").arg(text);
    return why.isEmpty() ? words : words + QStringLiteral(": ") + why;
}

} // namespace

std::optional<FaultPlan> FaultPlan::parse(const QString& text, QString* error)
{
    static const QRegularExpression form(QStringLiteral("^([a-z-]+)(?::([a-z0-9.-]+))?@(\\d{1,9})(\\+?)$"));
    FaultPlan plan;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch match = form.match(part.trimmed());
        const std::optional<Fault> fault = readFault(match.captured(1), match.captured(2));
        const int exchange = match.captured(3).toInt();
        if (!match.hasMatch() || exchange == 0) {
            *error = noSuchFault(part.trimmed(), wantedPlace(part.trimmed()));
            return std::nullopt;
        }
        if (!fault) {
            *error = noSuchFault(part.trimmed(), wantedWords(match.captured(1)));
            return std::nullopt;
        }
        if (match.captured(4).isEmpty())
            plan.add(exchange, *fault);
        else
            plan.addFrom(exchange, *fault);
    }
    return plan;
}

const QString FaultPlan::powerOffBefore = QStringLiteral("power-off-before");
const QString FaultPlan::powerOffAfter = QStringLiteral("power-off-after");

std::optional<Fault> FaultPlan::parseFault(const QString& text)
{
    if (text == powerOffBefore || text == powerOffAfter)
        return Fault{text == powerOffAfter ? FaultMode::Lost : FaultMode::Silence, 0, 0, true};
    static const QRegularExpression form(QStringLiteral("\\A([a-z-]+)(?::([a-z0-9.-]+))?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    return match.hasMatch() ? readFault(match.captured(1), match.captured(2)) : std::nullopt;
}

QString FaultPlan::mistake(const QString& text)
{
    return wantedWords(text.section(QLatin1Char(':'), 0, 0));
}

QString FaultPlan::argumentName(FaultMode mode)
{
    const ModeName* const found = findMode(mode);
    return found == nullptr ? QString() : QLatin1String(found->argument);
}

QString FaultPlan::modeName(FaultMode mode)
{
    const ModeName* const found = findMode(mode);
    return found == nullptr ? QStringLiteral("none") : QLatin1String(found->name);
}

const QList<FaultMode>& FaultPlan::allModes()
{
    static const QList<FaultMode> modes = [] {
        QList<FaultMode> all;
        for (const ModeName& mode : modeNames)
            all.append(mode.mode);
        return all;
    }();
    return modes;
}

QStringList FaultPlan::usage()
{
    QStringList words;
    for (const ModeName& mode : modeNames) {
        const QString name = QLatin1String(mode.name);
        words.append(
            mode.argument == nullptr ? name : name + QLatin1Char(':') + QLatin1String(mode.argument));
    }
    return words;
}

bool FaultPlan::fits(const Fault& fault, Language language)
{
    constexpr int greatestHexCode = 0xFF;
    if (fault.mode == FaultMode::Answer)
        return fault.argument > 0
            && (language == Language::Xml ? fault.category > 0
                                          : fault.category == 0 && fault.argument <= greatestHexCode);
    const ModeName* const mode = findMode(fault.mode);
    return mode == nullptr || (mode->languages & (language == Language::Hex ? onHex : onXml)) != 0;
}

QString FaultPlan::words(const Fault& fault)
{
    if (fault.cutsPower)
        return fault.mode == FaultMode::Lost ? powerOffAfter : powerOffBefore;
    const QString name = modeName(fault.mode);
    if (fault.category > 0)
        return QStringLiteral("%1:%2.%3").arg(name).arg(fault.category).arg(fault.argument);
    return argumentName(fault.mode).isEmpty() ? name : QStringLiteral("%1:%2").arg(name).arg(fault.argument);
}

QString FaultPlan::misfitWords(const Fault& fault, Language language)
{
    const QString name = words(fault);
    const QString other = language == Language::Hex ? QStringLiteral("XML") : QStringLiteral("HEX");
    return QStringLiteral("the fault %1 is one of %2").arg(name, other);
}

QString FaultPlan::Entry::words() const
{
    const QString place = isLasting ? QStringLiteral("%1@%2+") : QStringLiteral("%1@%2");
    return place.arg(FaultPlan::words(fault)).arg(exchange);
}

FaultPlan::Entry FaultPlan::entryAt(int exchange) const
{
    if (m_faults.contains(exchange))
        return {exchange, false, m_faults.value(exchange)};
    const auto after = m_lasting.upperBound(exchange);
    if (after == m_lasting.cbegin())
        return {};
    const auto lasting = std::prev(after);
    return {lasting.key(), true, *lasting};
}

QList<FaultPlan::Entry> FaultPlan::entries() const
{
    QList<Entry> all;
    for (auto fault = m_faults.cbegin(); fault != m_faults.cend(); ++fault)
        all.append({fault.key(), false, *fault});
    for (auto fault = m_lasting.cbegin(); fault != m_lasting.cend(); ++fault)
        all.append({fault.key(), true, *fault});
    return all;
}

QString FaultPlan::misfit(Language language) const
{
    for (const Fault& fault : m_faults.values() + m_lasting.values()) {
        if (!fits(fault, language))
            return misfitWords(fault, language);
    }
    return {};
}

} // namespace emulator
