#pragma once

#include "answerdraft.h"
#include "connectionsettings.h"
#include "deskoptions.h"
#include "journalaccess.h"
#include "markpolicy.h"
#include "protocol.h"
#include "serviceport.h"
#include "setting.h"
#include "warnings.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace frctl {

/// What the command line says.
struct Options
{
    enum LogLevel { Trace, Debug, Info, Warn, Error, NoLog };

    QString port;
    /// Of a port that is a service's register.
    std::optional<ServicePort> service = {};
    /// With what the service knows the caller; empty for the environment's, or none.
    QString tokenFile;
    /// Name of the configuration's section that some of the settings are from; empty without one.
    QString registerSection;
    /// Empty for those of user and machine.
    QString configFile;
    QString protocol = QStringLiteral("XML");
    /// Empty for the plugin's own.
    QString protocolVersion;
    /// Files or folders.
    QStringList plugins;
    unsigned deviceId = 0;
    /// How long to wait for a port that another program has.
    int waitSeconds = 0;
    bool speedEnumerate = true;
    /// No other program works the register but those that take its lock on this machine.
    bool isExclusive = true;
    /// Filled by the session: see RegisterLine::connection.
    std::shared_ptr<std::function<quint64()>> soleConnection = std::make_shared<std::function<quint64()>>();
    /// The same: see RegisterLine::repeats.
    std::shared_ptr<std::function<quint64()>> repeats = std::make_shared<std::function<quint64()>>();
    /// The register that is meant.
    sale::ExpectedRegister expected;
    hw::fr::DriverOptions driverOptions;
    FrUser cashier;
    /// Names with commas between them.
    QString taxSystems;
    bool clear = false;
    /// The caller's name for a sale; empty for a sale without.
    QString id;
    std::shared_ptr<JournalAccess> journal = std::make_shared<JournalAccess>();
    /// Of the command journal.
    QString state;
    QString since;
    QString before;
    QString documentNumber;
    QString note;
    /// Paths of fields of the receipt that the protocol does not carry and that may be left out.
    QStringList drop;
    /// Positions whose discount does not divide become two.
    bool split = false;
    /// Of preview: characters on a line, and the file of the picture in one of its formats.
    int paperWidth = 44;
    QString png;
    QString pdf;
    QString svg;
    /// Of detect: every port is asked.
    bool isAll = false;
    /// What does harm may be done.
    bool force = false;
    /// Of what goes over the line; empty for none.
    QString traceFile;
    bool isTraceFull = false;
    /// Of the command trace.
    QString replaySide;
    QString password;
    /// Warnings are errors.
    bool strict = false;
    sale::MarkPolicy markPolicy = sale::MarkPolicy::Warn;
    LogLevel logLevel = NoLog;
    /// Empty for that of the environment.
    QString language;
    bool json = false;
    bool help = false;
    bool version = false;
    QString command;
    QStringList arguments;
    /// The options as they were given, those of the configuration first.
    Settings settings;
    /// What is said besides the answer, from the reading of the arguments to the end of the work.
    std::shared_ptr<Warnings> warnings = std::make_shared<Warnings>();
    /// Filled by the commands that make a document.
    std::shared_ptr<AnswerDraft> answer = std::make_shared<AnswerDraft>();

    bool isHex() const { return protocol == QStringLiteral("HEX"); }
    /// The one that the register is not asked over.
    QString otherProtocol() const { return isHex() ? QStringLiteral("XML") : QStringLiteral("HEX"); }
    /// What the journal calls the register.
    QString registerName() const;
    bool isSale() const { return command == QStringLiteral("sell") || command == QStringLiteral("refund"); }
    bool judgesReceipts() const
    {
        return isSale() || command == QStringLiteral("preview") || command == QStringLiteral("check");
    }
    receipt::Protocol receiptProtocol() const
    {
        return isHex() ? receipt::Protocol::Hex : receipt::Protocol::Xml;
    }
    /// That of the command line, both when it has none.
    QList<receipt::Protocol> receiptProtocols() const
    {
        return isGiven("protocol") ? QList{receiptProtocol()}
                                   : QList{receipt::Protocol::Xml, receipt::Protocol::Hex};
    }
    /// By the command line, or by the section of the configuration.
    bool isGiven(const char* option) const;
    /// For a document that names none itself. Throws UsageError without --cashier.
    void requireCashierOption() const;
    sale::DeskOptions desk() const;
    /// Without callbacks and observer.
    devices::ConnectionSettings connection() const;
    /// The register and the line to it, as the verdicts on documents need to know them.
    sale::RegisterLine line() const;
};

/// Puts the value into the options. Throws UsageError that tells where it stands.
void applySetting(const Setting& setting, Options& options);
/// The command line, and before it the section of the configuration that it names. Throws UsageError. The
/// first argument is the program's name.
Options parseOptions(const QStringList& commandLine);

} // namespace frctl
