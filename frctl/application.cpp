#include "application.h"

#include "cashiername.h"
#include "command.h"
#include "documentoutput.h"
#include "errors.h"
#include "exceptions.h"
#include "failure.h"
#include "findingoutput.h"
#include "idconflict.h"
#include "interruption.h"
#include "journalerror.h"
#include "logging.h"
#include "markrefusal.h"
#include "messages.h"
#include "receipterror.h"
#include "registersession.h"
#include "reviewneeded.h"
#include "streams.h"
#include "textcheck.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

namespace frctl {

namespace {

/// What is told when a command did not come to its end.
struct Complaint
{
    ExitStatus status = ExitFailure;
    QString text;
    QString exception;
    sale::Verdict verdict = {};
    /// A document was asked for, and did not come to its opening.
    bool isNotOpened = false;
    bool isUsage = false;
    /// Settings.
    QStringList refused = {};
    /// Of a receipt or a text, all of them.
    QList<receipt::Finding> errors = {};
    /// "mark" for marking codes that the register did not find good, with what it said of the first.
    QString kind = {};
    QStringList bits = {};
};

QString compact(const QJsonObject& json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

/// Prints what a command has to say; gives its exit status. A document that was issued must not look as one
/// that failed because nobody takes the output: the message tells.
int deliver(const QString& text, ExitStatus status = ExitSuccess, const sale::Verdict& verdict = {})
{
    const int error = print(stdout, text);
    if (error == 0)
        return status;
    complain(QStringLiteral("standard output: ") + qt_error_string(error));
    if (verdict.outcome != sale::Outcome::None)
        complain(sale::verdictText(verdict));
    if (status != ExitSuccess)
        return status;
    return wasInterrupted() ? ExitInterrupted : ExitFailure;
}

constexpr int helpColumn = 26;

QString usage()
{
    return QStringLiteral("Usage: frctl [OPTION]... COMMAND [ARGUMENT]...");
}

QString help()
{
    QString text
        = usage() + QStringLiteral("\nWorks a fiscal register through its driver plugin.\n\nCommands:\n");
    for (const Command& command : commands()) {
        const QString name
            = QLatin1String(command.name) + QLatin1Char(' ') + QLatin1String(command.arguments);
        const QString gap = name.size() > helpColumn
            ? QLatin1Char('\n') + QString(helpColumn + 2, QLatin1Char(' '))
            : QString();
        text += QStringLiteral("  %1%2 %3\n")
                    .arg(name.leftJustified(helpColumn), gap, QLatin1String(command.help));
    }
    return text + QLatin1Char('\n') + optionsHelp()
        + QStringLiteral(
            "\nExit status: 0 done, 1 the register or its line failed or refused, or the output was lost "
            "(the message tells\nwhat was issued), 2 wrong usage or a wrong file (nothing was sent), 130 "
            "interrupted. Of a fiscal document whose\nclose failed: 3 it was issued all the same, 4 it was "
            "not issued, 5 unknown (never repeat it then without a\nlook at the register).");
}

Complaint complaintOf(const QList<receipt::Finding>& errors, ExitStatus status, const QString& exceptionName)
{
    Complaint complaint{status, errors.constFirst().text(), exceptionName};
    complaint.errors = errors;
    return complaint;
}

Complaint complaintOf(const receipt::ReceiptError& error)
{
    Complaint complaint{ExitUsage, QString::fromUtf8(error.what()), QStringLiteral("ReceiptError")};
    complaint.errors = {{receipt::Finding::Error, error.path(), error.givenText(), error.reason()}};
    return complaint;
}

Complaint complaintOf(const std::exception_ptr& exception)
{
    try {
        std::rethrow_exception(exception);
    } catch (const UsageError& error) {
        return {ExitUsage, QString::fromUtf8(error.what()), QStringLiteral("UsageError"), {}, false, true};
    } catch (const receipt::ReceiptError& error) {
        return complaintOf(error);
    } catch (const CheckError& error) {
        return complaintOf(error.errors(), ExitUsage, error.exceptionName());
    } catch (const sale::MarkRefusal& error) {
        Complaint complaint = complaintOf(error.errors(), ExitFailure, QStringLiteral("MarkRefusal"));
        complaint.isNotOpened = true;
        complaint.kind = QStringLiteral("mark");
        complaint.bits = error.bits().constFirst();
        return complaint;
    } catch (const sale::ReviewNeeded& error) {
        Complaint complaint{ExitFailure, QString::fromUtf8(error.what()), QStringLiteral("ReviewNeeded")};
        complaint.isNotOpened = true;
        return complaint;
    } catch (const sale::IdConflict& error) {
        return {ExitUsage, QStringLiteral("--id: ") + QString::fromUtf8(error.what()),
            QStringLiteral("UsageError")};
    } catch (const RegisterError& error) {
        return {exitStatusOf(error.verdict()), QString::fromUtf8(error.what()), error.exceptionName(),
            error.verdict(), error.isNotOpened()};
    } catch (const Interrupted& error) {
        return {ExitInterrupted, QStringLiteral("interrupted"), QStringLiteral("Interrupted"),
            error.verdict(), error.isNotOpened()};
    } catch (const HostError& error) {
        return {ExitFailure, QString::fromUtf8(error.what()), hostErrorName()};
    } catch (const sale::JournalError& error) {
        return {ExitFailure, QString::fromUtf8(error.what()), hostErrorName()};
    } catch (const Refusal& error) {
        return {ExitFailure, QString::fromUtf8(error.what()), QStringLiteral("Refusal"), {}, false, false,
            error.refused()};
    } catch (const BasicException& error) {
        return {ExitFailure, error.tr().ru(), sale::exceptionClassName(error)};
    } catch (const std::exception& error) {
        return {ExitFailure, QString::fromUtf8(error.what()), QStringLiteral("std::exception")};
    }
}

void insertErrors(QJsonObject& json, const Complaint& complaint)
{
    if (complaint.errors.isEmpty())
        return;
    json.insert(QStringLiteral("errors"), findingsJson(complaint.errors));
    if (complaint.kind.isEmpty())
        return;
    json.insert(QStringLiteral("kind"), complaint.kind);
    json.insert(QStringLiteral("path"), complaint.errors.constFirst().path);
    json.insert(QStringLiteral("bits"), QJsonArray::fromStringList(complaint.bits));
}

void insertWarnings(QJsonObject& json, const Warnings& warnings)
{
    const QJsonArray told = warnings.json();
    if (!told.isEmpty())
        json.insert(QStringLiteral("warnings"), told);
}

QJsonObject jsonOf(const Complaint& complaint, const Warnings& warnings)
{
    QJsonObject json = documentJson(complaint.verdict);
    if (complaint.isNotOpened)
        json.insert(QStringLiteral("outcome"), QStringLiteral("notOpened"));
    json.insert(QStringLiteral("error"), complaint.text);
    json.insert(QStringLiteral("exception"), complaint.exception);
    if (complaint.exception == QStringLiteral("ReviewNeeded"))
        json.insert(QStringLiteral("needsReview"), true);
    if (!complaint.refused.isEmpty())
        json.insert(QStringLiteral("refused"), QJsonArray::fromStringList(complaint.refused));
    insertErrors(json, complaint);
    insertWarnings(json, warnings);
    return json;
}

int report(const Complaint& complaint, const Warnings& warnings, bool json)
{
    complain(complaint.text);
    for (const receipt::Finding& error : complaint.errors.mid(1))
        complain(error.text());
    const QString outcome = complaint.isNotOpened ? QStringLiteral("the document was not opened")
                                                  : sale::verdictText(complaint.verdict);
    if (!outcome.isEmpty())
        complain(outcome);
    if (complaint.isUsage)
        print(stderr, usage() + QStringLiteral("\nTry frctl --help."));
    return json ? deliver(compact(jsonOf(complaint, warnings)), complaint.status) : complaint.status;
}

Output runTask(RegisterSession& session, const Task& task, const Options& options)
{
    session.connect(task, task.cashier.value_or(options.cashier));
    for (const sale::SettledSale& settled : session.settledSales())
        complain(QStringLiteral("sale %1 of an earlier run: %2")
                     .arg(settled.id, sale::verdictText(settled.verdict)));
    return task.onParameters ? task.onParameters(session.driver(), session.parameters())
                             : task.onRegister(session.driver());
}

/// With the cashier's name as the register gets it.
Options withPlainCashier(Options options)
{
    const QString path = QStringLiteral("--cashier");
    TextCheck texts(options);
    options.cashier.name
        = texts.line(path, options.cashier.name, options.isReceipt() ? 0 : receipt::longestLoginName);
    if (options.isReceipt())
        texts.warn(path, options.cashier.name,
            receipt::shiftCashierWarning(options.cashier.name, options.receiptProtocol()));
    texts.finish();
    return options;
}

Output work(const Options& given)
{
    const Options options = withPlainCashier(given);
    const Task task = findCommand(options).prepare(options);
    if (task.alone)
        return task.alone();
    if (options.port.isEmpty())
        throw UsageError(QStringLiteral("%1 needs a register: --port").arg(options.command));
    catchInterruptions();
    RegisterSession session(options);
    const Output output = runTask(session, task, options);
    // After a failure nobody knows what the register will still say.
    session.leaveIdle();
    return output;
}

/// Gives the exit status; throws what the work throws.
int run(const Options& options)
{
    if (options.help)
        return deliver(help());
    if (options.version)
        return deliver(QStringLiteral("frctl ") + QCoreApplication::applicationVersion());
    setUpLogging(options.logLevel);
    Output output = work(options);
    insertWarnings(output.json, *options.warnings);
    const QString text
        = options.json && !output.areLinesJson ? compact(output.json) : output.lines.join(QLatin1Char('\n'));
    return deliver(text, output.status, output.verdict);
}

} // namespace

int runApplication(const QStringList& commandLine)
{
    // Also for a command line that cannot be read.
    const bool json = commandLine.contains(QStringLiteral("--json"));
    int status = ExitFailure;
    Options options;
    try {
        options = parseOptions(commandLine);
        status = run(options);
    } catch (...) {
        status = report(complaintOf(std::current_exception()), *options.warnings, json);
    }
    return status == ExitSuccess && isMessageLost() ? ExitFailure : status;
}

} // namespace frctl
