#pragma once

#include <driverlogtoqt.h>
#include <QMessageLogContext>
#include <QRegularExpression>
#include <QString>

#include <string>
#include <vector>

/// Collects what the drivers log while it lives, as "level category: text".
class MessageLog
{
public:
    MessageLog()
    {
        driverLogToQt();
        lines.clear();
        former = qInstallMessageHandler(&MessageLog::handle);
    }
    ~MessageLog() { qInstallMessageHandler(former); }
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    static std::vector<std::string> taken() { return std::exchange(lines, {}); }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        static const char* const levels[] = {"debug", "warn", "error", "fatal", "info"};
        lines.push_back(std::string(levels[type]) + ' ' + context.category + ": " + text.toStdString());
    }

    static inline std::vector<std::string> lines;
    QtMessageHandler former = nullptr;
};

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

/// Whether the lines are those of the pattern, in which an ellipsis stands for any text within one line, so
/// that the level of each line counts.
inline bool matches(const std::string& lines, const std::string& pattern)
{
    const QString expression = QRegularExpression::escape(QString::fromStdString(pattern))
                                   .replace(QRegularExpression::escape(QStringLiteral("…")),
                                       QStringLiteral("(?:(?!; (?:[idwe] |done)).)*"));
    return QRegularExpression(
        QRegularExpression::anchoredPattern(expression), QRegularExpression::DotMatchesEverythingOption)
        .match(QString::fromStdString(lines))
        .hasMatch();
}
