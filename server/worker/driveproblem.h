#pragma once

#include <QString>

#include <stdexcept>

namespace frserver {

/// The register has a fiscal drive that nothing may be sold on.
class DriveProblem : public std::runtime_error
{
public:
    enum Reason {
        /// Another one than before, and nobody has said that it is meant.
        NewDrive,
        /// One for tests, which signs no fiscal documents.
        TestDrive
    };

    DriveProblem(Reason reason, const QString& text)
        : std::runtime_error(text.toStdString())
        , m_reason(reason)
    {
    }

    Reason reason() const { return m_reason; }

private:
    Reason m_reason;
};

} // namespace frserver
