#include "mockfactory.h"

CurrentTime::CurrentTime() = default;
CurrentTime::~CurrentTime() = default;

QDateTime CurrentTime::getCurrentDateTime() const
{
    return QDateTime::currentDateTime();
}

namespace hw {

ParamManager::ParamManager() = default;
ParamManager::~ParamManager() = default;

QList<QString> ParamManager::getTailLines(const DeviceInfo&, quint32) const
{
    return {};
}

} // namespace hw

template class FRHOST_EXPORT MockFactory<CurrentTime>;
template class FRHOST_EXPORT MockFactory<hw::ParamManager>;
