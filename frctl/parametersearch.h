#pragma once

#include "registerparameter.h"

#include <QList>

#include <algorithm>

namespace frctl {

/// The setting of that name; null when the list has none.
inline const hw::fr::RegisterParameter* findParameter(
    const QList<hw::fr::RegisterParameter>& parameters, const QString& name)
{
    const auto found = std::find_if(parameters.cbegin(), parameters.cend(),
        [&name](const hw::fr::RegisterParameter& parameter) { return parameter.name == name; });
    return found == parameters.cend() ? nullptr : &*found;
}
// The pointer would outlive such a list.
const hw::fr::RegisterParameter* findParameter(QList<hw::fr::RegisterParameter>&&, const QString&) = delete;

} // namespace frctl
