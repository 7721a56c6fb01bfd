#include "configuration/configuration.h"

#include "configuration/configurationerror.h"
#include "configuration/keytable.h"
#include "configuration/settingerror.h"

#include "inifile.h"
#include "portname.h"
#include "showntext.h"
#include "textencoding.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <optional>

namespace frserver {

namespace {

using devices::IniEntry;
using devices::IniSection;

/// No configuration is larger; what has no end, as a device, is known by it.
constexpr qint64 largestFile = 1024LL * 1024;

QStringList linesOf(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw ConfigurationError({QStringLiteral("%1: %2").arg(fileName, file.errorString())});
    const QByteArray bytes = file.read(largestFile + 1);
    if (bytes.size() > largestFile)
        throw ConfigurationError({QStringLiteral("%1: has more than 1 MiB").arg(fileName)});
    if (const std::optional<QString> fault = receipt::utf8Fault(bytes))
        throw ConfigurationError({QStringLiteral("%1: %2").arg(fileName, *fault)});
    return QString::fromUtf8(receipt::withoutByteOrderMark(bytes)).split(QLatin1Char('\n'));
}

class Reader
{
public:
    explicit Reader(const QString& fileName)
        : m_fileName(fileName)
    {
    }

    Configuration read()
    {
        try {
            for (const IniSection& section : devices::readIni(linesOf(m_fileName)))
                take(section);
        } catch (const devices::IniError& error) {
            note(error.line(), receipt::shownText(QString::fromUtf8(error.what())));
        }
        finish();
        if (!m_errors.isEmpty())
            throw ConfigurationError(m_errors);
        return m_configuration;
    }

private:
    void take(const IniSection& section)
    {
        static const QString prefix = QStringLiteral("register ");
        static const QString poolPrefix = QStringLiteral("pool ");
        ServiceSettings& service = m_configuration.service;
        if (section.name == QStringLiteral("service")) {
            takeEntries(section, serviceKeys(), service);
            placeListen(section);
            if (service.tlsCertificate.isEmpty() != service.tlsKey.isEmpty())
                note(section.line, QStringLiteral("tls-certificate and tls-key go together"));
        } else if (section.name == QStringLiteral("store")) {
            takeEntries(section, storeKeys(), service);
            if (!hasKey(section, "url"))
                note(section.line, QStringLiteral("[store] needs a url"));
            m_storeLine = section.line;
        } else if (section.name == QStringLiteral("webhook")) {
            takeEntries(section, webhookKeys(), service);
            if (service.webhookUrl.isEmpty() || service.webhookSecret.isEmpty())
                note(section.line, QStringLiteral("[webhook] needs url and secret"));
        } else if (section.name.startsWith(prefix)) {
            takeRegister(section, section.name.mid(prefix.size()).trimmed());
        } else if (section.name.startsWith(poolPrefix)) {
            takePool(section, section.name.mid(poolPrefix.size()).trimmed());
        } else {
            note(section.line,
                QStringLiteral("[%1] is none of [service], [store], [webhook], [register NAME], [pool NAME]")
                    .arg(receipt::shownText(section.name)));
        }
    }

    void placeListen(const IniSection& section)
    {
        for (const IniEntry& entry : section.entries) {
            if (entry.key == QStringLiteral("listen"))
                m_configuration.service.listenPlace = QStringLiteral("%1:%2").arg(m_fileName).arg(entry.line);
        }
    }

    template <typename Settings>
    void takeEntries(const IniSection& section, const QList<KeyRow<Settings>>& rows, Settings& settings)
    {
        for (const IniEntry& entry : section.entries) {
            const auto row = std::find_if(rows.cbegin(), rows.cend(),
                [&entry](const KeyRow<Settings>& one) { return entry.key == QLatin1String(one.key); });
            if (row == rows.cend()) {
                noteKey(section, entry, rows);
                continue;
            }
            try {
                row->take(entry.value, settings);
            } catch (const SettingError& error) {
                note(entry.line, QStringLiteral("%1: %2").arg(entry.key, QString::fromUtf8(error.what())));
            }
        }
    }

    template <typename Settings>
    void noteKey(const IniSection& section, const IniEntry& entry, const QList<KeyRow<Settings>>& rows)
    {
        QStringList keys;
        for (const KeyRow<Settings>& row : rows)
            keys.append(QLatin1String(row.key));
        note(entry.line,
            QStringLiteral("[%1] has no key %2; there are %3")
                .arg(receipt::shownText(section.name), receipt::shownText(entry.key),
                    keys.join(QStringLiteral(", "))));
    }

    void requireName(const IniSection& section, const QString& what, const QString& name)
    {
        // It is part of addresses, and of names of metrics.
        static const QRegularExpression plainName(QStringLiteral("\\A[A-Za-z0-9][A-Za-z0-9._-]{0,63}\\z"));
        if (!plainName.match(name).hasMatch())
            note(section.line,
                QStringLiteral("the %1 \"%2\": a name has letters, digits, dots, _ and -, 64 at most")
                    .arg(what, receipt::shownText(name)));
    }

    void takePool(const IniSection& section, const QString& name)
    {
        requireName(section, QStringLiteral("pool"), name);
        PoolSettings settings;
        settings.name = name;
        takeEntries(section, poolKeys(), settings);
        m_configuration.pools.append(settings);
        m_poolLines.append(section.line);
    }

    /// Its registers may stand behind it.
    void judgePool(const PoolSettings& pool, int line)
    {
        const auto wrong
            = [&](const QString& text) { note(line, QStringLiteral("[pool %1] ").arg(pool.name) + text); };
        if (pool.registers.isEmpty() && m_storeLine == 0)
            wrong(QStringLiteral("needs registers"));
        for (const QString& name : pool.registers) {
            RegisterSettings* const settings = registerNamed(name);
            if (settings == nullptr)
                wrong(QStringLiteral("names the register %1, and there is no [register %1]")
                          .arg(receipt::shownText(name)));
            else if (const QString fault = demandOf(pool, *settings); !fault.isEmpty())
                wrong(fault);
        }
    }

    RegisterSettings* registerNamed(const QString& name)
    {
        QList<RegisterSettings>& all = m_configuration.registers;
        const auto found = std::find_if(
            all.begin(), all.end(), [&name](const RegisterSettings& one) { return one.name == name; });
        return found == all.end() ? nullptr : &*found;
    }

    /// What the pool says of its registers is compared as if each of them said so; empty when it can be.
    static QString demandOf(const PoolSettings& pool, RegisterSettings& settings)
    {
        if (pool.inn.isEmpty())
            return {};
        if (settings.expected.inn.isEmpty())
            settings.expected.inn = pool.inn;
        if (settings.expected.inn != pool.inn)
            return QStringLiteral("has another inn than its register ") + settings.name;
        return isInnCompared(settings)
            ? QString()
            : QStringLiteral("has an inn, and its register %1 over XML is known by its serial number alone: "
                             "serial = ...")
                  .arg(settings.name);
    }

    static bool isInnCompared(const RegisterSettings& settings)
    {
        return settings.protocol != receipt::Protocol::Xml || settings.expected.inn.isEmpty()
            || !settings.expected.serial.isEmpty();
    }

    void takeRegister(const IniSection& section, const QString& name)
    {
        requireName(section, QStringLiteral("register"), name);
        RegisterSettings settings;
        settings.name = name;
        takeEntries(section, registerKeys(), settings);
        if (!hasKey(section, "exclusive"))
            settings.isExclusive = !devices::isTcpName(settings.port);
        judge(section, settings);
        m_configuration.registers.append(settings);
    }

    static bool hasKey(const IniSection& section, const char* key)
    {
        return std::any_of(section.entries.cbegin(), section.entries.cend(),
            [key](const IniEntry& entry) { return entry.key == QLatin1String(key); });
    }

    /// What the values mean for each other.
    void judge(const IniSection& section, const RegisterSettings& settings)
    {
        const auto wrong = [&](const QString& text) {
            note(section.line, QStringLiteral("[%1] ").arg(receipt::shownText(section.name)) + text);
        };
        if (!hasKey(section, "port"))
            wrong(QStringLiteral("needs a port"));
        else if (m_ports.contains(settings.port))
            wrong(QStringLiteral("has the port of another register"));
        m_ports.insert(settings.port);
        if (!hasKey(section, "protocol"))
            wrong(QStringLiteral("needs a protocol, HEX or XML"));
        // It would not be compared, and whoever wrote it relies on it.
        if (!isInnCompared(settings))
            wrong(QStringLiteral("over XML the register is known by its serial number alone: serial = ..."));
        const bool isScheduled = settings.shift == ShiftRule::Scheduled;
        if (isScheduled != hasKey(section, "shift-open") || isScheduled != hasKey(section, "shift-close"))
            wrong(QStringLiteral("shift-open and shift-close go with shift = scheduled"));
        if (isScheduled && !settings.hasCashier())
            wrong(QStringLiteral("shift = scheduled needs a cashier, whose Z reports they are"));
    }

    void finish()
    {
        // Those of a rack may all be elsewhere.
        if (m_configuration.registers.isEmpty() && m_storeLine == 0 && m_errors.isEmpty())
            m_errors.append(QStringLiteral("%1: has no [register NAME]").arg(m_fileName));
        if (m_storeLine > 0 && !m_configuration.service.journal.isEmpty())
            note(m_storeLine, QStringLiteral("[store] goes without journal of [service]"));
        for (qsizetype pool = 0; pool < m_poolLines.size(); ++pool)
            judgePool(m_configuration.pools.at(pool), m_poolLines.at(pool));
        for (RegisterSettings& settings : m_configuration.registers)
            settings.plugins = m_configuration.service.plugins;
    }

    void note(int line, const QString& text)
    {
        m_errors.append(QStringLiteral("%1:%2: %3").arg(m_fileName).arg(line).arg(text));
    }

    const QString m_fileName;
    QStringList m_errors;
    QSet<QString> m_ports;
    int m_storeLine = 0;
    QList<int> m_poolLines;
    Configuration m_configuration;
};

} // namespace

Configuration Configuration::read(const QString& fileName)
{
    return Reader(fileName).read();
}

} // namespace frserver
