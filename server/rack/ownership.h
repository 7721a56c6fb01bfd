#pragma once

#include "rack/waiting.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace frserver {

/// Which registers this service may work: of those that several have in their configuration each has one
/// owner at a time. Nothing here throws: without the database nothing is held for long.
class Ownership
{
public:
    Ownership() = default;
    virtual ~Ownership() = default;
    Ownership(const Ownership&) = delete;
    Ownership& operator=(const Ownership&) = delete;

    /// To be called every second or so, before whatever depends on it.
    virtual void look() = 0;
    /// Only then the register may be worked.
    virtual bool isHeld(const QString& registerName) const = 0;
    /// What its worker is told of that: "owner", "epoch", "until" (milliseconds of CLOCK_BOOTTIME); empty
    /// where nobody else can have it.
    virtual QJsonObject lease(const QString& registerName) const = 0;
    /// Whoever has it: "host", "process"; empty when that is not known.
    virtual QJsonObject owner(const QString& registerName) const = 0;
    /// Why it is not held, when that is not just another one's having it.
    virtual std::optional<Waiting> obstacle(const QString& registerName) const = 0;
    /// It is this service's still, and at work nowhere: whoever meets it may work it. False when that could
    /// not be written down.
    virtual bool leaveDrive(const QString& /*registerName*/) { return true; }
    /// Others may have it, and it is taken again when none of them does: false, and nothing is done, when
    /// there is nobody who might.
    virtual bool giveWay(const QString& /*registerName*/) { return false; }
    /// Others may have it at once, and it is not taken again.
    virtual void release(const QString& registerName) = 0;
    /// Somebody says that the register was moved to this machine.
    virtual void acceptMoved(const QString& registerName) = 0;
};

} // namespace frserver
