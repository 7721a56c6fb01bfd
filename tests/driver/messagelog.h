#pragma once

#include <driverlogtoqt.h>
#include <QMessageLogContext>
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
