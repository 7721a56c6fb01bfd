#pragma once

#include <QString>

namespace sale {

/// What the register at the line must tell of itself, so that documents do not go to another one whose line
/// has changed places with it. An empty one may be anything.
struct ExpectedRegister
{
    /// The register's own number, which its driver reads at each connection.
    QString serial = {};
    /// Tax number that it is registered with. Only HEX drivers tell it, for one exchange; over XML it is not
    /// compared.
    QString inn = {};
};

} // namespace sale
