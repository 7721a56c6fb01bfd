#include "trace/identity.h"

#include "trace/hexframe.h"
#include "trace/signs.h"
#include "trace/xmldocument.h"

namespace trace {

namespace {

constexpr int xmlState = 2;

QList<QByteArray> questionsLike(const QByteArray& request, bool hasInn)
{
    if (!request.startsWith(startOfText))
        return {xmldocument::question(request, xmlState)};
    const QByteArray password = request.mid(hexframe::passwordPlace.start, hexframe::passwordPlace.size);
    QList<QByteArray> questions{
        hexframe::request(password, "A6", {}), hexframe::request(password, "A4", {"3"})};
    if (hasInn)
        questions.append(hexframe::request(password, "A5", {"9"}));
    return questions;
}

/// Where in the tree it stands does not matter.
bool isNamed(const Meaning::Field& field, const char* name)
{
    return field.name.split(QLatin1Char('.')).constLast() == QLatin1String(name);
}

} // namespace

void Identity::take(const Meaning& answer)
{
    for (const Meaning::Field& field : answer.fields) {
        if (isNamed(field, "serialNumber"))
            serial = field.value.trimmed();
        else if (isNamed(field, "userInn"))
            inn = field.value.trimmed();
        else if (isNamed(field, "drive"))
            drive = field.value.trimmed();
    }
}

Trace identityQuestions(const Trace& trace, bool hasInn)
{
    Trace questions = trace;
    questions.frames.clear();
    questions.notes.clear();
    Decoder decoder;
    for (const Frame& frame : trace.frames) {
        const Meaning meaning = decoder.decode(frame);
        if (frame.direction != Direction::ToRegister || meaning.kind != Meaning::Kind::Request)
            continue;
        for (const QByteArray& bytes : questionsLike(frame.bytes, hasInn))
            questions.frames.append({0, 1, Direction::ToRegister, bytes});
        break;
    }
    return questions;
}

} // namespace trace
