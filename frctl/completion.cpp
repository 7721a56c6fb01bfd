#include "completion.h"

#include "errors.h"
#include "frctltr.h"

namespace frctl {

namespace {

bool isFile(const QString& word)
{
    return word == QStringLiteral("FILE") || word == QStringLiteral("FILE...")
        || word == QStringLiteral("DIR") || word == QStringLiteral("PORT");
}

/// HEX and XML are to be written so, PATH stands for something else.
bool isLiteral(const QString& word)
{
    return word == QStringLiteral("HEX") || word == QStringLiteral("XML") || word.toUpper() != word;
}

} // namespace

Offer offerOf(const QString& shown)
{
    Offer offer;
    if (shown == QStringLiteral("[COMMAND]")) {
        for (const Command& command : commands())
            offer.words.append(QLatin1String(command.name));
        return offer;
    }
    const QStringList words = shown.section(QLatin1Char(' '), 0, 0).split(QLatin1Char('|'));
    for (const QString& word : words) {
        if (isFile(word))
            offer.withFiles = true;
        else if (isLiteral(word) && !word.contains(QLatin1Char('=')) && !word.startsWith(QLatin1Char('-')))
            offer.words.append(word);
    }
    return offer;
}

Task prepareCompletion(const Options& options)
{
    const QString shell = options.arguments.constFirst();
    if (shell != QStringLiteral("bash") && shell != QStringLiteral("zsh"))
        throw UsageError(tr("completion: \"%1\" is neither bash nor zsh").arg(shell));
    Output output;
    output.lines = {shell == QStringLiteral("bash") ? bashCompletion() : zshCompletion()};
    output.areLinesAll = true;
    Task task;
    task.alone = [output] { return output; };
    return task;
}

} // namespace frctl
