#pragma once

#include "markreading.h"
#include "output.h"

#include <functional>

class AbstractFrDriver;

namespace frctl {

/// Runs an operation of the driver that is one document of the fiscal drive, from its beginning to its end,
/// such as the opening of the shift. Throws RegisterError or Interrupted with what the drive's numbers say of
/// it. What has to be asked when it is issued goes into finish.
sale::Verdict issueNumbered(AbstractFrDriver& driver, sale::MarkReading reading,
    const std::function<void()>& issue, const std::function<void()>& finish = {});

/// Adds the verdict to what is said of the document.
Output withVerdict(Output output, const sale::Verdict& verdict);

} // namespace frctl
