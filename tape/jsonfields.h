#pragma once

#include <QJsonObject>

#include <optional>

namespace tape {

/// Reads an object field by field; at the end all that it has must have been asked for.
class JsonFields
{
public:
    explicit JsonFields(const QJsonObject& object)
        : m_object(object)
    {
    }

    QJsonValue value(const QString& name)
    {
        m_asked += m_object.contains(name) ? 1 : 0;
        return m_object.value(name);
    }
    QString text(const QString& name)
    {
        const QJsonValue found = value(name);
        m_good = m_good && found.isString();
        return found.toString();
    }
    /// A whole number, or the usual one where there is none.
    int number(const QString& name, std::optional<int> usual = std::nullopt)
    {
        const QJsonValue found = value(name);
        if (found.isUndefined() && usual)
            return *usual;
        // Two answers that differ are two defaults for what is no whole number of 32 bits.
        m_good = m_good && found.toInt(0) == found.toInt(1);
        return found.toInt();
    }

    void require(bool good) { m_good = m_good && good; }
    /// Everything was as it must be, and nothing else is there.
    bool isGood() const { return m_good && m_asked == m_object.size(); }

private:
    const QJsonObject m_object;
    qsizetype m_asked = 0;
    bool m_good = true;
};

} // namespace tape
