#include "journalcommands.h"

#include "cashdesk.h"
#include "documentarchived.h"
#include "documentrecord.h"
#include "errors.h"
#include "frctltr.h"
#include "journalcheck.h"
#include "journaloutput.h"
#include "pendingsales.h"
#include "verb.h"
#include "wrongregister.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <pwd.h>
#include <unistd.h>

namespace frctl {

namespace {

/// Whom the journal names for what a person says.
QString userName()
{
    const QString behindSudo = qEnvironmentVariable("SUDO_USER");
    if (!behindSudo.isEmpty())
        return behindSudo;
    const struct passwd* const entry = ::getpwuid(::getuid());
    return entry == nullptr ? QString::number(::getuid()) : QString::fromLocal8Bit(entry->pw_name);
}

QDateTime timeOf(const char* option, const QString& text)
{
    const QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    if (!text.isEmpty() && !time.isValid())
        throw UsageError(tr("--%1: \"%2\" is no day as 2024-12-31, nor a time as 2024-12-31T23:59:59")
                             .arg(QLatin1String(option), text));
    return time;
}

sale::DocumentQuery queryOf(const Options& options)
{
    sale::DocumentQuery query{.since = timeOf("since", options.since)};
    if (options.state.isEmpty())
        return query;
    const std::optional<sale::DocumentState> state = sale::stateOf(options.state);
    if (!state)
        throw UsageError(
            tr("--state: \"%1\" is none of queued, running, issued, notIssued, unknown").arg(options.state));
    query.states = {*state};
    return query;
}

sale::StoredDocument documentOf(const Options& options)
{
    const QString id = options.arguments.at(1);
    const sale::SqlStore& store = options.journal->store();
    if (const std::optional<sale::StoredDocument> document = store.findId(id))
        return *document;
    if (const std::optional<QDateTime> accepted = store.archived(id))
        throw HostError(
            QString::fromUtf8(sale::DocumentArchived(id, *accepted).what()), sale::ErrorKind::Data);
    throw HostError(tr("the journal has no document %1").arg(id), sale::ErrorKind::Data);
}

/// Work on all documents that were asked for, without all of them in memory.
void forEach(const Options& options, sale::DocumentQuery query,
    const std::function<void(const sale::StoredDocument&)>& work)
{
    constexpr int atOnce = 500;
    query.limit = atOnce;
    QList<sale::StoredDocument> found;
    do {
        found = options.journal->store().find(query);
        for (const sale::StoredDocument& document : found)
            work(document);
        if (!found.isEmpty())
            query.after = found.constLast().sequence;
    } while (found.size() == atOnce);
}

Output list(const Options& options, sale::DocumentQuery query)
{
    query.withAttempts = false;
    Output output;
    QJsonArray documents;
    forEach(options, query, [&](const sale::StoredDocument& document) {
        output.lines.append(storedLine(document));
        documents.append(sale::recordSummary(document));
    });
    if (documents.isEmpty())
        output.lines.append(tr("nothing in the journal"));
    output.json.insert(QStringLiteral("documents"), documents);
    return output;
}

/// A line of JSON for each document, also with --json.
Output exported(const Options& options, const sale::DocumentQuery& query)
{
    Output output;
    forEach(options, query, [&](const sale::StoredDocument& document) {
        output.lines.append(
            QString::fromUtf8(QJsonDocument(sale::recordJson(document)).toJson(QJsonDocument::Compact)));
    });
    output.areLinesAll = true;
    return output;
}

Task prepareList(const Options& options)
{
    return alone([options, query = queryOf(options)] { return list(options, query); });
}

Task prepareExport(const Options& options)
{
    return alone([options, query = queryOf(options)] { return exported(options, query); });
}

Task prepareShow(const Options& options)
{
    return alone([options]() -> Output {
        const sale::StoredDocument document = documentOf(options);
        return {storedLines(document), sale::recordJson(document)};
    });
}

/// Those that were settled, as the journal has them then.
Output settledOutput(const Options& options, const QStringList& ids)
{
    Output output;
    QJsonArray documents;
    for (const QString& id : ids) {
        const sale::StoredDocument document = options.journal->store().findId(id).value();
        output.lines.append(storedLine(document));
        documents.append(sale::recordSummary(document));
        if (document.state == sale::DocumentState::Unknown)
            output.status = ExitUnknown;
    }
    if (ids.isEmpty())
        output.lines.append(tr("nothing to settle on this register"));
    output.json.insert(QStringLiteral("documents"), documents);
    return output;
}

Output settleAll(AbstractFrDriver& driver, const Options& options)
{
    QStringList ids;
    for (const sale::SettledSale& one :
        sale::settlePendingSales(driver, options.journal->store(), options.line(), options.registerName()))
        ids.append(one.id);
    return settledOutput(options, ids);
}

Output settleOne(AbstractFrDriver& driver, const Options& options, const sale::StoredDocument& document)
{
    try {
        sale::settleDocument(driver, options.journal->store(), document, options.line());
    } catch (const sale::WrongRegister& error) {
        // As the sale of the same id says it.
        throw RegisterError(QString::fromUtf8(error.what()), QStringLiteral("WrongRegister"),
            sale::ErrorKind::WrongRegister, sale::Outcome::Unknown);
    }
    return settledOutput(options, {document.request.id});
}

/// Its drive is gone for good, and can never be asked.
Output giveUp(const Options& options, const sale::StoredDocument& document)
{
    if (document.isToBeAsked())
        options.journal->store().settle(document.request.id, document.attemptCount, {});
    return settledOutput(options, {document.request.id});
}

Task prepareSettle(const Options& options)
{
    if (options.arguments.size() == 1 && options.force)
        throw UsageError(tr("journal settle --force needs the ID of the document"));
    Task task;
    if (options.arguments.size() == 1) {
        task = onRegister([options](AbstractFrDriver& driver) { return settleAll(driver, options); });
    } else {
        const sale::StoredDocument document = documentOf(options);
        if (options.force || !isToBeSettled(document.state))
            return alone([options, document] { return giveUp(options, document); });
        task = onRegister(
            [options, document](AbstractFrDriver& driver) { return settleOne(driver, options, document); });
    }
    // It does so itself, and initialises the register where that tells something.
    task.withInit = false;
    return task;
}

sale::DocumentEnding wordOf(const Options& options)
{
    const QString word = options.arguments.value(2);
    sale::DocumentEnding ending{.by = userName(), .note = options.note};
    if (word == QStringLiteral("issued")) {
        bool ok = false;
        ending.documentNumber = options.documentNumber.toUInt(&ok);
        if (!ok || ending.documentNumber == 0)
            throw UsageError(tr("journal resolve ID issued needs --document N, the number on the receipt"));
        ending.state = sale::DocumentState::Issued;
        return ending;
    }
    if (word != QStringLiteral("not-issued"))
        throw UsageError(tr("journal resolve takes ID issued or ID not-issued"));
    if (!options.documentNumber.isEmpty())
        throw UsageError(tr("--document contradicts not-issued: a document with a number is issued"));
    if (options.note.trimmed().isEmpty())
        throw UsageError(tr("journal resolve ID not-issued needs --note TEXT, what was seen"));
    ending.state = sale::DocumentState::NotIssued;
    ending.reason = sale::StateReason::Resolved;
    return ending;
}

Task prepareResolve(const Options& options)
{
    const sale::DocumentEnding word = wordOf(options);
    return alone([options, word]() -> Output {
        const sale::StoredDocument document = documentOf(options);
        options.journal->store().settle(document.request.id, document.attemptCount, word);
        const sale::StoredDocument resolved = documentOf(options);
        return {storedLines(resolved), sale::recordJson(resolved)};
    });
}

Task prepareBackup(const Options& options)
{
    if (options.arguments.at(1).isEmpty())
        throw UsageError(tr("journal backup wants a file"));
    return alone([options]() -> Output {
        const QString fileName = options.arguments.at(1);
        options.journal->store().backUp(fileName);
        return {{tr("copied to ") + fileName}, {{QStringLiteral("file"), fileName}}};
    });
}

Task prepareAnonymise(const Options& options)
{
    if (options.before.isEmpty())
        throw UsageError(tr("journal anonymise needs --before DATE"));
    return alone([options, before = timeOf("before", options.before)]() -> Output {
        const int documents = options.journal->store().anonymise(before);
        return {{tr("%1 documents anonymised").arg(documents)}, {{QStringLiteral("anonymised"), documents}}};
    });
}

Task prepareCheck(const Options& options)
{
    if (options.port.isEmpty())
        return alone([options] { return checkFile(options); });
    // A register that is reached first would tell the same of the journal, in other words.
    const Output file = checkFile(options);
    if (file.status != ExitSuccess)
        return alone([file] { return file; });
    return onRegister([options](AbstractFrDriver& driver) { return checkShift(driver, options); });
}

Task prepareAccept(const Options& options)
{
    return onDesk([options](sale::CashDesk& desk) -> Output {
        const sale::DriveMark mark = desk.acceptUnknown(userName(), options.note);
        options.answer->drive = mark.drive;
        return {{tr("fiscal drive %1: all documents up to %2 are accepted")
                        .arg(mark.drive)
                        .arg(mark.lastDocument)},
            {{QStringLiteral("drive"), mark.drive},
                {QStringLiteral("documentNumber"), static_cast<qint64>(mark.lastDocument)}}};
    });
}

constexpr Verb journalVerbs[] = {
    {"list", 0, 0, prepareList, "state since"},
    {"show", 1, 1, prepareShow},
    {"settle", 0, 1, prepareSettle, "force"},
    {"resolve", 2, 2, prepareResolve, "document note"},
    {"export", 0, 0, prepareExport, "state since"},
    {"backup", 1, 1, prepareBackup},
    {"anonymise", 0, 0, prepareAnonymise, "before"},
    {"check", 0, 0, prepareCheck},
    {"accept", 0, 0, prepareAccept, "note"},
};

} // namespace

Task prepareJournal(const Options& options)
{
    return prepareVerb(journalVerbs, options);
}

} // namespace frctl
