#include "printoutcommands.h"

#include "abstractfrdriver.h"
#include "errors.h"
#include "frctltr.h"
#include "inputfile.h"
#include "textcheck.h"

namespace frctl {

namespace {

constexpr qsizetype headerLines = 4;
constexpr qsizetype tailLines = 2;

/// The lines of the file, checked against the rows that the register has.
QStringList fittingLines(const Options& options, qsizetype rows)
{
    QStringList lines = readLines(options.arguments.constFirst());
    if (lines.size() > rows)
        throw UsageError(tr("%1: has %2 lines, the register takes %3")
                             .arg(options.arguments.constFirst())
                             .arg(lines.size())
                             .arg(rows));
    // Over HEX each row is a parameter of its own: those that the file does not fill would keep their text.
    while (options.isHex() && lines.size() < rows)
        lines.append(QString());
    TextCheck texts(options);
    lines = texts.keptLines(options.arguments.constFirst(), lines);
    texts.finish();
    return lines;
}

Task programming(const QStringList& lines, bool (AbstractFrDriver::*write)(const QList<QString>&))
{
    return onRegister([lines, write](AbstractFrDriver& driver) -> Output {
        if (!(driver.*write)(lines))
            throw Refusal(tr("the register refused the lines"));
        return {{tr("lines programmed")}, {{QStringLiteral("programmed"), true}}};
    });
}

Output clearLogo(AbstractFrDriver& driver)
{
    driver.clearGraphicCliche();
    return {{tr("header picture removed")}, {{QStringLiteral("cleared"), true}}};
}

} // namespace

Task prepareHeader(const Options& options)
{
    return programming(fittingLines(options, headerLines), &AbstractFrDriver::setCliche);
}

Task prepareTail(const Options& options)
{
    const QStringList lines = fittingLines(options, tailLines);
    requireHex(options, QStringLiteral("tail"));
    return programming(lines, &AbstractFrDriver::setTail);
}

Task prepareLogo(const Options& options)
{
    if (options.clear != options.arguments.isEmpty())
        throw UsageError(tr("logo takes a file or --clear"));
    if (options.clear) {
        requireHex(options, QStringLiteral("logo --clear"));
        return onRegister(clearLogo);
    }
    const QString fileName = options.arguments.constFirst();
    // The driver says of a file that is not there what it says of one that is no picture.
    static_cast<void>(readFile(fileName));
    return onRegister([fileName](AbstractFrDriver& driver) -> Output {
        if (!driver.setGraphicCliche(fileName))
            throw Refusal(tr("%1 is no picture, or the register refused it").arg(fileName));
        return {{tr("header picture programmed")}, {{QStringLiteral("programmed"), true}}};
    });
}

} // namespace frctl
