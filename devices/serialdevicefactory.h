#pragma once

#include <QString>

#include <memory>

namespace devices {

class StreamDevice;

/// The device for a port's name: "tcp:host:port" (an IPv6 address in brackets), anything else is a serial
/// line, by its path or its bare name. Null when the text names no port: empty, or a TCP address without a
/// host or with a bad port number. Nothing is opened.
std::unique_ptr<StreamDevice> createSerialDevice(const QString& name);

} // namespace devices
