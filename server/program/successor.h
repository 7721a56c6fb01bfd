#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

namespace frserver {

/// The program in the file that this one was started from, which an update may have replaced.
class Successor
{
public:
    /// To be made before that: then the file is no longer to be found.
    explicit Successor(const QStringList& commandLine);
    ~Successor();
    Successor(const Successor&) = delete;
    Successor& operator=(const Successor&) = delete;

    /// Has it start and read the configuration; it serves nothing. Calls back with its own words when it does
    /// not, else with nothing. Nothing happens while an earlier trial is under way.
    void examine(const std::function<void(const QString& fault)>& tried);
    /// Takes this program's place in the process, with its command line. Where that fails this program begins
    /// anew. Gives back a fault of the system.
    QString takePlace() const;

private:
    void finish(const QString& fault);
    QString faultOf(const QProcess& program) const;

    QString m_file;
    QStringList m_arguments;
    std::unique_ptr<QProcess> m_trial;
    QTimer m_patience;
    std::function<void(const QString& fault)> m_tried;
};

} // namespace frserver
