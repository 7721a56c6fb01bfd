// A release before at work on a journal: the statements that it has its database do.

#pragma once

#include "sqliteconnection.h"

#include <QFile>
#include <QMap>
#include <QStringList>

#include <gtest/gtest.h>

namespace sale {

class FormerRelease
{
public:
    FormerRelease(const QString& version, const QString& journal)
        : m_connection(journal, 0)
    {
        QFile file(QStringLiteral(SALE_TESTS "/release-%1.sql").arg(version));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        QString name;
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        for (const QString& line : lines) {
            if (line.startsWith(u':'))
                name = line.mid(1);
            else if (!line.isEmpty() && !line.startsWith(QStringLiteral("--")))
                m_statements[name].append(line);
        }
    }

    /// All of those names, in that order.
    void work(const QStringList& names, const QString& id = {})
    {
        for (const QString& name : names) {
            EXPECT_TRUE(m_statements.contains(name)) << name.toStdString();
            for (QString statement : m_statements.value(name))
                m_connection.execute(statement.replace(u'$', id));
        }
    }

    /// The first row of each question.
    QVariantList ask(const QString& name, const QString& id = {}) const
    {
        QVariantList rows;
        for (QString statement : m_statements.value(name))
            rows.append(m_connection.value(statement.replace(u'$', id)));
        return rows;
    }

private:
    SqliteConnection m_connection;
    QMap<QString, QStringList> m_statements;
};

} // namespace sale
