#pragma once

#include <QDeadlineTimer>
#include <QHash>
#include <QString>

#include <chrono>

namespace sale {

/// The statements of one connection whose plans the server keeps: the same few come with each document, and
/// to plan one takes longer than it mostly runs.
class KeptPlans
{
public:
    /// Not one of those that only few programs ask once, and not one with a list in it, which has as many
    /// forms as lists have lengths.
    static bool isWorthIt(const QString& statement, qsizetype values);
    /// The statement that has the server keep the plan under that name: with $1, $2 ... for question marks.
    static QString preparation(const QString& statement, const QString& name);

    /// What the server calls it; empty for one that it does not have.
    QString nameOf(const QString& statement) const { return m_names.value(statement); }
    /// One that the server has not been told.
    QString newName() { return QStringLiteral("frspf_%1").arg(++m_last); }
    void add(const QString& statement, const QString& name) { m_names.insert(statement, name); }
    /// Of one that is about to be run: whether the plans are to be made anew before, since they are old and
    /// were used often.
    bool takeAge();
    /// More would be no help.
    bool isFull() const { return m_names.size() >= mostKept; }
    /// The server has none of them any more.
    void clear();

private:
    static constexpr qsizetype mostKept = 100;
    static constexpr std::chrono::seconds longestKept{60};
    static constexpr int fewestUses = 2000;

    QHash<QString, QString> m_names;
    qint64 m_last = 0;
    QDeadlineTimer m_age;
    int m_uses = 0;
};

} // namespace sale
