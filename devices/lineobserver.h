#pragma once

#include <QByteArray>
#include <QString>

namespace devices {

/// Is told what goes over a line, at the line itself: what a driver reads away unseen, too.
class LineObserver
{
public:
    virtual ~LineObserver() = default;

    virtual void opened() = 0;
    /// Told before they go.
    virtual void sent(const QByteArray& bytes) = 0;
    virtual void received(const QByteArray& bytes) = 0;
    /// A write failed, or the line is gone.
    virtual void failed(const QString& reason) = 0;
};

} // namespace devices
