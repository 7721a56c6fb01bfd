#pragma once

#include "answererror.h"
#include "errors.h"

#include <exception>

namespace frctl {

/// What is told when a command did not come to its end.
struct Complaint
{
    ExitStatus status = ExitFailure;
    sale::AnswerError error = {};
    sale::Verdict verdict = {};
    /// What has become of the document, where the words of the verdict are not it.
    QString outcome = {};
    bool isUsage = false;
    /// Of a receipt or a text, all of them.
    QList<receipt::Finding> findings = {};
};

Complaint complaintOf(const std::exception_ptr& exception);

} // namespace frctl
