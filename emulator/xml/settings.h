#pragma once

#include "xml/answer.h"

namespace emulator {

class Register;

/// The tree of settings: section, subsection, setting. The register keeps it.
class XmlSettings
{
public:
    explicit XmlSettings(Register& device)
        : m_device(device)
    {
    }

    /// Answers what the tree asks for, or that there is no such setting.
    XmlAnswer read(const XmlNode& asked) const;
    /// Writes all of the tree or nothing.
    XmlVerdict write(const XmlNode& wanted);

private:
    QString value(const QString& path) const;
    void set(const QString& path, const QString& text);

    Register& m_device;
};

} // namespace emulator
