#pragma once

#include "http/pending.h"

#include <functional>

class QProcess;

namespace http {

/// The answer that a process makes, which was not started yet. When it has ended, or could not be started,
/// the outcome is answered, and the process loses its name and is deleted later; it is killed when whoever
/// waits has gone. Late is the answer after that time, whatever the process does.
std::shared_ptr<Pending> processAnswer(QProcess& process, Pending::Time time, const Response& late,
    const std::function<Response(QProcess&)>& outcome);

} // namespace http
