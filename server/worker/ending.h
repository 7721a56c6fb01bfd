#pragma once

namespace frserver::ending {

/// From now on the process ends with its parent, however that ends: as on SIGTERM, behind the document under
/// way, or by force when even that takes too long. Signals that the parent has blocked arrive again; those
/// of a terminal are the parent's alone.
void arrange();
/// The parent is gone, or SIGTERM came.
bool isWanted();
/// Readable from then on.
int descriptor();

} // namespace frserver::ending
