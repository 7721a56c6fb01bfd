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
    /// Forgets a document that came in one piece and was refused, without printing or counting anything. One
    /// that only its printing was refused of is done all the same: a receipt is stored then and can be
    /// printed from the fiscal drive.
    void drop();

private:
    Refusal print(const Page& page);

    Parts& m_parts;
};

} // namespace emulator
