#pragma once

#include "finding.h"
#include "markcheck.h"
#include "markpolicy.h"

#include <QList>

class AbstractFrDriver;

namespace receipt {
struct Receipt;
}

namespace sale {

/// Asks the register about each marking code, also one whose answer the driver still has: the receipt may be
/// another one by now. Throws the driver's exceptions.
QList<MarkCheck> askAboutMarks(AbstractFrDriver& driver, const receipt::Receipt& receipt);

/// Adds the warnings under the policy. Throws MarkRefusal where it makes errors.
void judgeMarks(const QList<MarkCheck>& checks, MarkPolicy policy, QList<receipt::Finding>& warnings);

/// The fiscal drive must not keep codes of a receipt that never came about. Throws nothing: it comes after a
/// failure that is the one to report.
void forgetMarks(AbstractFrDriver& driver, const receipt::Receipt& receipt);

} // namespace sale
