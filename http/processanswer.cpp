#include "http/processanswer.h"

#include <QPointer>
#include <QProcess>

namespace http {

std::shared_ptr<Pending> processAnswer(QProcess& process, Pending::Time time, const Response& late,
    const std::function<Response(QProcess&)>& outcome)
{
    const auto pending = std::make_shared<Pending>(time, late);
    const auto finish = [pending, &process, outcome] {
        pending->answer(outcome(process));
        // It is on the stack yet, and makes room for the next one at once.
        process.setObjectName({});
        process.deleteLater();
    };
    QObject::connect(&process, &QProcess::finished, &process, finish);
    // One that does not start never finishes.
    QObject::connect(&process, &QProcess::errorOccurred, &process, [finish](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finish();
    });
    pending->onGone([guard = QPointer<QProcess>(&process)] {
        if (guard)
            guard->kill();
    });
    return pending;
}

} // namespace http
