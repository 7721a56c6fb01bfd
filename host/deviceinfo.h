#pragma once

#include "efrdriver.h"
#include "frhost_export.h"

#include <QMap>
#include <QString>

/// Identity of a device: who made it, which model, its number, and the widths of its paper.
class FRHOST_EXPORT DeviceInfo
{
public:
    DeviceInfo(const QString& producerCode, const QString& modelCode);

    QString getLoggerName() const { return m_loggerName; }
    void setLoggerName(const QString& name) { m_loggerName = name; }
    QString getProducerCode() const { return m_producerCode; }
    void setProducerCode(const QString& code) { m_producerCode = code; }
    /// Name of the producer by its code, empty for a code not known; withCode puts the code before it, and
    /// leaves the code alone when there is no name.
    QString getProducerName(bool withCode) const;
    QString getModelCode() const { return m_modelCode; }
    QString getModelName() const { return m_modelName; }
    void setModel(const QString& code, const QString& name);
    /// Serial number of the device.
    QString getNumber() const { return m_number; }
    void setNumber(const QString& number) { m_number = number; }
    QString getFirmwareVersion() const { return m_firmwareVersion; }
    void setFirmwareVersion(const QString& version) { m_firmwareVersion = version; }

    /// Characters of the normal font on a line.
    unsigned getBandWidth() const { return m_bandWidth; }
    unsigned getClicheLineCount() const { return m_clicheLineCount; }
    unsigned getTailLineCount() const { return m_tailLineCount; }
    unsigned getMargin() const { return m_margin; }
    /// Characters on a line, lines of the header, lines of the advertising text, characters of the left
    /// margin.
    void setBandInfo(unsigned bandWidth, unsigned clicheLineCount, unsigned tailLineCount, unsigned margin);
    QMap<EFrDriver::FontTypes, unsigned> getBandWidthInfo() const { return m_bandWidthFonts; }
    /// Characters on a line by font.
    void setBandWidthInfo(const QMap<EFrDriver::FontTypes, unsigned>& widths) { m_bandWidthFonts = widths; }

    /// Several lines for a log.
    QString toString() const;

private:
    QString m_loggerName;
    QString m_producerCode;
    QString m_modelCode;
    QString m_modelName;
    QString m_number;
    QString m_firmwareVersion;
    unsigned m_bandWidth = 0;
    unsigned m_clicheLineCount = 0;
    unsigned m_tailLineCount = 0;
    unsigned m_margin = 0;
    QMap<EFrDriver::FontTypes, unsigned> m_bandWidthFonts;
};
