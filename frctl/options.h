#pragma once

#include "answerdraft.h"
#include "deskoptions.h"
#include "driveroptions.h"
#include "journalaccess.h"
#include "linetrace.h"
#include "markpolicy.h"
#include "protocol.h"
#include "warnings.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace frctl {

/// What the command line says.
struct Options
{
    enum LogLevel { Trace, Debug, Info, Warn, Error };

    QString port;
    QString protocol = QStringLiteral("XML");
    bool isProtocolGiven = false;
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
    /// A setting may be written that shuts this driver out.
    bool force = false;
    /// Of what goes over the line; null for none.
    std::shared_ptr<LineTrace> trace;
    /// Of the command trace.
    QString replaySide;
    QString password;
    /// Warnings are errors.
    bool strict = false;
    sale::MarkPolicy markPolicy = sale::MarkPolicy::Warn;
    LogLevel logLevel = Error;
    bool json = false;
    bool help = false;
    bool version = false;
    QString command;
    QStringList arguments;
    /// What is said besides the answer, from the reading of the arguments to the end of the work.
    std::shared_ptr<Warnings> warnings = std::make_shared<Warnings>();
    /// Filled by the commands that make a document.
    std::shared_ptr<AnswerDraft> answer = std::make_shared<AnswerDraft>();

    bool isHex() const { return protocol == QStringLiteral("HEX"); }
    /// What the journal calls the register.
    QString registerName() const;
    bool isReceipt() const
    {
        return command == QStringLiteral("sell") || command == QStringLiteral("refund");
    }
    receipt::Protocol receiptProtocol() const
    {
        return isHex() ? receipt::Protocol::Hex : receipt::Protocol::Xml;
    }
    /// Throws UsageError without one.
    void requireCashier() const;
    sale::DeskOptions desk() const;
    /// The register and the line to it, as the verdicts on documents need to know them.
    sale::RegisterLine line() const
    {
        return {receiptProtocol(), isExclusive, [told = soleConnection] { return *told ? (*told)() : 0; }};
    }
};

/// Throws UsageError. The first argument is the program's name.
Options parseOptions(const QStringList& commandLine);
/// The text of --help, without the commands.
QString optionsHelp();

} // namespace frctl
