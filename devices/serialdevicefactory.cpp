#include "serialdevicefactory.h"

#include "serialportdevice.h"
#include "tcpserialdevice.h"

#include <QRegularExpression>

namespace devices {

namespace {
const QString tcpPrefix = QStringLiteral("tcp:");

std::unique_ptr<StreamDevice> createTcpDevice(const QString& address)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:\\[([0-9A-Fa-f:.]+)\\]|([^:\\s]+)):(\\d{1,5})$"));
    const QRegularExpressionMatch match = pattern.match(address);
    const int port = match.captured(3).toInt();
    if (!match.hasMatch() || port < 1 || port > 0xFFFF)
        return nullptr;
    return std::make_unique<TcpSerialDevice>(
        match.captured(1) + match.captured(2), static_cast<quint16>(port));
}
} // namespace

std::unique_ptr<StreamDevice> createSerialDevice(const QString& name)
{
    if (name.startsWith(tcpPrefix))
        return createTcpDevice(name.mid(tcpPrefix.size()));
    if (name.trimmed().isEmpty())
        return nullptr;
    return std::make_unique<SerialPortDevice>(name);
}

} // namespace devices
