#include "witnesseddocument.h"

#include "errors.h"

namespace frctl {

sale::Verdict verdictOf(const Options& options, const sale::DocumentResult& result)
{
    options.answer->id = result.id;
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    if (!result.isDone())
        throw RegisterError(QStringLiteral("the register was silent, and the request was sent again"),
            QStringLiteral("Refusal"), sale::ErrorKind::Line, result.verdict);
    return result.verdict;
}

} // namespace frctl
