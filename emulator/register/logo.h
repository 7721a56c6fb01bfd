#pragma once

#include "register/refusal.h"

#include <QByteArray>

namespace emulator {

struct Parts;

/// The picture above the header lines. It cannot change while a document is open.
class Logo
{
public:
    explicit Logo(Parts& parts)
        : m_parts(parts)
    {
    }

    /// A picture of the one size and depth that the memory of the printer takes.
    Refusal set(const QByteArray& bitmap);
    /// A picture of any size that the header has room for, or none.
    Refusal setHeaderPicture(const QByteArray& bitmap);
    Refusal clear();
    static bool isHeaderPicture(const QByteArray& bitmap);

private:
    Refusal replace(const QByteArray& bitmap, bool fits);

    Parts& m_parts;
};

} // namespace emulator
