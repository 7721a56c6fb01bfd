#pragma once

#include <QString>

namespace Log4Qt {

class Logger;

/// Gives the loggers out.
class LogManager
{
public:
    /// The logger "root.name", or "root" for an empty name. It is made on the first call and lives as long as
    /// the process, as with Log4Qt.
    static Logger* logger(const QString& root, const QString& name);
};

} // namespace Log4Qt
