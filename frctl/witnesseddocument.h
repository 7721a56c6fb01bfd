#pragma once

#include "documentsteps.h"
#include "movement.h"
#include "options.h"

#include <QJsonObject>

class AbstractFrDriver;

namespace frctl {

/// A document that is no receipt, as the journal has it: its kind, see sale::DocumentRequest, and what it was
/// made of.
struct PlainDocument
{
    QString kind;
    QJsonObject details = {};
};

/// Makes a document that is no receipt and whose fate the register's counters tell, under an id of its own.
/// Throws RegisterError or Interrupted with what they say of it, also when the driver made more than one of
/// it; JournalError and ReviewNeeded.
sale::Verdict issueWitnessed(AbstractFrDriver& driver, const Options& options, const PlainDocument& document,
    const sale::Movement& ours, const sale::DocumentSteps& steps);
/// The same for an operation of the driver that is the whole document. What has to be asked when it is issued
/// goes into finish.
sale::Verdict issueNumbered(AbstractFrDriver& driver, const Options& options, const PlainDocument& document,
    sale::DocumentKind kind, const std::function<void()>& issue, const std::function<void()>& finish = {});
/// The same for a document that leaves no trace in the register.
sale::Verdict issueTraceless(AbstractFrDriver& driver, const Options& options, const PlainDocument& document,
    const sale::DocumentSteps& steps);

} // namespace frctl
