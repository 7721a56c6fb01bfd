#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace frserver {

/// What is wrong in a configuration, each with file and line.
class ConfigurationError : public std::runtime_error
{
public:
    explicit ConfigurationError(const QStringList& texts)
        : std::runtime_error(texts.join(QLatin1Char('\n')).toStdString())
        , m_texts(texts)
    {
    }

    /// "FILE:LINE: what"; one at least.
    const QStringList& texts() const { return m_texts; }

private:
    QStringList m_texts;
};

} // namespace frserver
