#include "program/identityoptions.h"

#include "program/numberoption.h"
#include "program/options.h"
#include "register/drivenumber.h"
#include "register/register.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QMap>
#include <QRegularExpression>

#include <limits>

namespace identityoptions {

namespace {

constexpr int noDays = std::numeric_limits<int>::min();

// Characters 4 and 5 of the factory number tell the model.
QString defaultSerial(int model)
{
    return QStringLiteral("001") + QStringLiteral("%1").arg(model % 100, 2, 10, QLatin1Char('0'))
        + QStringLiteral("000000012345678");
}

// It stands in answers of both protocols: nothing that is a sign of a line's own, and not nothing.
bool isSerial(const QString& number)
{
    static const QRegularExpression form(QStringLiteral("\\A(?! *\\z)[\\x20-\\x7E]{1,20}\\z"));
    return form.match(number).hasMatch();
}

QString readWidthAndSerial(const QCommandLineParser& parser, emulator::Identity& identity)
{
    if (identity.width != 44 && identity.width != 48)
        return QStringLiteral("--width is 44 or 48");
    identity.serialNumber = defaultSerial(identity.model);
    if (parser.isSet(QStringLiteral("serial")))
        identity.serialNumber = parser.value(QStringLiteral("serial")).leftJustified(20);
    return isSerial(identity.serialNumber)
        ? QString()
        : QStringLiteral("--serial is 1 to 20 digits, Latin letters and signs");
}

QString readDrive(const QCommandLineParser& parser, QString& number)
{
    const QString name = QStringLiteral("drive");
    number = parser.isSet(name) ? parser.value(name) : emulator::drivenumber::fresh();
    return emulator::drivenumber::isGood(number) ? QString()
                                                 : QStringLiteral("--drive is 9999 and 12 more digits");
}

QString readClock(const QCommandLineParser& parser, qint64& ahead)
{
    if (!parser.isSet(QStringLiteral("clock")))
        return {};
    const QDateTime time = QDateTime::fromString(parser.value(QStringLiteral("clock")), Qt::ISODate);
    ahead = QDateTime::currentDateTime().msecsTo(time);
    return emulator::Register::isClockTime(time)
        ? QString()
        : QStringLiteral("--clock is a time as 2026-03-01T09:00:00, in the years 2000 to 2099");
}

int drivePhase(const QString& text)
{
    static const QMap<QString, int> names{{QStringLiteral("ready"), emulator::DriveLife::ready},
        {QStringLiteral("fiscal"), emulator::DriveLife::fiscalMode},
        {QStringLiteral("closed"), emulator::DriveLife::closed},
        {QStringLiteral("read"), emulator::DriveLife::archiveRead}};
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok && number >= 0 && number <= emulator::DriveLife::archiveRead ? number : names.value(text, -1);
}

QString readDriveLife(const QCommandLineParser& parser, emulator::DriveLife& life)
{
    int documents = -1;
    int days = noDays;
    QString error = readNumber(parser, "drive-documents-left", 0, 1'000'000'000, documents);
    if (error.isEmpty())
        error = readNumber(parser, "drive-days-left", -10'000, 10'000, days);
    if (!error.isEmpty())
        return error;
    if (documents >= 0)
        life.documentsLeft = documents;
    if (days != noDays)
        life.daysLeft = days;
    if (parser.isSet(QStringLiteral("drive-phase")))
        life.phase = drivePhase(parser.value(QStringLiteral("drive-phase")));
    return life.phase >= 0 ? QString()
                           : QStringLiteral("--drive-phase is ready, fiscal, closed, read, or 0 to 15");
}

bool readYesNo(const QString& word, bool& value)
{
    if (!word.isEmpty())
        value = word == QStringLiteral("yes");
    return word.isEmpty() || value || word == QStringLiteral("no");
}

} // namespace

void describe(QCommandLineParser& parser)
{
    parser.addOptions({
        {QStringLiteral("model"), QStringLiteral("Model code."), QStringLiteral("CODE")},
        {QStringLiteral("serial"), QStringLiteral("Factory number, 20 characters at the most."),
            QStringLiteral("NUMBER")},
        {QStringLiteral("drive"),
            QStringLiteral(
                "Number of the fiscal drive: 16 digits, the first four 9999 (another one each start)."),
            QStringLiteral("NUMBER")},
        {QStringLiteral("drive-phase"),
            QStringLiteral("Phase of the drive's life: ready, fiscal, closed, read, or a number (fiscal)."),
            QStringLiteral("NAME")},
        {QStringLiteral("drive-documents-left"),
            QStringLiteral("Documents that the drive has room for (no end)."), QStringLiteral("COUNT")},
        {QStringLiteral("drive-days-left"),
            QStringLiteral("Days until the drive expires, negative when it has (15 months)."),
            QStringLiteral("DAYS")},
        {QStringLiteral("electronic-without-paper"),
            QStringLiteral("yes: receipts by mail only are not printed; no: they are, as all others (yes)."),
            QStringLiteral("WORD")},
        {QStringLiteral("clock"),
            QStringLiteral("Let the clock run from that time, as 2026-03-01T09:00:00 (the computer's)."),
            QStringLiteral("TIME")},
        {QStringLiteral("width"), QStringLiteral("Characters on a line of the tape, 44 or 48."),
            QStringLiteral("WIDTH")},
    });
}

QString readNumbers(const QCommandLineParser& parser, Options& options)
{
    const QString error = readNumber(parser, "model", 0, 9999, options.identity.model);
    return error.isEmpty() ? readNumber(parser, "width", 44, 48, options.identity.width) : error;
}

QString read(const QCommandLineParser& parser, Options& options)
{
    emulator::Identity& identity = options.identity;
    QString error = readWidthAndSerial(parser, identity);
    if (error.isEmpty())
        error = readDrive(parser, identity.driveNumber);
    if (error.isEmpty())
        error = readDriveLife(parser, identity.driveLife);
    if (!error.isEmpty())
        return error;
    if (!readYesNo(parser.value(QStringLiteral("electronic-without-paper")), identity.electronicWithoutPaper))
        return QStringLiteral("--electronic-without-paper is yes or no");
    return readClock(parser, options.clockAhead);
}

} // namespace identityoptions
