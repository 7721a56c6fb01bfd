#pragma once

#include "setting.h"

#include <QStringList>

namespace frctl {

/// A section of the configuration: what frctl is told of a register by its name.
struct ConfiguredRegister
{
    QString name;
    Settings settings;
};

/// Registers by name, from files of which an earlier one goes before a later one, key by key.
class Configuration
{
public:
    /// That file, which must be there; with an empty name those of the user and of the machine, which need
    /// not. Throws UsageError that names file, section and key for whatever is wrong in them.
    explicit Configuration(const QString& fileName = {});
    /// Those of the files that are there.
    explicit Configuration(const QStringList& files);

    /// Those that were looked for, whether they are there or not.
    const QStringList& files() const { return m_files; }
    const QList<ConfiguredRegister>& registers() const { return m_registers; }
    /// Throws UsageError with the names that there are.
    const ConfiguredRegister& require(const QString& name) const;

private:
    void read(const QString& fileName);
    ConfiguredRegister& registerOf(const QString& name);

    QStringList m_files;
    QList<ConfiguredRegister> m_registers;
};

} // namespace frctl
