#pragma once

#include "command.h"

#include <QStringList>

namespace frctl {

/// What a shell offers for an option's value or a command's argument.
struct Offer
{
    QStringList words = {};
    /// Names of files, too, there or behind the words.
    bool withFiles = false;
};

/// Out of the text that help shows for it: "open|state", "FILE", "[COMMAND]" ...
Offer offerOf(const QString& shown);

/// The scripts that the shells read.
QString bashCompletion();
QString zshCompletion();
Task prepareCompletion(const Options& options);

} // namespace frctl
