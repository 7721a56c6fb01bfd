#pragma once

#include "finding.h"

#include <QJsonObject>
#include <QList>

namespace receipt {

struct CheckOptions;

/// The JSON of a well-formed receipt as the protocol carries it: without the fields that may be dropped, with
/// the texts that arrive at the printer. Says of each field that is not carried, dropped or not, and of each
/// text that loses something; a path to drop that names no such field is an error.
QJsonObject carriedReceipt(const QJsonObject& receipt, const CheckOptions& options, QList<Finding>& findings);

} // namespace receipt
