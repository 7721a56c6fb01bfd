#include "spffiscalregister.h"

#include "abstractserialdevice.h"
#include "frspfsettings.h"
#include "serialdriverwrapper.h"
#include "spfhex/frspf.h"
#include "spfxml/frspf.h"

namespace hw {

SpfFiscalRegister::SpfFiscalRegister()
    : BasicFiscalRegister(QSharedPointer<FrSpfSettings>::create())
    , m_protocol(QStringLiteral("XML"))
{
}

SpfFiscalRegister::~SpfFiscalRegister() = default;

QSharedPointer<FrSpfSettings> SpfFiscalRegister::getSettings() const
{
    return settings.dynamicCast<FrSpfSettings>();
}

QVariant SpfFiscalRegister::getSerialDevice() const
{
    return QVariant::fromValue(m_serialObject);
}

void SpfFiscalRegister::setSerialDevice(const QVariant& device)
{
    m_serialObject = device.value<QObject*>();
}

QString SpfFiscalRegister::getProtocol() const
{
    return m_protocol;
}

void SpfFiscalRegister::setProtocol(const QString& name)
{
    m_protocol = name;
}

QString SpfFiscalRegister::getProtocolVersion() const
{
    return getSettings()->getProtocolVer();
}

void SpfFiscalRegister::setProtocolVersion(const QString& version)
{
    getSettings()->setProtocolVer(version);
}

QList<fr::RegisterParameter> SpfFiscalRegister::knownParameters() const
{
    const auto* const source = dynamic_cast<const AbstractRegisterParameters*>(driver);
    return source == nullptr ? QList<fr::RegisterParameter>() : source->knownParameters();
}

QList<fr::RegisterParameter> SpfFiscalRegister::readParameters(const QStringList& names)
{
    auto* const source = dynamic_cast<AbstractRegisterParameters*>(driver);
    return source == nullptr ? QList<fr::RegisterParameter>() : source->readParameters(names);
}

std::optional<FrParameter> SpfFiscalRegister::assignment(const QString& name, const QString& value) const
{
    const auto* const source = dynamic_cast<const AbstractRegisterParameters*>(driver);
    return source == nullptr ? std::nullopt : source->assignment(name, value);
}

void SpfFiscalRegister::init()
{
    auto* const device = qobject_cast<AbstractSerialDevice*>(m_serialObject);
    if (device == nullptr)
        return;
    AbstractSerialDriver* const serial
        = transports.emplace_back(std::make_unique<SerialDriverWrapper>(device)).get();
    // Any text but this one, also "hex" or none at all, is meant to give the XML driver.
    if (m_protocol == QStringLiteral("HEX"))
        driver = new spfhex::FrSpf(serial, getSettings().data());
    else
        driver = new spfxml::FrSpf(serial, getSettings().data());
}

} // namespace hw
