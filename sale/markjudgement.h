#pragma once

#include "finding.h"
#include "markpolicy.h"
#include "saletr.h"

#include <QStringList>

#include <optional>

namespace sale {

/// What the register's answer about a marking code says.
struct MarkJudgement
{
    enum class Standing {
        /// Checked by the fiscal drive and on line, and good by both.
        Good,
        /// Nothing bad is known of it, but one of the two has not checked it.
        Unchecked,
        /// Checked and found bad.
        Bad
    };

    Standing standing = Standing::Unchecked;
    /// The bits in words, for people.
    QStringList bits;
};

/// Reads the bits of tag 2106. An answer that no register gives counts as one without a check.
MarkJudgement judgeMark(int result, Translation said = tr);

/// Nothing for a code of which nothing is to be said.
std::optional<receipt::Finding::Severity> severityOf(MarkJudgement::Standing standing, MarkPolicy policy);

} // namespace sale
