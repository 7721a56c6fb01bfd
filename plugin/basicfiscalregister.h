#pragma once

#include "abstractfiscalregister.h"
#include "basicfrsettings.h"

#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QString>

#include <memory>
#include <vector>

class AbstractSerialDriver;

namespace hw {

/// A fiscal register as the host's settings form and its work see it, whatever the family. The class info
/// makes the form: label, editor, hint, choices and bound of a property.
class BasicFiscalRegister : public QObject, public AbstractFiscalRegister
{
    Q_OBJECT
    Q_INTERFACES(hw::AbstractFiscalRegister)
    Q_CLASSINFO("deviceId:name", "Номер ФР")
    Q_CLASSINFO("deviceId:type", "num")
    Q_CLASSINFO("deviceId:max", "19")
    Q_CLASSINFO("deviceId:info",
        "Номер фискального регистратора. Должен быть уникальным среди всех подключенных ФР, возможные "
        "значения - от 0 до 19. Этот номер используется в названиях секций tallyroll.ini для задания "
        "настроек для конкретного ФР (параметры программирования, соотнесение отделов и т д)")
    Q_CLASSINFO("speedEnumerate:name", "Перебор скорости")
    Q_CLASSINFO("speedEnumerate:type", "strEnum")
    Q_CLASSINFO("speedEnumerate:strEnum", "выкл;вкл")
    Q_CLASSINFO("speedEnumerate:info", "Выполнять перебор скорости при повторной попытке установки связи")
    Q_PROPERTY(int hardwareClass READ getHardwareClass CONSTANT)
    Q_PROPERTY(unsigned int deviceId READ getDeviceId WRITE setDeviceId)
    Q_PROPERTY(bool speedEnumerate READ isSpeedEnumerate WRITE setSpeedEnumerate)
    // Meant to be write only: what the host set cannot be read back.
    Q_PROPERTY(hw::fr::DriverOptions driverOptions WRITE setDriverOptions)

public:
    explicit BasicFiscalRegister(
        const QSharedPointer<BasicFrSettings>& registerSettings, QObject* parent = nullptr);
    BasicFiscalRegister(const BasicFiscalRegister&) = delete;
    BasicFiscalRegister& operator=(const BasicFiscalRegister&) = delete;
    /// Deletes the driver.
    ~BasicFiscalRegister() override;

    AbstractFrDriver* getLegacyDriver() override;
    AbstractPrinter* getPrinter() override;
    unsigned int getDeviceId() const override;
    QSharedPointer<AbstractUpgradeManager> getUpgradeManager() const override;
    bool isSpeedEnumerate() const override;
    void setSpeedEnumerate(bool enumerate) override;
    void setDeviceId(unsigned int deviceId) override;

    /// The host's number for fiscal registers among its kinds of devices.
    int getHardwareClass() const;
    /// Takes over each option of the map; options that are not in it keep their values.
    void setDriverOptions(const hw::fr::DriverOptions& options);
    /// Publishes the names, behind those published before, as the dynamic property unusedProps: what a form
    /// need not show. For derived device objects.
    void addUnusedProperties(const QList<QString>& names);

protected:
    AbstractFrDriver* driver = nullptr;
    QSharedPointer<BasicFrSettings> settings;
    QList<QString> unusedProperties;
    /// What the driver works over; a driver does not delete its transport. They go after the driver.
    std::vector<std::unique_ptr<AbstractSerialDriver>> transports;
};

} // namespace hw
