#pragma once

#include "abstractregisterparameters.h"
#include "basicfiscalregister.h"

#include <QVariant>

class FrSpfSettings;

namespace hw {

/// The device object of a register of this family. The host sets the properties and then calls init once.
class SpfFiscalRegister : public BasicFiscalRegister, public AbstractRegisterParameters
{
    Q_OBJECT
    Q_INTERFACES(hw::AbstractRegisterParameters)
    Q_CLASSINFO("name", "Spf")
    Q_CLASSINFO("type", "Fr")
    Q_CLASSINFO("displayName", "Сервис Плюс Ф")
    Q_CLASSINFO("devices", "СП402-Ф, СП802-Ф")
    Q_CLASSINFO("info", "Драйвер фискального регистратора Сервис Плюс")
    Q_CLASSINFO("serialObj:name", "Порт")
    Q_CLASSINFO("serialObj:type", "port")
    Q_CLASSINFO("serialObj:info", "Порт к которому подключено устройство")
    Q_CLASSINFO("protocol:name", "Протокол")
    Q_CLASSINFO("protocol:type", "strEnum")
    Q_CLASSINFO("protocol:strEnum", "XML;HEX")
    Q_CLASSINFO("protocol:info", "Протокол обмена данными с фискальным регистратором")
    Q_CLASSINFO("protocolVer:name", "Версия протокола")
    Q_CLASSINFO("protocolVer:info", "Версия управляющего протокола, реализованная в ККТ")
    Q_PROPERTY(QVariant serialObj READ getSerialDevice WRITE setSerialDevice)
    Q_PROPERTY(QString protocol READ getProtocol WRITE setProtocol)
    Q_PROPERTY(QString protocolVer READ getProtocolVersion WRITE setProtocolVersion)

public:
    SpfFiscalRegister();
    ~SpfFiscalRegister() override;

    QSharedPointer<FrSpfSettings> getSettings() const;

    /// The host's serial device object as a QObject pointer; init reads it.
    QVariant getSerialDevice() const;
    void setSerialDevice(const QVariant& device);
    /// "HEX" or "XML"; init reads it.
    QString getProtocol() const;
    void setProtocol(const QString& name);
    /// Version of the control protocol that goes into each XML request.
    QString getProtocolVersion() const;
    void setProtocolVersion(const QString& version);

    // The driver's settings as data: the driver knows them, and hosts ask the device object.
    QList<fr::RegisterParameter> knownParameters() const override;
    QList<fr::RegisterParameter> readParameters(const QStringList& names) override;
    std::optional<FrParameter> assignment(const QString& name, const QString& value) const override;

public Q_SLOTS:
    /// Builds the driver. Without a usable serial device there is none afterwards, which the host sees in a
    /// null getLegacyDriver. Called again, it builds another driver and leaves the former one alone.
    void init();

private:
    QObject* m_serialObject = nullptr;
    QString m_protocol;
};

} // namespace hw
