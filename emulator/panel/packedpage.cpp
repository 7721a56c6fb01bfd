#include "panel/packedpage.h"

#include "tape/pagejson.h"

#include <QJsonDocument>

namespace emulator::panel::packedpage {

QByteArray packed(const tape::Page& page)
{
    constexpr int fastest = 1;
    return qCompress(QJsonDocument(tape::toJson(page)).toJson(QJsonDocument::Compact), fastest);
}

tape::Page unpacked(const QByteArray& bytes)
{
    const QJsonObject json = QJsonDocument::fromJson(qUncompress(bytes)).object();
    return tape::pageFromJson(json).value_or(tape::Page());
}

} // namespace emulator::panel::packedpage
