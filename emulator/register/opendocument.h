#pragma once

#include "register/document.h"
#include "tape/page.h"

namespace emulator {

/// The document that the register is busy with, and what waits for its next step.
struct OpenDocument
{
    Document document;
    /// Agent and marking code of the position that comes next.
    QJsonObject agent;
    QByteArray marking;
    /// The rest of a finished document that the paper ran out on.
    tape::Page held;
};

} // namespace emulator
