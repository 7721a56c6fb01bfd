#pragma once

#include <QJsonObject>

namespace emulator::panel {

class Desk;

/// A register at a glance, and its parts.
namespace stateview {

QJsonObject whole(const Desk& desk);
/// For the list of all registers.
QJsonObject brief(const Desk& desk);
QJsonObject clock(const Desk& desk);
QJsonObject drawer(const Desk& desk);
QJsonObject paper(const Desk& desk);
QJsonObject cover(const Desk& desk);
QJsonObject power(const Desk& desk);
QJsonObject operatorLink(const Desk& desk);
QJsonObject settings(const Desk& desk);

} // namespace stateview

} // namespace emulator::panel
