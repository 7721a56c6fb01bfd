#pragma once

#include <QByteArray>
#include <QString>

namespace devices {

/// Is told what goes over a line, at the line itself: what a driver reads away unseen, too.
class LineObserver
{
public:
    virtual ~LineObserver() = default;

    /// Told before the line is opened, also anew by a driver; what it throws keeps it closed.
    virtual void opening() { }
    virtual void opened() = 0;
    /// Told before they go; what it throws keeps them back.
    virtual void sent(const QByteArray& bytes) = 0;
    virtual void received(const QByteArray& bytes) = 0;
    /// A write failed, or the line is gone.
    virtual void failed(const QString& reason) = 0;
};

} // namespace devices
