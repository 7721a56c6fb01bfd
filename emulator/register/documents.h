#pragma once

#include "register/refusal.h"
#include "tape/line.h"

namespace emulator {

struct Document;
struct Parts;

/// Opens a document of any kind, prints into it, and ends it.
class Documents
{
public:
    explicit Documents(Parts& parts)
        : m_parts(parts)
    {
    }

    Refusal open(const Document& head);
    Refusal printText(const QString& text, int attribute);
    Refusal printCode(const tape::Code& code) { return print({code}); }
    /// Lines that are laid out already.
    Refusal print(const QList<tape::Line>& lines);
    /// Does what the document is for and prints it; or prints one that the paper ran out on.
    Refusal finish();
    Refusal cancel();
    /// Forgets the open document, and prints and counts nothing of it: one that came in one piece and was
    /// refused on the way. One that the paper ended on is done all the same; the rest of it is printed when
    /// there is paper again.
    void drop();

private:
    Parts& m_parts;
};

} // namespace emulator
