#include "panel/documentarchive.h"

#include "panel/packedpage.h"
#include "register/fiscaldrive.h"
#include "register/tags.h"
#include "register/tlv.h"
#include "tape/pagetext.h"

#include <QJsonArray>

namespace emulator::panel {

namespace {

void addValues(QStringList& words, const QJsonValue& value)
{
    if (value.isObject()) {
        for (const auto& inside : value.toObject())
            addValues(words, inside);
    } else if (value.isArray()) {
        for (const auto& inside : value.toArray())
            addValues(words, inside);
    } else {
        words.append(value.toVariant().toString());
    }
}

QByteArray wordsOf(const StoredDocument& document, const QJsonObject& requisites)
{
    QStringList words;
    addValues(words, requisites);
    words += tape::toText(document.page);
    return QStringLiteral("\n%1\n").arg(words.join(QLatin1Char('\n')).toLower()).toUtf8();
}

bool fits(const ArchivedDocument& document, const DocumentSearch& search)
{
    const QByteArray id = QStringLiteral("\n%1\n").arg(search.id.toLower()).toUtf8();
    return (search.number == 0 || document.record.number == search.number)
        && (search.sum.isEmpty() || document.total == search.sum)
        && (search.id.isEmpty() || document.words.contains(id))
        && (search.text.isEmpty() || document.words.contains(search.text.toLower().toUtf8()));
}

} // namespace

DocumentArchive::DocumentArchive(const QList<StoredDocument>& documents)
{
    for (const StoredDocument& document :
        documents.last(qMin(documents.size(), static_cast<qsizetype>(mostDocuments))))
        add(document);
}

void DocumentArchive::add(const StoredDocument& document)
{
    const QJsonObject requisites = tlv::decode(document.record.tags).value_or(QJsonObject());
    m_documents.push_back(std::make_shared<ArchivedDocument>(
        ArchivedDocument{document.record, requisites.value(tag::total).toString(),
            wordsOf(document, requisites), packedpage::packed(document.page)}));
    if (m_documents.size() > mostDocuments)
        m_documents.pop_front();
}

void DocumentArchive::follow(const FiscalDrive& drive)
{
    const auto isGone
        = [&drive](const FiscalRecord& record) { return !drive.has(record.number, record.sign); };
    while (!m_documents.empty() && isGone(m_documents.back()->record))
        m_documents.pop_back();
    for (const StoredDocument& document : drive.documentsFrom(last() + 1)) {
        // A gap: the drive has not kept all that lies between.
        if (document.record.number != last() + 1)
            m_documents.clear();
        add(document);
    }
}

const ArchivedDocument* DocumentArchive::find(quint32 number) const
{
    if (m_documents.empty() || number < m_documents.front()->record.number || number > last())
        return nullptr;
    return m_documents[number - m_documents.front()->record.number].get();
}

QList<const ArchivedDocument*> DocumentArchive::search(
    const DocumentSearch& search, quint32 before, qsizetype most) const
{
    QList<const ArchivedDocument*> found;
    for (auto document = m_documents.crbegin(); document != m_documents.crend() && found.size() < most;
         ++document) {
        if ((*document)->record.number < before && fits(**document, search))
            found.append(document->get());
    }
    return found;
}

} // namespace emulator::panel
