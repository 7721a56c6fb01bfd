#include "completion.h"

#include "errors.h"
#include "frctltr.h"
#include "namescommand.h"

namespace frctl {

namespace {

/// "[PORT...]" is PORT.
QString withoutBrackets(QString word)
{
    for (const char* const sign : {"[", "]", "..."})
        word.remove(QLatin1String(sign));
    return word;
}

bool isFile(const QString& word)
{
    return QStringList{
        QStringLiteral("FILE"), QStringLiteral("DIR"), QStringLiteral("PORT"), QStringLiteral("OUT")}
        .contains(word);
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
    if (shown == QStringLiteral("[LIST]")) {
        offer.words = listNames();
        return offer;
    }
    const QStringList arguments = shown.split(QLatin1Char(' '));
    for (const QString& argument : arguments.mid(1))
        offer.withFiles = offer.withFiles || isFile(withoutBrackets(argument));
    const QStringList words = arguments.constFirst().split(QLatin1Char('|'));
    for (const QString& word : words) {
        if (isFile(withoutBrackets(word)))
            offer.withFiles = true;
        else if (isLiteral(word) && !word.contains(QLatin1Char('=')) && !word.startsWith(QLatin1Char('-')))
            offer.words.append(word);
    }
    // A name in capitals may be written in small letters.
    for (const QString& word : QStringList(offer.words)) {
        if (word != word.toLower() && word == word.toUpper())
            offer.words.append(word.toLower());
    }
    return offer;
}

Task prepareCompletion(const Options& options)
{
    const QString shell = options.arguments.constFirst();
    if (shell != QStringLiteral("bash") && shell != QStringLiteral("zsh"))
        throw UsageError(tr("completion: \"%1\" is neither bash nor zsh").arg(shell));
    const QString script = shell == QStringLiteral("bash") ? bashCompletion() : zshCompletion();
    return alone([script] { return plainText(script); });
}

} // namespace frctl
