#include "tr.h"

#include <QCoreApplication>

namespace tr {

const QString undefined = QStringLiteral("undefined");

Tr::Tr(const QString& key, const QString& ru)
    : m_key(key)
    , m_ru(ru)
{
}

bool Tr::isEmpty() const
{
    return m_ru.isEmpty();
}

QString Tr::key() const
{
    return m_key;
}

QString Tr::ru() const
{
    return m_ru;
}

QString Tr::ui() const
{
    const QByteArray source = m_key.toUtf8();
    const QString translated = QCoreApplication::translate("frdriver", source.constData());
    return translated.isEmpty() || translated == m_key ? m_ru : translated;
}

TrList::TrList(std::initializer_list<Tr> items)
    : m_items(items)
{
}

QString TrList::joinRu(const QString& separator) const
{
    QStringList texts;
    for (const Tr& item : m_items) {
        if (!item.isEmpty())
            texts.append(item.ru());
    }
    return texts.join(separator);
}

QStringList TrList::toUiList(bool skipEmpty) const
{
    QStringList texts;
    for (const Tr& item : m_items) {
        if (!skipEmpty || !item.isEmpty())
            texts.append(item.ui());
    }
    return texts;
}

} // namespace tr
