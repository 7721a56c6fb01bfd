#pragma once

#include "abstractfiscalregister.h"

#include <QVariant>

#include <memory>

class StandInDriver;

/// The device object of a register without a line: what it is given of one is its name alone.
class StandInRegister : public QObject, public hw::AbstractFiscalRegister
{
    Q_OBJECT
    Q_INTERFACES(hw::AbstractFiscalRegister)
    Q_PROPERTY(QVariant serialObj MEMBER m_line)
    Q_PROPERTY(QVariant protocol MEMBER m_ignored)
    Q_PROPERTY(QVariant deviceId MEMBER m_ignored)
    Q_PROPERTY(QVariant speedEnumerate MEMBER m_ignored)
    Q_PROPERTY(QVariant driverOptions MEMBER m_ignored)

public:
    StandInRegister();
    ~StandInRegister() override;

    AbstractFrDriver* getLegacyDriver() override;
    hw::AbstractPrinter* getPrinter() override { return nullptr; }
    unsigned int getDeviceId() const override { return 0; }
    void setDeviceId(unsigned int) override { }
    bool isSpeedEnumerate() const override { return false; }
    void setSpeedEnumerate(bool) override { }
    QSharedPointer<hw::AbstractUpgradeManager> getUpgradeManager() const override { return {}; }

public Q_SLOTS:
    void init();

private:
    QVariant m_line;
    QVariant m_ignored;
    std::unique_ptr<StandInDriver> m_driver;
};

/// What a worker loads in the place of the drivers' plugin.
class StandInFactory : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "StandInFactory" FILE "standin.json")

public Q_SLOTS:
    QVariant getObject() const { return QVariant::fromValue<QObject*>(new StandInRegister); }
};
