#pragma once

#include "documentoptions.h"
#include "documentsteps.h"
#include "movement.h"
#include "output.h"

class AbstractFrDriver;

namespace frctl {

/// Makes a document that is no receipt and whose fate the register's counters tell. Throws RegisterError or
/// Interrupted with what they say of it, also when the driver made more than one of it.
sale::Verdict issueWitnessed(AbstractFrDriver& driver, const sale::DocumentOptions& document,
    const sale::Movement& ours, const sale::DocumentSteps& steps);
/// The same for an operation of the driver that is the whole document. What has to be asked when it is issued
/// goes into finish.
sale::Verdict issueNumbered(AbstractFrDriver& driver, const sale::DocumentOptions& document,
    sale::DocumentKind kind, const std::function<void()>& issue, const std::function<void()>& finish = {});

/// Adds the verdict to what is said of the document.
Output withVerdict(Output output, const sale::Verdict& verdict);

} // namespace frctl
