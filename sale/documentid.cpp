#include "documentid.h"

#include "documentstore.h"
#include "invaliddocumentid.h"

#include <QUuid>

#include <algorithm>

namespace sale {

bool isDocumentId(const QString& id)
{
    constexpr qsizetype shortest = 8;
    constexpr qsizetype longest = 64;
    const auto isPlain = [](QChar character) {
        return (character.unicode() < 0x80 && character.isLetterOrNumber())
            || QStringLiteral("._:-").contains(character);
    };
    return id.size() >= shortest && id.size() <= longest && std::all_of(id.cbegin(), id.cend(), isPlain);
}

void requireDocumentId(const DocumentStore& store, const QString& id)
{
    if (!isDocumentId(id) && !store.findId(id))
        throw InvalidDocumentId(id);
}

QString newDocumentId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

} // namespace sale
