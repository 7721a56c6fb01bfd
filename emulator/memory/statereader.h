#pragma once

#include "memory/memoryerror.h"
#include "tape/page.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QStringList>

#include <array>
#include <optional>
#include <type_traits>
#include <utility>

namespace emulator {

/// Reads records that StateWriter wrote. What is missing, of another type or does not fit throws MemoryError
/// with the path of the field.
class StateReader
{
public:
    /// How a describe() takes its record.
    template <typename T>
    using Access = T;

    StateReader(const QJsonObject& object, const QString& path)
        : m_object(object)
        , m_path(path)
    {
    }

    template <typename T>
    void field(const char* name, T& value)
    {
        const QString key = QLatin1String(name);
        decode(m_object.value(key), pathOf(key), value);
    }
    /// What must hold of what was read.
    void require(bool good, const char* name)
    {
        if (!good)
            fail(pathOf(QLatin1String(name)));
    }

    static void decode(const QJsonValue& json, const QString& path, bool& value);
    static void decode(const QJsonValue& json, const QString& path, qint64& value);
    static void decode(const QJsonValue& json, const QString& path, QString& value);
    static void decode(const QJsonValue& json, const QString& path, QJsonObject& value);
    static void decode(const QJsonValue& json, const QString& path, QByteArray& value);
    static void decode(const QJsonValue& json, const QString& path, QDate& value);
    static void decode(const QJsonValue& json, const QString& path, QDateTime& value);
    static void decode(const QJsonValue& json, const QString& path, tape::Page& value);
    static void decode(const QJsonValue& json, const QString& path, QList<tape::Line>& value);

    template <typename T>
    static void decode(const QJsonValue& json, const QString& path, std::optional<T>& value)
    {
        value.reset();
        if (!json.isNull())
            decode(json, path, value.emplace());
    }
    template <typename T>
    static void decode(const QJsonValue& json, const QString& path, QList<T>& values)
    {
        values.clear();
        for (const auto& one : arrayOf(json, path))
            decode(one, path, values.emplaceBack());
    }
    template <typename T, size_t N>
    static void decode(const QJsonValue& json, const QString& path, std::array<T, N>& values)
    {
        const QJsonArray array = arrayOf(json, path);
        if (array.size() != static_cast<qsizetype>(N))
            fail(path);
        for (size_t index = 0; index < N; ++index)
            decode(array.at(static_cast<qsizetype>(index)), path, values[index]);
    }
    template <typename T>
    static void decode(const QJsonValue& json, const QString& path, QMap<QString, T>& values)
    {
        QJsonObject object;
        decode(json, path, object);
        values.clear();
        for (auto one = object.constBegin(); one != object.constEnd(); ++one)
            decode(one.value(), path + QLatin1Char('.') + one.key(), values[one.key()]);
    }
    template <typename T>
    static void decode(const QJsonValue& json, const QString& path, QMap<QByteArray, T>& values)
    {
        QMap<QString, T> named;
        decode(json, path, named);
        values.clear();
        for (auto one = named.cbegin(); one != named.cend(); ++one)
            values[QByteArray::fromBase64(one.key().toLatin1())] = one.value();
    }
    template <typename T>
    static void decode(const QJsonValue& json, const QString& path, T& value)
    {
        if constexpr (std::is_enum_v<T>) {
            std::underlying_type_t<T> number{};
            decode(json, path, number);
            value = static_cast<T>(number);
        } else if constexpr (std::is_integral_v<T>) {
            qint64 number = 0;
            decode(json, path, number);
            if (!std::in_range<T>(number))
                fail(path);
            value = static_cast<T>(number);
        } else {
            QJsonObject object;
            decode(json, path, object);
            StateReader reader(object, path);
            describe(reader, value);
        }
    }

    [[noreturn]] static void fail(const QString& path);

private:
    static QJsonArray arrayOf(const QJsonValue& json, const QString& path);
    QString pathOf(const QString& key) const { return m_path + QLatin1Char('.') + key; }

    QJsonObject m_object;
    QString m_path;
};

} // namespace emulator
