#pragma once

#include "basicfrsettings.h"

#include <QString>

/// Settings of the registers of this family.
class FrSpfSettings : public BasicFrSettings
{
    Q_OBJECT

public:
    explicit FrSpfSettings(QObject* parent = nullptr);
    ~FrSpfSettings() override;

    /// Version of the control protocol that goes into each XML request; the HEX protocol ignores it.
    QString getProtocolVer() const { return m_protocolVer; }
    void setProtocolVer(const QString& version) { m_protocolVer = version; }

private:
    QString m_protocolVer = QStringLiteral("13.0");
};
