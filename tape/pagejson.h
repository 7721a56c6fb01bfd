#pragma once

#include "tape/page.h"

#include <QJsonArray>
#include <QJsonObject>

#include <optional>

namespace tape {

/// @name Pages on disk
/// A line of plain text is a string; another one is an object with the member "cells" (a list of texts with
/// the names of their attributes), "picture", "code" or "cut". What is written is read back the same;
/// anything else than what can have been written (other members, names that there are not, rows of a picture
/// that are too few) is no value.
/// @{
QJsonObject toJson(const Page& page);
QJsonArray toJson(const QList<Line>& lines);
QJsonValue toJson(const Line& line);
std::optional<Page> pageFromJson(const QJsonValue& json);
std::optional<QList<Line>> linesFromJson(const QJsonValue& json);
std::optional<Line> lineFromJson(const QJsonValue& json);
/// @}

} // namespace tape
