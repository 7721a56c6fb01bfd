#include "tape/code.h"

namespace tape {

QString Code::title() const
{
    if (symbology != Symbology::Other)
        return symbologyName(symbology);
    return number < 0 ? QStringLiteral("ШТРИХКОД") : QStringLiteral("ШТРИХКОД %1").arg(number);
}

} // namespace tape
