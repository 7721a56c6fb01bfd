#pragma once

#include "finding.h"
#include "options.h"

#include <QList>
#include <QString>

#include <optional>

namespace frctl {

/// The texts of a command on their way to the register. Control characters are errors; what the printer has
/// not (HEX) is substituted, and a warning where nothing stands for it.
class TextCheck
{
public:
    /// The options must outlive the check.
    explicit TextCheck(const Options& options)
        : m_options(options)
    {
    }

    /// The text as it is to be sent. The path tells the user where it stands. What the printer gets is cut to
    /// the limit, 0 is none.
    QString line(const QString& path, const QString& text, int limit = 0);
    /// The lines of a file that are printed one by one.
    QStringList printedLines(const QString& fileName, const QStringList& lines);
    /// The lines of a file, each of which the register keeps as a line to print.
    QStringList keptLines(const QString& fileName, const QStringList& lines);
    /// A text that the register keeps over HEX, where the driver does not cut it: a warning when it has more
    /// characters than the register takes, or than a printed line has when no bound is known.
    /// The warning shows the last.
    void keptText(
        const QString& path, const QString& text, const std::optional<int>& greatest, const QString& shown);
    /// Says the warnings. Throws CheckError.
    void finish() const;

private:
    QStringList lines(const QString& fileName, const QStringList& lines);

    const Options& m_options;
    QList<receipt::Finding> m_findings;
};

/// Says the warnings among the findings, or throws CheckError with the errors; with --strict, warnings are
/// errors.
void settleFindings(
    const Options& options, const QString& exceptionName, const QList<receipt::Finding>& findings);

} // namespace frctl
