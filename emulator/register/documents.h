#pragma once

#include "register/refusal.h"

#include <QString>

namespace emulator {

struct Document;
class Page;
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
    /// Something that the paper shows as a picture of the data.
    Refusal printPicture(const QString& title, const QString& data);
    /// Does what the document is for and prints it; or prints one that the paper ran out on.
    Refusal finish();
    Refusal cancel();
    /// Forgets the open document, and prints and counts nothing of it: one that came in one piece and was
    /// refused on the way. One that the paper ended on is done all the same; the rest of it is printed when
    /// there is paper again.
    void drop();

private:
    Refusal print(const Page& page);

    Parts& m_parts;
};

} // namespace emulator
