#include "configuration/keytable.h"

#include "configuration/settingerror.h"

#include "journalerror.h"
#include "plaintext.h"
#include "portname.h"
#include "postgres/postgresplace.h"
#include "receiptnames.h"
#include "showntext.h"
#include "taxnumber.h"

#include <QRegularExpression>
#include <QUrl>

#include <optional>

namespace frserver {

namespace {

constexpr int week = 7 * 24 * 3600;
/// Days and documents.
constexpr int mostOfDrive = 100'000'000;

QString quoted(const QString& value)
{
    return QLatin1Char('"') + receipt::shownText(value) + QLatin1Char('"');
}

/// A value that is not empty and has nothing that neither a register nor a person could read.
const QString& plain(const QString& value)
{
    if (value.trimmed().isEmpty())
        throw SettingError(QStringLiteral("is empty"));
    if (const std::optional<QString> fault = receipt::textFault(value))
        throw SettingError(*fault);
    return value;
}

template <auto Member, typename Settings>
void takeText(const QString& value, Settings& settings)
{
    settings.*Member = plain(value);
}

bool isYes(const QString& value)
{
    const QString word = value.toLower();
    const bool yes = word == QStringLiteral("yes") || word == QStringLiteral("true");
    if (!yes && word != QStringLiteral("no") && word != QStringLiteral("false"))
        throw SettingError(QStringLiteral("%1 is neither yes nor no").arg(quoted(value)));
    return yes;
}

template <auto Member>
void takeSwitch(const QString& value, RegisterSettings& settings)
{
    settings.*Member = isYes(value);
}

int numberUpTo(const QString& value, int least, int most)
{
    bool ok = false;
    const int number = value.toInt(&ok);
    if (!ok || number < least || number > most)
        throw SettingError(
            QStringLiteral("%1 is not a number from %2 to %3").arg(quoted(value)).arg(least).arg(most));
    return number;
}

template <auto Member, int Least, int Most, typename Settings>
void takeNumber(const QString& value, Settings& settings)
{
    settings.*Member = numberUpTo(value, Least, Most);
}

qsizetype oneOf(const QString& value, const QStringList& words)
{
    const qsizetype index = words.indexOf(value);
    if (index < 0)
        throw SettingError(
            QStringLiteral("%1 is none of %2").arg(quoted(value), words.join(QStringLiteral(", "))));
    return index;
}

template <auto Member>
void takeTime(const QString& value, RegisterSettings& settings)
{
    settings.*Member = QTime::fromString(value, QStringLiteral("H:mm"));
    if (!(settings.*Member).isValid())
        throw SettingError(QStringLiteral("%1 is no time as 22:30").arg(quoted(value)));
}

void takePort(const QString& value, RegisterSettings& settings)
{
    settings.port = plain(value);
    if (devices::isTcpName(value) && !devices::tcpAddressOf(value))
        throw SettingError(QStringLiteral("%1 is no tcp:HOST:PORT").arg(quoted(value)));
}

void takeProtocol(const QString& value, RegisterSettings& settings)
{
    static const QStringList names{QStringLiteral("XML"), QStringLiteral("HEX")};
    settings.protocol = oneOf(value.toUpper(), names) == 1 ? receipt::Protocol::Hex : receipt::Protocol::Xml;
}

QString companyInn(const QString& value)
{
    // A test drive may be registered with any digits.
    static const QRegularExpression inn(QStringLiteral("\\A([0-9]{10}|[0-9]{12})\\z"));
    if (!inn.match(value).hasMatch())
        throw SettingError(QStringLiteral("%1 has not 10 or 12 digits").arg(quoted(value)));
    return value;
}

void takeInn(const QString& value, RegisterSettings& settings)
{
    settings.expected.inn = companyInn(value);
}

void takePoolInn(const QString& value, PoolSettings& settings)
{
    settings.inn = companyInn(value);
}

void takeSerial(const QString& value, RegisterSettings& settings)
{
    settings.expected.serial = plain(value);
}

void takeCashier(const QString& value, RegisterSettings& settings)
{
    // Tag 1021.
    constexpr int longestName = 64;
    settings.cashier = plain(value);
    if (value.size() > longestName)
        throw SettingError(
            QStringLiteral("has %1 characters, and may have %2").arg(value.size()).arg(longestName));
}

void takeCashierInn(const QString& value, RegisterSettings& settings)
{
    if (!receipt::isInn(value))
        throw SettingError(QStringLiteral("%1 is no tax number").arg(quoted(value)));
    settings.cashierInn = value;
}

void takeTimeZone(const QString& value, RegisterSettings& settings)
{
    const QByteArray id = value.toLatin1();
    settings.timeZone = QTimeZone(id);
    // Any word stands for UTC under a name of its own, in the rules of POSIX.
    if (!settings.timeZone.isValid() || !QTimeZone::availableTimeZoneIds().contains(id))
        throw SettingError(QStringLiteral("%1 is no time zone as Europe/Moscow").arg(quoted(value)));
}

void takeShift(const QString& value, RegisterSettings& settings)
{
    static const QStringList names{
        QStringLiteral("manual"), QStringLiteral("onSale"), QStringLiteral("scheduled")};
    settings.shift = static_cast<ShiftRule>(oneOf(value, names));
}

void takeClock(const QString& value, RegisterSettings& settings)
{
    static const QStringList names{QStringLiteral("warn"), QStringLiteral("set")};
    settings.clock = static_cast<ClockRule>(oneOf(value, names));
}

void takeMarks(const QString& value, RegisterSettings& settings)
{
    static const QStringList names{QStringLiteral("strict"), QStringLiteral("warn"), QStringLiteral("any")};
    settings.marks = static_cast<sale::MarkPolicy>(oneOf(value, names));
}

QStringList listOf(const QString& value)
{
    QStringList words = plain(value).split(QLatin1Char(','));
    for (QString& word : words)
        word = word.trimmed();
    words.removeDuplicates();
    return words;
}

void takeRegisters(const QString& value, PoolSettings& settings)
{
    settings.registers = listOf(value);
}

void takeTaxSystems(const QString& value, PoolSettings& settings)
{
    QStringList names;
    for (const auto& system : receipt::names::taxSystems())
        names.append(QString::fromLatin1(system.name));
    settings.taxSystems = listOf(value);
    for (const QString& system : std::as_const(settings.taxSystems))
        oneOf(system, names);
}

void takeDrain(const QString& value, PoolSettings& settings)
{
    const QStringList limits = listOf(value);
    for (const QString& limit : limits) {
        const QStringList words = limit.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const bool isDays = words.value(1) == QStringLiteral("days");
        if (words.size() != 2 || (!isDays && words.value(1) != QStringLiteral("documents")))
            throw SettingError(QStringLiteral("%1 is nothing as 30 days, 5000 documents").arg(quoted(limit)));
        (isDays ? settings.drain.days : settings.drain.documents)
            = numberUpTo(words.constFirst(), 1, mostOfDrive);
    }
}

void takePlugin(const QString& value, ServiceSettings& settings)
{
    settings.plugins.append(plain(value));
}

void takeStoreUrl(const QString& value, ServiceSettings& settings)
{
    // What is written there may have a password, and nobody is told it.
    if (!sale::PostgresPlace::isPlace(value))
        throw SettingError(QStringLiteral("is no postgresql://USER@HOST:PORT/DATABASE"));
    try {
        sale::PostgresPlace::of(value);
    } catch (const sale::JournalError& error) {
        throw SettingError(QString::fromUtf8(error.what()));
    }
    settings.storeUrl = value;
}

void takeWebhookUrl(const QString& value, ServiceSettings& settings)
{
    const QUrl url(value, QUrl::StrictMode);
    const bool isHttp = url.scheme() == QStringLiteral("http") || url.scheme() == QStringLiteral("https");
    if (!isHttp || url.host().isEmpty())
        throw SettingError(QStringLiteral("%1 is no http or https address").arg(quoted(value)));
    settings.webhookUrl = value;
}

/// Libraries for webhooks write a key of any bytes as base64 behind these letters.
void takeWebhookSecret(const QString& value, ServiceSettings& settings)
{
    const QString prefix = QStringLiteral("whsec_");
    settings.webhookSecret = value.toUtf8();
    if (!value.startsWith(prefix))
        return;
    const auto key = QByteArray::fromBase64Encoding(
        settings.webhookSecret.sliced(prefix.size()), QByteArray::AbortOnBase64DecodingErrors);
    if (!key || (*key).isEmpty())
        throw SettingError(QStringLiteral("behind whsec_ stands no base64"));
    settings.webhookSecret = *key;
}

} // namespace

const QList<KeyRow<RegisterSettings>>& registerKeys()
{
    static const QList<KeyRow<RegisterSettings>> rows{
        {"port", takePort},
        {"protocol", takeProtocol},
        {"serial", takeSerial},
        {"inn", takeInn},
        {"cashier", takeCashier},
        {"cashier-inn", takeCashierInn},
        {"timezone", takeTimeZone},
        {"shift", takeShift},
        {"shift-open", takeTime<&RegisterSettings::shiftOpen>},
        {"shift-close", takeTime<&RegisterSettings::shiftClose>},
        {"start-before", takeNumber<&RegisterSettings::startBefore, 0, week>},
        {"exclusive", takeSwitch<&RegisterSettings::isExclusive>},
        {"allow-test-drive", takeSwitch<&RegisterSettings::allowsTestDrive>},
        {"clock", takeClock},
        {"marks", takeMarks},
        {"paperless", takeSwitch<&RegisterSettings::isPaperless>},
        {"drive-capacity", takeNumber<&RegisterSettings::driveCapacity, 1, mostOfDrive>},
    };
    return rows;
}

const QList<KeyRow<PoolSettings>>& poolKeys()
{
    static const QList<KeyRow<PoolSettings>> rows{
        {"registers", takeRegisters},
        {"inn", takePoolInn},
        {"tax-systems", takeTaxSystems},
        {"drain", takeDrain},
        {"start-before", takeNumber<&PoolSettings::startBefore, 0, week>},
    };
    return rows;
}

const QList<KeyRow<ServiceSettings>>& serviceKeys()
{
    static const QList<KeyRow<ServiceSettings>> rows{
        {"listen", takeText<&ServiceSettings::listen>},
        {"journal", takeText<&ServiceSettings::journal>},
        {"tokens", takeText<&ServiceSettings::tokens>},
        {"tls-certificate", takeText<&ServiceSettings::tlsCertificate>},
        {"tls-key", takeText<&ServiceSettings::tlsKey>},
        {"plugin", takePlugin},
        {"queue-limit", takeNumber<&ServiceSettings::queueLimit, 1, 1'000'000>},
    };
    return rows;
}

const QList<KeyRow<ServiceSettings>>& storeKeys()
{
    static const QList<KeyRow<ServiceSettings>> rows{
        {"url", takeStoreUrl}, {"lease", takeNumber<&ServiceSettings::leaseSeconds, 3, 600>}};
    return rows;
}

const QList<KeyRow<ServiceSettings>>& webhookKeys()
{
    static const QList<KeyRow<ServiceSettings>> rows{
        {"url", takeWebhookUrl},
        {"secret", takeWebhookSecret},
    };
    return rows;
}

} // namespace frserver
