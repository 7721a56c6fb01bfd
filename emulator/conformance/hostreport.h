#pragma once

#include <QJsonObject>
#include <QString>

namespace emulator {

struct HostRecord;

/// A record of a host for people and for machines.
namespace hostreport {

QJsonObject toJson(const HostRecord& record);
/// Lines, each with its end.
QString toText(const HostRecord& record);

} // namespace hostreport

} // namespace emulator
