#pragma once

#include <QMap>
#include <QString>

namespace emulator {

/// The settings that have names, beside those that have numbers. Header lines and logo are kept with the
/// numbers and the picture: here they stay empty.
class Settings
{
public:
    /// As they leave the factory, with this paper.
    explicit Settings(int width);

    bool isKnown(const QString& path) const { return m_values.contains(path); }
    QString text(const QString& path) const { return m_values.value(path); }
    bool isOn(const QString& path) const { return isTrue(text(path)); }
    void set(const QString& path, const QString& text) { m_values[path] = text; }
    const QMap<QString, QString>& all() const { return m_values; }

    /// Normal characters on a line.
    int paperWidth() const;

    static bool isTrue(const QString& text);
    static bool isFlag(const QString& text);
    /// Paper that the pages still have room on.
    static bool isWidth(const QString& text);

private:
    QMap<QString, QString> m_values;
};

} // namespace emulator
