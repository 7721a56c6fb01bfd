#pragma once

#include "tape/page.h"

#include <QByteArray>
#include <QString>

namespace frctl {

/// The page as "png", "pdf" or "svg". Another program draws, since letters want Qt Gui, for which every
/// command would have to wait. Throws HostError.
QByteArray drawnPage(const tape::Page& page, const QString& format);

} // namespace frctl
