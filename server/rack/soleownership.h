#pragma once

#include "rack/ownership.h"

namespace frserver {

/// A machine that shares its journal with no other one: a lock on the journal keeps a second service away.
class SoleOwnership : public Ownership
{
public:
    void look() override { }
    bool isHeld(const QString& /*registerName*/) const override { return true; }
    QJsonObject lease(const QString& /*registerName*/) const override { return {}; }
    QJsonObject owner(const QString& /*registerName*/) const override { return {}; }
    std::optional<Waiting> obstacle(const QString& /*registerName*/) const override { return std::nullopt; }
    void release(const QString& /*registerName*/) override { }
    void acceptMoved(const QString& /*registerName*/) override { }
};

} // namespace frserver
