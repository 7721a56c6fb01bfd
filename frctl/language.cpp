#include "language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QTranslator>

#include <memory>
#include <vector>

namespace frctl {

namespace {

/// Of what Qt says for the system; its own translations are on few machines.
[[maybe_unused]] constexpr const char* systemTexts[] = {
    QT_TRANSLATE_NOOP("QIODevice", "No such file or directory"),
    QT_TRANSLATE_NOOP("QIODevice", "Permission denied"),
    QT_TRANSLATE_NOOP("QIODevice", "No space left on device"),
};

/// The first of the usual variables that says something counts, also when it names no language of ours.
QString environmentLocale()
{
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const QString locale = qEnvironmentVariable(name); !locale.isEmpty())
            return locale;
    }
    return {};
}

QString environmentLanguage()
{
    // Nothing needs to be installed for a locale to have a language.
    const QString language = QLocale::languageToCode(QLocale(environmentLocale()).language());
    return languages().contains(language) ? language : languages().constFirst();
}

using Translators = std::vector<std::unique_ptr<QTranslator>>;

Translators translatorsOf(const QString& language)
{
    Translators translators;
    for (const QFileInfo& file :
        QDir(QStringLiteral(":/texts")).entryInfoList({QStringLiteral("*_%1.qm").arg(language)})) {
        translators.push_back(std::make_unique<QTranslator>());
        if (translators.back()->load(file.filePath()))
            QCoreApplication::installTranslator(translators.back().get());
    }
    return translators;
}

} // namespace

QStringList languages()
{
    return {QStringLiteral("en"), QStringLiteral("ru")};
}

QString languageOf(const QStringList& commandLine)
{
    const QString option = QStringLiteral("--lang");
    const QString joined = option + QLatin1Char('=');
    QString language;
    for (qsizetype index = 0; index < commandLine.size(); ++index) {
        const QString& argument = commandLine.at(index);
        if (argument.startsWith(joined))
            language = argument.mid(joined.size());
        else if (argument == option)
            language = commandLine.value(index + 1);
    }
    return languages().contains(language) ? language : environmentLanguage();
}

void useLanguage(const QString& language)
{
    // A translator that goes takes itself out of the program.
    static Translators current;
    current = translatorsOf(language);
}

} // namespace frctl
