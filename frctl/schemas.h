#pragma once

#include <QByteArray>
#include <QStringList>

namespace frctl {

/// The schemas that are built into the program: "output", "receipt".
QStringList schemaNames();
/// The schema as its file in docs/ has it.
QByteArray schemaText(const QString& name);

} // namespace frctl
