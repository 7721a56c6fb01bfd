#pragma once

#include "driveroptions.h"
#include "frhost_export.h"

#include <QObject>

/// Settings of a register, shared by the device object and its driver. The host writes them through the
/// device object's properties before the driver exists.
class FRHOST_EXPORT BasicFrSettings : public QObject
{
    Q_OBJECT
    /// The number of the register, read only and in lower case, unlike the device object's property.
    Q_PROPERTY(unsigned int deviceid READ getDeviceId)

public:
    explicit BasicFrSettings(QObject* parent = nullptr);
    ~BasicFrSettings() override;

    /// Options that overrule the driver's built-in ones.
    const hw::fr::DriverOptions& getOptions() const { return m_options; }
    /// Takes over each option of the map; the others keep their values.
    void mergeOptions(const hw::fr::DriverOptions& options);

    /// Number of the register among the host's registers.
    quint32 getDeviceId() const { return m_deviceId; }
    void setDeviceId(quint32 deviceId) { m_deviceId = deviceId; }
    /// Whether a repeated connection tries other speeds.
    bool isSpeedEnumerate() const { return m_speedEnumerate; }
    void setSpeedEnumerate(bool enumerate) { m_speedEnumerate = enumerate; }

private:
    hw::fr::DriverOptions m_options;
    quint32 m_deviceId = 0;
    bool m_speedEnumerate = true;
};
