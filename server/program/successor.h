#pragma once

#include <QString>
#include <QStringList>

namespace frserver {

/// The program in the file that this one was started from, which an update may have replaced.
class Successor
{
public:
    /// To be made before that: then the file is no longer to be found.
    explicit Successor(const QStringList& commandLine);

    /// Whether it starts and understands the configuration: its own words when it does not, else nothing. It
    /// serves nothing.
    QString fault() const;
    /// Takes this program's place in the process, with its command line. Where that fails this program begins
    /// anew. Gives back a fault of the system.
    QString takePlace() const;

private:
    QString m_file;
    QStringList m_arguments;
};

} // namespace frserver
