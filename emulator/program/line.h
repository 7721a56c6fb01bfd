#pragma once

#include <QByteArray>
#include <QObject>

/// Where the host sits: a pseudo terminal or a TCP connection.
class Line : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// How a host reaches it, for the message that says so.
    virtual QString address() const = 0;
    virtual void write(const QByteArray& bytes) = 0;
    /// The host that was heard last is owed no answer any more.
    virtual void settle() { }

Q_SIGNALS:
    void received(const QByteArray& bytes);
    /// Another host has come, where the line tells.
    void connected();
    /// What comes now is of another host than what came before.
    void changed();
};
