#pragma once

#include "register/storeddocument.h"

#include <deque>
#include <memory>

namespace emulator {
class FiscalDrive;
}

namespace emulator::panel {

/// A document of the fiscal drive with what it is found by.
struct ArchivedDocument
{
    /// With its tags.
    FiscalRecord record;
    QString total;
    /// In small letters, UTF-8: each value of a tag and each line of the page on a line of its own, all lines
    /// with an end on both sides.
    QByteArray words;
    /// See packedpage.h.
    QByteArray page;
};

/// What is looked for; what is empty or 0 is not looked at.
struct DocumentSearch
{
    quint32 number = 0;
    QString sum;
    /// Fiscal sign, or value of a tag.
    QString id;
    /// Anywhere in it.
    QString text;
};

/// The youngest documents of the fiscal drive, far more of them than the drive has with their pages. A copy
/// takes little room.
class DocumentArchive
{
public:
    DocumentArchive() = default;
    /// In the order of their numbers.
    explicit DocumentArchive(const QList<StoredDocument>& documents);

    /// Takes what the drive has that is not here, and drops what it has not any more, as after a restore.
    void follow(const FiscalDrive& drive);

    quint32 last() const { return m_documents.empty() ? 0 : m_documents.back()->record.number; }
    /// Null for one that is not kept.
    const ArchivedDocument* find(quint32 number) const;
    /// Those that fit with smaller numbers than that, the youngest first.
    QList<const ArchivedDocument*> search(const DocumentSearch& search, quint32 before, qsizetype most) const;

private:
    void add(const StoredDocument& document);

    static constexpr size_t mostDocuments = 5000;

    std::deque<std::shared_ptr<const ArchivedDocument>> m_documents;
};

} // namespace emulator::panel
