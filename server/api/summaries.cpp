#include "api/summaries.h"

namespace frserver {

namespace {

/// Some 250 bytes each.
constexpr qsizetype most = 10'000;

} // namespace

Summaries::Summaries()
    : m_kept(most)
{
}

const Summaries::Told* Summaries::find(const sale::StoredDocument& document) const
{
    const Kept* const kept = m_kept.object(document.request.id);
    const bool isSame = kept != nullptr && kept->state == document.state
        && kept->attemptCount == document.attemptCount && kept->digest == document.digest;
    return isSame ? &kept->told : nullptr;
}

void Summaries::keep(const sale::StoredDocument& document, const Told& told)
{
    m_kept.insert(
        document.request.id, new Kept{document.digest, document.state, document.attemptCount, told});
}

} // namespace frserver
