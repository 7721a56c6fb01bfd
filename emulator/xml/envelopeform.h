#pragma once

#include "xml/verdict.h"

#include <QByteArray>

namespace emulator::xmlenvelopeform {

/// The form of a request beyond what an XML reader needs to understand it.
XmlVerdict check(const QByteArray& document);

} // namespace emulator::xmlenvelopeform
