#pragma once

#include "verdict.h"

#include <functional>

namespace sale {

/// The stretches of work on a document, as far as a failure is concerned.
struct DocumentSteps
{
    /// When it is refused, there is no document.
    std::function<void()> open = {};
    /// When it fails, the document is cancelled. May be empty.
    std::function<void()> fill = {};
    /// When it fails, the document may have been issued: it is not repeated.
    std::function<void()> close = {};
    /// The close is all there is, in one request, behind questions at the most: what the register refuses for
    /// its data or for the register's state is not made.
    bool isOneRequest = false;
    /// Finds out what has become of the document after a failed close. May be empty: then nobody knows.
    std::function<Verdict()> settle = {};
    /// The document is issued, whatever happens here. May be empty.
    std::function<void()> finish = {};
    /// The verdict for a document that was closed.
    Verdict issued = Outcome::Issued;
    /// A document that the fiscal drive does not number may be cancelled after a failed close too: that does
    /// no harm if it was issued, and if the register takes it, it was not.
    bool cancelAfterClose = false;
};

} // namespace sale
