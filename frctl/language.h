#pragma once

#include <QStringList>

namespace frctl {

/// The languages that frctl speaks, as --lang names them.
QStringList languages();
/// That of --lang, whatever else the command line says; without it that of the environment.
QString languageOf(const QStringList& commandLine);
/// From now on texts for people are in that language.
void useLanguage(const QString& language);

} // namespace frctl
