// A journal as a file of this machine, for the tests of what is in it and of the file itself.

#pragma once

#include "drivemark.h"
#include "identifiedsale.h"
#include "journalfailure.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace sale {

inline const DriveMark noted{QStringLiteral("9999"), 7};

class Journal : public testing::Test
{
protected:
    static IdentifiedSale saleIn(DocumentStore& store, const char* id = "A")
    {
        return {store, QString::fromLatin1(id), R"({"a": 1, "b": 2})"};
    }

    QTemporaryDir folder;
    /// Its folder is not there yet.
    const QString file = folder.filePath(QStringLiteral("data/sales.sqlite"));
};

} // namespace sale
