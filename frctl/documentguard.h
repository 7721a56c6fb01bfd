#pragma once

#include "errors.h"

#include <functional>

class AbstractFrDriver;

namespace frctl {

/// The stretches of work on a document, as far as a failure is concerned.
struct DocumentSteps
{
    /// When it is refused, there is no document.
    std::function<void()> open;
    /// When it fails, the document is cancelled.
    std::function<void()> fill;
    /// When it fails, nobody knows whether the document was issued: it is neither cancelled nor repeated.
    std::function<void()> close;
    /// The document is issued, whatever happens here. May be empty.
    std::function<void()> finish;
    /// A document that is no receipt may be cancelled after a failed close too: that does no harm if it was
    /// issued, and if the register takes it, it was not.
    bool cancelAfterClose = false;
};

/// Runs the steps. Throws RegisterError with the outcome for the document, or Interrupted with it.
void runDocument(AbstractFrDriver& driver, const DocumentSteps& steps);

} // namespace frctl
