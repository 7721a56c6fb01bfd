#pragma once

#include "tape/pagejson.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QStringList>

#include <array>
#include <optional>
#include <type_traits>

namespace emulator {

/// Writes records as JSON objects. What a record consists of is told by its describe(), the same one for
/// writing and for reading.
class StateWriter
{
public:
    /// How a describe() takes its record.
    template <typename T>
    using Access = const T;

    template <typename T>
    void field(const char* name, const T& value)
    {
        m_object[QLatin1String(name)] = encoded(value);
    }
    /// What must hold of what was read.
    void require(bool, const char*) { }
    const QJsonObject& object() const { return m_object; }

    static QJsonValue encoded(bool value) { return value; }
    static QJsonValue encoded(const QString& value) { return value; }
    static QJsonValue encoded(const QJsonObject& value) { return value; }
    static QJsonValue encoded(const QByteArray& value) { return QString::fromLatin1(value.toBase64()); }
    static QJsonValue encoded(const QDate& value) { return value.toString(Qt::ISODate); }
    static QJsonValue encoded(const QDateTime& value)
    {
        return value.isValid() ? QJsonValue(value.toMSecsSinceEpoch()) : QJsonValue();
    }
    static QJsonValue encoded(const tape::Page& value) { return tape::toJson(value); }
    static QJsonValue encoded(const QList<tape::Line>& value) { return tape::toJson(value); }
    template <typename T>
    static QJsonValue encoded(const std::optional<T>& value)
    {
        return value ? encoded(*value) : QJsonValue();
    }
    template <typename T>
    static QJsonValue encoded(const QList<T>& values)
    {
        return encodedAll(values);
    }
    template <typename T, size_t N>
    static QJsonValue encoded(const std::array<T, N>& values)
    {
        return encodedAll(values);
    }
    template <typename T>
    static QJsonValue encoded(const QMap<QString, T>& values)
    {
        QJsonObject object;
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            object[value.key()] = encoded(value.value());
        return object;
    }
    template <typename T>
    static QJsonValue encoded(const QMap<QByteArray, T>& values)
    {
        QMap<QString, T> named;
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            named[QString::fromLatin1(value.key().toBase64())] = value.value();
        return encoded(named);
    }
    template <typename T>
    static QJsonValue encoded(const T& value)
    {
        if constexpr (std::is_enum_v<T> || std::is_integral_v<T>) {
            return static_cast<qint64>(value);
        } else {
            StateWriter writer;
            describe(writer, value);
            return writer.object();
        }
    }

private:
    template <typename T>
    static QJsonValue encodedAll(const T& values)
    {
        QJsonArray array;
        for (const auto& value : values)
            array.append(encoded(value));
        return array;
    }

    QJsonObject m_object;
};

} // namespace emulator
