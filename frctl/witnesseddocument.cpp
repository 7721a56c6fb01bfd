#include "witnesseddocument.h"

#include "errors.h"
#include "frctltr.h"

namespace frctl {

sale::Verdict verdictOf(const Options& options, const sale::DocumentResult& result)
{
    options.answer->id = result.id;
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    if (!result.isDone())
        throw RegisterError(tr("the register was silent, and the request was sent again"),
            QStringLiteral("Refusal"), sale::ErrorKind::Line, result.verdict);
    if (result.isSentAgain)
        options.warnings->add({{receipt::Finding::Warning, {}, {},
            tr("the register was silent, and the request was sent again: it may have printed more than once")}});
    return result.verdict;
}

} // namespace frctl
