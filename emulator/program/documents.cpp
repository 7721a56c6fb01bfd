#include "program/documents.h"

#include "memory/memory.h"
#include "memory/memoryerror.h"
#include "register/documentview.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cstdio>
#include <optional>

namespace documents {

namespace {

struct Request
{
    QString folder;
    /// One document in full; without it a list of all.
    std::optional<quint32> number;
    bool json = false;
};

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Shows the documents of the fiscal drive of a register that was started with --state, which may still run:\n"
        "a list of them, or the one of that number with all its requisites and its page."));
    parser.addPositionalArgument(
        QStringLiteral("documents"), QStringLiteral("This command."), QStringLiteral("documents"));
    parser.addPositionalArgument(
        QStringLiteral("N"), QStringLiteral("Number of a document."), QStringLiteral("[N]"));
    parser.addOptions({
        {QStringLiteral("state"), QStringLiteral("Folder of the register's memory."), QStringLiteral("DIR")},
        {QStringLiteral("json"), QStringLiteral("JSON for machines.")},
    });
}

QString fill(const QCommandLineParser& parser, Request& request)
{
    QStringList rest = parser.positionalArguments();
    rest.removeFirst();
    request.folder = parser.value(QStringLiteral("state"));
    request.json = parser.isSet(QStringLiteral("json"));
    if (request.folder.isEmpty())
        return QStringLiteral("give the folder with --state");
    if (rest.isEmpty())
        return {};
    bool ok = false;
    request.number = rest.constFirst().toUInt(&ok);
    return ok && rest.size() == 1 ? QString()
                                  : QStringLiteral("\"%1\" is no number of a document").arg(rest.constLast());
}

void print(const QJsonDocument& json)
{
    std::fputs(json.toJson(QJsonDocument::Indented).constData(), stdout);
}

void print(const QString& text)
{
    std::fputs(text.toUtf8().constData(), stdout);
}

int fail(const QString& why, int status)
{
    std::fprintf(stderr, "spf-emulator: %s\n", qPrintable(why));
    return status;
}

/// The status, unless the output was lost.
int finish(int status)
{
    // Long output has been written in part before, and only the stream knows how that went.
    const bool isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return isWritten ? status : fail(QStringLiteral("the output cannot be written"), 1);
}

int show(const QList<emulator::StoredDocument>& all, const Request& request)
{
    if (!request.number) {
        if (request.json)
            print(QJsonDocument(emulator::documentview::listJson(all)));
        else
            print(emulator::documentview::list(all));
        return 0;
    }
    const auto found
        = std::find_if(all.cbegin(), all.cend(), [&request](const emulator::StoredDocument& document) {
              return document.record.number == *request.number;
          });
    if (found == all.cend())
        return fail(QStringLiteral("there is no document %1; the last one is %2")
                        .arg(*request.number)
                        .arg(all.size()),
            1);
    if (request.json)
        print(QJsonDocument(emulator::documentview::wholeJson(*found)));
    else
        print(emulator::documentview::whole(*found));
    return 0;
}

} // namespace

int run(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    const QCommandLineOption help = parser.addHelpOption();
    if (!parser.parse(arguments))
        return fail(parser.errorText(), 2);
    if (parser.isSet(help)) {
        print(parser.helpText());
        return finish(0);
    }
    Request request;
    if (const QString error = fill(parser, request); !error.isEmpty())
        return fail(error, 2);
    try {
        return finish(show(emulator::Memory::documentsOf(request.folder), request));
    } catch (const emulator::MemoryError& error) {
        return fail(QStringLiteral("the state %1 cannot be read: %2").arg(request.folder, error.text()), 1);
    }
}

} // namespace documents
