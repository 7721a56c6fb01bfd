#pragma once

#include <QMap>
#include <QString>

namespace spf::utils {

/// Russian texts of the errors that the register reports over XML.
const QMap<int, QString>& errorCategoryTexts();
const QMap<int, QString>& printerErrorTexts();
/// The codes are grouped by thousands after the categories, but stand in one table.
const QMap<int, QString>& errorTexts();

} // namespace spf::utils
