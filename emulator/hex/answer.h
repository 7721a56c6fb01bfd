#pragma once

#include "register/refusal.h"

#include <QByteArray>
#include <QList>

namespace emulator {

/// What a command of the HEX protocol is answered with.
struct HexAnswer
{
    Refusal refusal = Refusal::None;
    QList<QByteArray> fields;
    /// The raw block that the command wants before it answers: bytes behind the ESC, 0 for none.
    int blockSize = 0;

    HexAnswer(Refusal verdict)
        : refusal(verdict)
    {
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
