#pragma once

#include <QByteArray>

namespace emulator {

/// Tags of the documents that a fiscal drive may have when it is put in.
struct FactoryDocuments
{
    QByteArray registration;
    QByteArray closing;
};

} // namespace emulator
