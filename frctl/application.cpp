#include "application.h"

#include "abstractfrdriver.h"
#include "cashiername.h"
#include "command.h"
#include "complaint.h"
#include "documentoutput.h"
#include "documentstate.h"
#include "errors.h"
#include "frctltr.h"
#include "help.h"
#include "interruption.h"
#include "language.h"
#include "logging.h"
#include "messages.h"
#include "progress.h"
#include "registersession.h"
#include "servicetask.h"
#include "streams.h"
#include "testdrive.h"
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

/// Gives the exit status of a command whose output ended with that error of the system. A document that was
/// issued must not look as one that failed because nobody takes the output: the message tells.
int delivered(int error, ExitStatus status, const sale::Verdict& verdict)
{
    if (error == 0)
        return status;
    complain(tr("standard output: ") + qt_error_string(error));
    if (verdict.outcome != sale::Outcome::None)
        complain(sale::verdictText(verdict));
    if (status != ExitSuccess)
        return status;
    return wasInterrupted() ? ExitInterrupted : ExitFailure;
}

/// Prints what a command has to say.
int deliver(const QString& text, ExitStatus status = ExitSuccess, const sale::Verdict& verdict = {})
{
    return delivered(print(stdout, text), status, verdict);
}

/// What JSON has of any command that failed, and of a document also when it did not.
QJsonObject jsonOf(const Complaint& complaint, const Options& options)
{
    if (options.answer->isDocument)
        return answerJson(options, complaint.verdict, complaint.error);
    return {{QStringLiteral("error"), complaint.error.toJson()},
        {QStringLiteral("warnings"), options.warnings->json()}};
}

/// Where whoever had it wrong finds how it is.
void pointToHelp(const QString& command)
{
    const bool isKnown = findCommand(command) != nullptr;
    print(stderr,
        usageLine() + tr("\nTry frctl help%1.").arg(isKnown ? QLatin1Char(' ') + command : QString()));
}

void say(const Complaint& complaint, const Options& options)
{
    complain(complaint.error.text);
    for (const receipt::Finding& error : complaint.findings.mid(1))
        complain(error.text());
    const QString outcome
        = complaint.outcome.isEmpty() ? sale::verdictText(complaint.verdict) : complaint.outcome;
    if (!outcome.isEmpty())
        complain(outcome);
    if (complaint.isUsage)
        pointToHelp(options.command);
}

/// Of a command line that cannot be read; empty when it has none.
QString commandAmong(const QStringList& words)
{
    const auto found = std::find_if(
        words.cbegin(), words.cend(), [](const QString& word) { return findCommand(word) != nullptr; });
    return found == words.cend() ? QString() : *found;
}

/// Of a document that nothing was sent of, since the journal could not be opened.
bool isHeldByJournal(const Complaint& complaint, const Options& options)
{
    return options.answer->isDocument && !options.id.isEmpty() && options.journal->isLost()
        && complaint.verdict.outcome == sale::Outcome::None;
}

int report(Complaint complaint, const Options& options, bool json)
{
    say(complaint, options);
    const QJsonObject told = jsonOf(complaint, options);
    if (isHeldByJournal(complaint, options)) {
        complain(tr("nothing was sent; the same id again when the journal works"));
        // An earlier run may have issued it. A journal that was never made has had none.
        if (told.value(QStringLiteral("state")) == QJsonValue(sale::stateName(sale::DocumentState::Unknown)))
            complaint.status = ExitUnknown;
    }
    if (json)
        return deliver(compact(told), complaint.status);
    // Behind the usage nobody would look for what was wrong.
    if (!options.answer->isDocument || complaint.isUsage)
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

Output runTask(RegisterSession& session, const Task& task, AnswerDraft& answer)
{
    session.connect(task);
    for (const sale::SettledSale& settled : session.settledSales()) {
        answer.settledIds.append(settled.id);
        complain(tr("sale %1 of an earlier run: %2").arg(settled.id, sale::verdictText(settled.verdict)));
    }
    if (task.onDesk)
        return task.onDesk(session.desk());
    return task.onParameters ? task.onParameters(session.driver(), session.parameters())
                             : task.onRegister(session.driver());
}

/// Whether what was told is about a true register, as far as that is known.
void addTestDrive(Output& output, const QString& drive)
{
    output.json.insert(QStringLiteral("testDrive"), sale::testDriveJson(drive));
    if (sale::isTestDrive(drive))
        output.lines.append(tr("test drive %1: what it signs is no fiscal document").arg(drive));
}

/// Some of these ask a register in their own way.
Output runAlone(const Task& task, const Options& options)
{
    Output output = task.alone();
    if (!options.answer->isDocument && !options.answer->drive.isEmpty())
        addTestDrive(output, options.answer->drive);
    return output;
}

/// With the cashier's name as the register gets it; a receipt is judged with it.
Options withPlainCashier(Options options)
{
    const QString path = QStringLiteral("--cashier");
    TextCheck texts(options);
    options.cashier.name
        = texts.line(path, options.cashier.name, options.judgesReceipts() ? 0 : receipt::longestLoginName);
    texts.finish();
    return options;
}

/// A service works the register then.
Task preparedTask(const Options& options)
{
    const Command& command = findCommand(options);
    const bool isForRegister = command.kind != Command::Alone || command.asksPorts;
    return options.service && isForRegister ? serviceTask(options) : command.prepare(options);
}

Output work(const Options& given)
{
    given.answer->isDocument = makesDocument(given.command);
    given.answer->id = given.id;
    const Options options = withPlainCashier(given);
    const Task task = preparedTask(options);
    // A sale that is done already works none, which nobody can know before.
    if (task.alone && !task.isTraced && !options.traceFile.isEmpty() && !options.answer->isDocument)
        throw UsageError(tr("--trace goes with commands that work a register"));
    if (task.alone)
        return runAlone(task, options);
    if (options.port.isEmpty())
        throw UsageError(tr("%1 needs a register: --port, or --register with the name that it has in "
                            "the configuration")
                             .arg(options.command));
    catchInterruptions();
    RegisterSession session(options);
    Output output = runTask(session, task, *options.answer);
    if (!options.answer->isDocument)
        addTestDrive(output, options.answer->drive);
    // After a failure nobody knows what the register will still say.
    if (readClock(session, output, options))
        session.leaveIdle();
    return output;
}

Output shownWork(const Options& options)
{
    const Progress progress(options.command);
    return work(options);
}

/// Gives the exit status; throws what the work throws.
int run(const Options& options)
{
    if (options.help)
        return deliver(helpText(options.command));
    if (options.version)
        return deliver(QStringLiteral("frctl ") + QCoreApplication::applicationVersion());
    setUpLogging(options.logLevel);
    Output output = shownWork(options);
    if (options.answer->isDocument)
        output = documentOutput(options, output);
    else
        output.json.insert(QStringLiteral("warnings"), options.warnings->json());
    if (!output.bytes.isEmpty())
        return delivered(printBytes(stdout, output.bytes), output.status, output.verdict);
    const QString text
        = options.json && !output.areLinesAll ? compact(output.json) : output.lines.join(QLatin1Char('\n'));
    return deliver(text, output.status, output.verdict);
}

} // namespace

int runApplication(const QStringList& commandLine)
{
    const QStringList words = commandLine.mid(1);
    // Also for a command line that cannot be read.
    const bool json = commandLine.contains(QStringLiteral("--json"));
    int status = ExitFailure;
    Options options;
    options.answer->isDocument = std::any_of(words.cbegin(), words.cend(), makesDocument);
    options.command = commandAmong(words);
    try {
        useLanguage(languageOf(commandLine));
        options = parseOptions(commandLine);
        // A register's section may have another one.
        if (!options.language.isEmpty())
            useLanguage(options.language);
        status = run(options);
    } catch (...) {
        status = report(complaintOf(std::current_exception()), options, json);
    }
    return status == ExitSuccess && isMessageLost() ? ExitFailure : status;
}

} // namespace frctl
