#pragma once

#include <QString>

#include <stdexcept>

namespace sale {

/// The register has made documents that the journal does not know, although nobody else works it: the journal
/// is a copy that was put back, or a new one. Nothing was sent. A person looks whether sales of ours are
/// among them, and accepts them.
class ReviewNeeded : public std::runtime_error
{
public:
    explicit ReviewNeeded(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

} // namespace sale
