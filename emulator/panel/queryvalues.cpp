#include "panel/queryvalues.h"

#include "http/problem.h"
#include "http/request.h"

namespace emulator::panel::queryvalues {

namespace {

const QString between = QStringLiteral(", ");

[[noreturn]] void fail(const QString& name, const QString& what)
{
    throw http::Problem(400, QStringLiteral("%1 %2.").arg(name, what));
}

void checkWord(const QString& name, const QString& word, const QStringList& words)
{
    if (!words.contains(word))
        fail(name, QStringLiteral("is one of: ") + words.join(between));
}

} // namespace

void checkNames(const http::Request& request, const QStringList& known)
{
    QStringList given;
    for (const auto& [name, value] : request.query) {
        if (!known.contains(name))
            fail(name,
                known.isEmpty() ? QStringLiteral("is not known here, where a query has no meaning")
                                : QStringLiteral("is not known here; known are: ") + known.join(between));
        if (given.contains(name))
            fail(name, QStringLiteral("stands twice in the query"));
        given.append(name);
    }
}

bool flag(const http::Request& request, const QString& name)
{
    const QString yes = QStringLiteral("true");
    const QString no = QStringLiteral("false");
    return word(request, name, {yes, no}).value_or(no) == yes;
}

std::optional<QString> word(const http::Request& request, const QString& name, const QStringList& words)
{
    const std::optional<QString> found = request.queryValue(name);
    if (found)
        checkWord(name, *found, words);
    return found;
}

QStringList someWords(const http::Request& request, const QString& name, const QStringList& words)
{
    const std::optional<QString> text = request.queryValue(name);
    const QStringList found = text ? text->split(QLatin1Char(',')) : QStringList();
    for (const QString& one : found)
        checkWord(name, one, words);
    return found;
}

} // namespace emulator::panel::queryvalues
