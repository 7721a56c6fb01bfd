#pragma once

#include <QByteArray>
#include <QList>

#include <utility>

namespace http {

/// Header fields in their order, by names in any case.
class Headers
{
public:
    using Field = std::pair<QByteArray, QByteArray>;

    /// Values of a name that stands several times are joined by commas. Empty when it is missing.
    QByteArray value(QByteArrayView name) const;
    bool contains(QByteArrayView name) const;
    void add(const QByteArray& name, const QByteArray& value);
    /// Replaces all fields of that name.
    void set(const QByteArray& name, const QByteArray& value);
    const QList<Field>& fields() const { return m_fields; }

private:
    QList<Field> m_fields;
};

} // namespace http
