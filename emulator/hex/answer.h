#pragma once

#include "register/refusal.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace emulator {

/// What a command of the HEX protocol is answered with.
struct HexAnswer
{
    Refusal refusal = Refusal::None;
    /// Of a refusal, for whoever writes the host; empty when the code says it all.
    QString reason;
    QList<QByteArray> fields;
    /// The raw block that the command wants before it answers: bytes behind the ESC, 0 for none.
    int blockSize = 0;

    HexAnswer(Refusal verdict, const QString& why = {})
        : refusal(verdict)
        , reason(why)
    {
    }
    /// The words are for a value that is not taken; other refusals say it all.
    static HexAnswer judged(Refusal verdict, const QString& misfit)
    {
        return {verdict, verdict == Refusal::BadValue ? misfit : QString()};
    }
    HexAnswer(const QList<QByteArray>& values)
        : fields(values)
    {
    }
    static HexAnswer wantsBlock(int size)
    {
        HexAnswer answer(Refusal::None);
        answer.blockSize = size;
        return answer;
    }
};

} // namespace emulator
