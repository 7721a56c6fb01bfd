#pragma once

#include <QString>

namespace emulator {

/// The fields of the journal and the tags that they are in the fiscal drive. Both are paths with points
/// between their parts ("agent.1171" is "1224.1171"), of an entry or of one of its positions.
namespace entrywords {

enum class Level { Document, Position };

/// Nothing for a field that the fiscal data format has no tag for.
QString tagsOf(const QString& field, Level level);
QString fieldOf(const QString& tags, Level level);

/// Name of the requisite of the user (1085) that a field without a tag is kept as.
QString extraOf(const QString& field);
QString fieldOfExtra(const QString& name);

} // namespace entrywords

} // namespace emulator
