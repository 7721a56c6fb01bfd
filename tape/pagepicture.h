#pragma once

#include "tape/page.h"

#include <QByteArray>

namespace tape {

/// @name Pages as pictures
/// On paper of 80 mm, in the font DejaVu Sans Mono. PNG and PDF want a QGuiApplication, see offscreen.h.
/// @{

/// The letters are text, which whoever shows it can select.
QByteArray toSvg(const Page& page);
/// A pixel a dot; empty for a page of more than 32767 dots (4 m), which no PNG of ours can hold.
QByteArray toPng(const Page& page);
/// One page as long as the paper.
QByteArray toPdf(const Page& page);
/// @}

} // namespace tape
