#pragma once

#include <QObject>
#include <QVariant>

namespace hw {

/// The plugin's one object: gives device objects to the host.
class SpfFiscalRegisterFactory : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "SpfFiscalRegisterFactory" FILE "spf.json")

public:
    explicit SpfFiscalRegisterFactory(QObject* parent = nullptr);
    ~SpfFiscalRegisterFactory() override;

public Q_SLOTS:
    /// A new device object as hw::SpfFiscalRegister*; the caller owns it.
    QVariant getObject() const;
};

} // namespace hw
