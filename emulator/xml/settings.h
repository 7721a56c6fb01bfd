#pragma once

#include "xml/answer.h"

#include <QMap>

namespace emulator {

class Register;

/// The tree of settings: section, subsection, setting. What shows on the tape is kept by the register.
class XmlSettings
{
public:
    explicit XmlSettings(Register& device);

    /// Answers what the tree asks for, or that there is no such setting.
    XmlAnswer read(const XmlNode& asked) const;
    /// Writes all of the tree or nothing.
    XmlVerdict write(const XmlNode& wanted);
    bool isOn(const QString& path) const;

private:
    QString value(const QString& path) const;
    void set(const QString& path, const QString& text);

    Register& m_device;
    QMap<QString, QString> m_values;
};

} // namespace emulator
