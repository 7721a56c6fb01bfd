#pragma once

#include "messagelog.h"

#include <QString>

/// The lines that were logged since the last call, each with the first letter of its level; the usual last
/// one, at info level, as "done".
inline std::string takenLines()
{
    std::string text;
    for (const std::string& line : MessageLog::taken()) {
        const std::string message = line.substr(line.find(": ") + 2);
        text += text.empty() ? "" : "; ";
        const bool isDone = message == "Команда выполнена" && line.rfind("info ", 0) == 0;
        text += isDone ? "done" : line.substr(0, 1) + ' ' + message;
    }
    return text;
}

/// Whether the text is the pattern, in which an ellipsis stands for any text.
inline bool matches(const std::string& text, const std::string& pattern)
{
    const QString whole = QString::fromStdString(text);
    const QStringList parts = QString::fromStdString(pattern).split(QStringLiteral("…"));
    qsizetype at = 0;
    for (const QString& part : parts) {
        const qsizetype found = whole.indexOf(part, at);
        if (found < 0 || (at == 0 && found > 0))
            return false;
        at = found + part.size();
    }
    return parts.size() > 1 ? whole.endsWith(parts.last()) : text == pattern;
}
