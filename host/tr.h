#pragma once

#include "frhost_export.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <initializer_list>

namespace tr {

/// Key of a text that has no entry in the host's translations.
extern FRHOST_EXPORT const QString undefined;

/// A text of the user interface: the key under which the host finds its translation, and the Russian text.
class FRHOST_EXPORT Tr
{
public:
    Tr() = default;
    Tr(const QString& key, const QString& ru);

    /// True when there is no Russian text, whatever the key is.
    bool isEmpty() const;
    QString key() const;
    QString ru() const;
    /// The text for the user interface: the host's translation of the key, the Russian text without one.
    QString ui() const;

private:
    QString m_key;
    QString m_ru;
};

/// Texts that are shown together. Members without a text are left out when they are joined.
class FRHOST_EXPORT TrList
{
public:
    TrList() = default;
    TrList(std::initializer_list<Tr> items);

    /// The Russian texts of the members that have one, with the separator between them.
    QString joinRu(const QString& separator) const;
    /// The texts for the user interface; skipEmpty leaves out the members that have none.
    QStringList toUiList(bool skipEmpty) const;

private:
    QList<Tr> m_items;
};

} // namespace tr
