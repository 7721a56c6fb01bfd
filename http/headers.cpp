#include "http/headers.h"

#include <algorithm>

namespace http {

namespace {

auto named(QByteArrayView name)
{
    return
        [name](const Headers::Field& field) { return field.first.compare(name, Qt::CaseInsensitive) == 0; };
}

} // namespace

QByteArray Headers::value(QByteArrayView name) const
{
    QByteArrayList values;
    for (const Field& field : m_fields) {
        if (named(name)(field))
            values.append(field.second);
    }
    return values.join(", ");
}

bool Headers::contains(QByteArrayView name) const
{
    return std::any_of(m_fields.begin(), m_fields.end(), named(name));
}

void Headers::add(const QByteArray& name, const QByteArray& value)
{
    m_fields.append({name, value});
}

void Headers::set(const QByteArray& name, const QByteArray& value)
{
    m_fields.removeIf(named(name));
    add(name, value);
}

} // namespace http
