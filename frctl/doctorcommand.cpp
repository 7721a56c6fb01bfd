#include "doctorcommand.h"

#include "errors.h"
#include "frctltr.h"
#include "interruption.h"
#include "machinechecks.h"
#include "options.h"
#include "registerchecks.h"
#include "serialdevicefactory.h"
#include "streamdevice.h"

#include <QJsonArray>

#include <utility>

namespace frctl {

namespace {

Output examine(const Options& options)
{
    catchInterruptions();
    Output output;
    QJsonArray json;
    QList<HealthCheck> checks = machineChecks(options);
    checks += registerChecks(options);
    for (const HealthCheck& check : std::as_const(checks)) {
        output.lines.append(check.line());
        json.append(check.json());
        if (check.isWell == false)
            output.status = ExitFailure;
    }
    // Until the drive is known.
    output.json = {{QStringLiteral("checks"), json}, {QStringLiteral("testDrive"), QJsonValue()}};
    return output;
}

} // namespace

Task prepareDoctor(const Options& options)
{
    if (!options.port.isEmpty() && !devices::createSerialDevice(options.port))
        throw UsageError(tr("--port: \"%1\" names no port").arg(options.port));
    Task task = alone([options] { return examine(options); });
    task.isTraced = !options.port.isEmpty();
    return task;
}

} // namespace frctl
