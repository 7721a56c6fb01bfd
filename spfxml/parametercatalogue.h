#pragma once

#include "requestparams.h"

#include <QList>
#include <QMap>
#include <QString>

/// The settings of an XML device that a host can reach: 6 sections, 19 subsections, 51 parameters.
namespace spf::utils {

/// The tree without values: what a read asks for and what a write is checked against.
QList<spfxml::RequestParams> getParamsList();

/// Russian captions by the bare name of their level; the names of the parameters are unique in the whole
/// tree.
QMap<QString, QString> getSectionsDescription();
QMap<QString, QString> getSubsectionsDescription();
QMap<QString, QString> getParametersDescription();

} // namespace spf::utils
