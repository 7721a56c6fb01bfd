#pragma once

#include "rack/worker.h"

#include <QProcess>

#include <memory>

namespace frserver {

/// A worker that is a process: this program with --worker.
class WorkerProcess : public Worker
{
    Q_OBJECT

public:
    explicit WorkerProcess(const QString& program, QObject* parent = nullptr);
    /// Waits until it has ended behind what it is doing; one that hangs is killed.
    ~WorkerProcess() override;

    void start() override;
    void send(const QJsonObject& message) override;
    void end() override;
    void kill() override;

private:
    void read();
    void finish(const QString& how);

    const QString m_program;
    std::unique_ptr<QProcess> m_process;
};

} // namespace frserver
