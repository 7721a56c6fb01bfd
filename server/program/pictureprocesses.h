#pragma once

#include "api/painter.h"

#include <QObject>
#include <QStringList>

#include <chrono>

class QProcess;

namespace frserver {

/// Draws each receipt in a process of its own, which is ended when it takes too long.
class PictureProcesses : public Painter
{
public:
    struct Settings
    {
        /// Started with --preview; see preview/previewjob.h.
        QString program = QStringLiteral("/proc/self/exe");
        /// Where the driver is.
        QStringList plugins = {};
        std::chrono::milliseconds patience{5'000};
        /// Each takes a processor, which the registers' workers want, too.
        qsizetype mostAtOnce = 2;
        qint64 mostBytes = 16LL * 1024 * 1024;
    };

    explicit PictureProcesses(const Settings& settings);
    ~PictureProcesses() override;

    /// 503 when too many are drawn.
    http::Answer paint(const PictureOrder& order) override;

private:
    bool isBusy() const;
    void watch(QProcess& process) const;
    QByteArray message(const PictureOrder& order) const;

    const Settings m_settings;
    /// Of letters as dots.
    const QString m_drawing;
    /// The parent of the processes.
    QObject m_room;
};

} // namespace frserver
