#pragma once

#include "configuration/clockrule.h"
#include "configuration/shiftrule.h"

#include "expectedregister.h"
#include "markpolicy.h"
#include "protocol.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTime>
#include <QTimeZone>

namespace frserver {

/// A register as the configuration has it.
struct RegisterSettings
{
    /// As service and worker tell each other: without what the service alone needs.
    QJsonObject toJson() const;
    static RegisterSettings fromJson(const QJsonObject& json);

    bool hasCashier() const { return !cashier.isEmpty(); }
    /// A document that meets a shift of more than 24 hours waits until the service has closed it. A person
    /// who opens shifts would have to open the next one, too.
    bool closesShift() const { return shift != ShiftRule::Manual && hasCashier(); }

    QString name = {};
    /// As devices::createSerialDevice takes it.
    QString port = {};
    receipt::Protocol protocol = receipt::Protocol::Xml;
    sale::ExpectedRegister expected = {};
    /// For documents that name none, and for the service's own.
    QString cashier = {};
    QString cashierInn = {};
    QTimeZone timeZone = QTimeZone::systemTimeZone();
    ShiftRule shift = ShiftRule::OnSale;
    /// Of a scheduled shift, in the register's zone. An end that is not behind the beginning is of the next
    /// day.
    QTime shiftOpen = {};
    QTime shiftClose = {};
    /// Seconds; 0 for any time.
    int startBefore = 120;
    /// No other program works it but those that take its lock on this machine. Over TCP also: those of other
    /// machines keep the same journal, and a new connection ends the former one, so that whoever was
    /// connected before can make no document any more.
    bool isExclusive = true;
    bool allowsTestDrive = false;
    ClockRule clock = ClockRule::Warn;
    sale::MarkPolicy marks = sale::MarkPolicy::Warn;
    /// Receipts of which nothing is printed are made without paper.
    bool isPaperless = false;
    /// Documents that its fiscal drive can keep.
    int driveCapacity = 230'000;
    /// Files or folders, see devices::findDriverPlugin.
    QStringList plugins = {};
};

} // namespace frserver
