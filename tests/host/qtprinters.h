#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

// Found by GoogleTest: a failed comparison shows the texts and not their characters one by one.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* stream)
{
    *stream << bytes.toHex(' ').toStdString();
}
