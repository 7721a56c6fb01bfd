#pragma once

#include "command.h"
#include "errors.h"
#include "options.h"

/// What stands behind the program's name, with blanks between the words.
inline frctl::Options parse(const QString& line)
{
    return frctl::parseOptions(("frctl " + line).split(' ', Qt::SkipEmptyParts));
}

/// Empty when nothing is wrong with it.
inline std::string usageError(const QString& line)
{
    try {
        const frctl::Options options = parse(line);
        frctl::findCommand(options).prepare(options);
    } catch (const frctl::UsageError& error) {
        return error.what();
    } catch (const frctl::CheckError& error) {
        return error.what();
    }
    return {};
}
