#pragma once

#include <QString>

namespace emulator {

class ParameterStore;

/// What the tape calls things.
namespace names {

/// By the code of the VAT rate.
QString taxRate(const ParameterStore& parameters, int tax);
QString paymentKind(const ParameterStore& parameters, size_t kind);
/// Of one system or of several, by the bits of tag 1062.
QString taxSystems(int mask);

} // namespace names

} // namespace emulator
