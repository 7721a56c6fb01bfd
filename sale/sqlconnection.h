#pragma once

#include <QString>
#include <QVariant>

#include <functional>

class QSqlDatabase;
class QSqlQuery;

namespace sale {

/// What a column takes for an empty text: one that nobody has set would be NULL there.
inline QString neverNull(const QString& text)
{
    return text.isNull() ? QString::fromLatin1("") : text;
}

/// A database that keeps the journal, and what programs keep beside it. Values take the places of the
/// question marks of a statement. All operations throw JournalError.
class SqlConnection
{
public:
    virtual ~SqlConnection();
    SqlConnection(const SqlConnection&) = delete;
    SqlConnection& operator=(const SqlConnection&) = delete;

    /// Gives the number of rows that were written.
    virtual int execute(const QString& statement, const QVariantList& values = {}) = 0;
    /// Gives each row to the function.
    virtual void select(const QString& statement, const QVariantList& values,
        const std::function<void(const QSqlQuery&)>& onRow) const = 0;
    /// The same for what is asked seldom and in many forms: the way to it is chosen by the values.
    virtual void search(const QString& statement, const QVariantList& values,
        const std::function<void(const QSqlQuery&)>& onRow) const
    {
        select(statement, values, onRow);
    }
    /// Statements that are done together or not at all. They may be run anew from their beginning.
    virtual void together(const std::function<void()>& statements) = 0;

    /// The column's moment in the form of storedTime.
    virtual QString moment(const QString& column) const { return column; }
    /// It is one for many machines, whose tables frserver migrate makes.
    virtual bool isShared() const { return false; }
    /// Work whose questions may take as long as they want.
    virtual void atLeisure(const std::function<void()>& work) const { work(); }

    /// The first column of the first row; invalid when there is none.
    QVariant value(const QString& statement, const QVariantList& values = {}) const;

protected:
    /// There is no database yet.
    SqlConnection();

    QSqlDatabase make(const QString& driver) const;
    QSqlDatabase database() const;
    /// There is none afterwards.
    void close() const;

private:
    /// Qt's name of it.
    const QString m_name;
};

} // namespace sale
