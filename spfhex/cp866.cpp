#include "cp866.h"

#include "cp866codec.h"

namespace spfhex {

QByteArray toCp866(const QString& text)
{
    return cp866::encode(text);
}

QString fromCp866(const QByteArray& bytes)
{
    return cp866::decode(bytes);
}

} // namespace spfhex
