#pragma once

#include "frhost_export.h"

#include <QList>
#include <QString>

class DeviceInfo;

namespace hw {

/// The host's store of settings. Take it through MockFactory<hw::ParamManager>. A host that keeps advertising
/// texts derives from it and sets MockFactory<hw::ParamManager>::mocked; this one has none.
class FRHOST_EXPORT ParamManager
{
public:
    ParamManager();
    virtual ~ParamManager();

    /// Lines of the advertising text for the register of that number.
    virtual QList<QString> getTailLines(const DeviceInfo& deviceInfo, quint32 deviceId) const;
};

} // namespace hw
