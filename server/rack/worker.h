#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>

namespace frserver {

/// The process that works a register, as its agent sees it. What it is told and what it tells: see
/// worker/workerloop.h.
class Worker : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// It is not there, or has ended. Whatever becomes of it, ended follows.
    virtual void start() = 0;
    virtual void send(const QJsonObject& message) = 0;
    /// It has nothing more to do: it ends behind what it is doing.
    virtual void end() = 0;
    virtual void kill() = 0;

Q_SIGNALS:
    void told(const QJsonObject& message);
    /// How, for people.
    void ended(const QString& how);
};

} // namespace frserver
