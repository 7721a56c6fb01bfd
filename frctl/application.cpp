#include "application.h"

#include "abstractfrdriver.h"
#include "cashiername.h"
#include "command.h"
#include "complaint.h"
#include "documentoutput.h"
#include "errors.h"
#include "interruption.h"
#include "logging.h"
#include "messages.h"
#include "registersession.h"
#include "streams.h"
#include "textcheck.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace frctl {

namespace {

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

/// What JSON has of any command that failed, and of a document also when it did not.
QJsonObject jsonOf(const Complaint& complaint, const Options& options)
{
    if (options.answer->isDocument)
        return answerOf(options, complaint.verdict, complaint.error).toJson();
    return {{QStringLiteral("error"), complaint.error.toJson()},
        {QStringLiteral("warnings"), options.warnings->json()}};
}

void say(const Complaint& complaint)
{
    complain(complaint.error.text);
    for (const receipt::Finding& error : complaint.findings.mid(1))
        complain(error.text());
    const QString outcome = complaint.isNotOpened ? QStringLiteral("the document was not opened")
                                                  : sale::verdictText(complaint.verdict);
    if (!outcome.isEmpty())
        complain(outcome);
    if (complaint.isUsage)
        print(stderr, usage() + QStringLiteral("\nTry frctl --help."));
}

int report(const Complaint& complaint, const Options& options, bool json)
{
    say(complaint);
    const QJsonObject told = jsonOf(complaint, options);
    if (json)
        return deliver(compact(told), complaint.status);
    if (!options.answer->isDocument)
        return complaint.status;
    return deliver(answerLines(told).join(QLatin1Char('\n')), complaint.status);
}

/// Over XML it would be a question too many, and after a failure nobody asks. False when an answer is due
/// still.
bool readClock(RegisterSession& session, const Output& output, const Options& options)
{
    AnswerDraft& draft = *options.answer;
    const bool isMade
        = draft.isDocument && !draft.isReplayed && output.verdict.outcome == sale::Outcome::Issued;
    if (!isMade || !options.isHex())
        return true;
    try {
        draft.dateTime = session.driver().getDateTime();
        return true;
    } catch (...) {
        // The document is made; its time is not told then.
        return false;
    }
}

Output runTask(RegisterSession& session, const Task& task)
{
    session.connect(task);
    for (const sale::SettledSale& settled : session.settledSales())
        complain(QStringLiteral("sale %1 of an earlier run: %2")
                     .arg(settled.id, sale::verdictText(settled.verdict)));
    if (task.onDesk)
        return task.onDesk(session.desk());
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
    given.answer->isDocument = makesDocument(given.command);
    given.answer->id = given.id;
    const Options options = withPlainCashier(given);
    const Task task = findCommand(options).prepare(options);
    if (task.alone && options.trace)
        throw UsageError(QStringLiteral("--trace goes with commands that work a register"));
    if (task.alone)
        return task.alone();
    if (options.port.isEmpty())
        throw UsageError(QStringLiteral("%1 needs a register: --port").arg(options.command));
    catchInterruptions();
    RegisterSession session(options);
    const Output output = runTask(session, task);
    // After a failure nobody knows what the register will still say.
    if (readClock(session, output, options))
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
    if (options.answer->isDocument)
        output = documentOutput(options, output);
    else
        output.json.insert(QStringLiteral("warnings"), options.warnings->json());
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
    options.answer->isDocument = std::any_of(commandLine.cbegin(), commandLine.cend(), makesDocument);
    try {
        options = parseOptions(commandLine);
        status = run(options);
    } catch (...) {
        status = report(complaintOf(std::current_exception()), options, json);
    }
    return status == ExitSuccess && isMessageLost() ? ExitFailure : status;
}

} // namespace frctl
