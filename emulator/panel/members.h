#pragma once

#include <QJsonObject>
#include <QStringList>

#include <optional>

namespace emulator::panel {

/// Reads what an object of a request has, one member after the other. Everything that is not as it must be
/// is an http::Problem (400) that names the member.
class Members
{
public:
    explicit Members(const QJsonObject& object, const QString& path = {});

    bool has(const QString& name);
    bool isNull(const QString& name);
    bool flag(const QString& name);
    QString text(const QString& name);
    /// One of these.
    QString word(const QString& name, const QStringList& words);
    qint64 number(const QString& name, qint64 least, qint64 most);
    double fraction(const QString& name, double least, double most);
    QJsonArray list(const QString& name);
    Members object(const QString& name);
    std::optional<int> optionalNumber(const QString& name, int least);
    std::optional<QString> optionalText(const QString& name);
    /// Nothing else is there.
    void finish() const;
    /// Throws the problem.
    [[noreturn]] void fail(const QString& name, const QString& what) const;

private:
    void know(const QString& name);
    QString unasked() const;
    QJsonValue value(const QString& name);

    QJsonObject m_object;
    QString m_path;
    /// Names that were asked for: all that may be there.
    QStringList m_known;
};

} // namespace emulator::panel
