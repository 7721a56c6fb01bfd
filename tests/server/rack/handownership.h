#pragma once

#include "rack/ownership.h"

/// Leases that a test gives and takes by hand.
class HandOwnership : public frserver::Ownership
{
public:
    void look() override { }
    bool isHeld(const QString& /*registerName*/) const override { return epoch > 0; }
    QJsonObject lease(const QString& /*registerName*/) const override
    {
        return {{"epoch", epoch}, {"until", until}};
    }
    QJsonObject owner(const QString& /*registerName*/) const override { return {{"host", "shop2"}}; }
    std::optional<frserver::Waiting> obstacle(const QString& /*registerName*/) const override
    {
        return waiting;
    }
    bool giveWay(const QString& /*registerName*/) override
    {
        ++asked;
        epoch = isWanted ? 0 : epoch;
        return isWanted;
    }
    void leaveDrive(const QString& /*registerName*/) override { ++left; }
    void release(const QString& /*registerName*/) override { isReleased = true; }
    void acceptMoved(const QString& /*registerName*/) override { epoch = 1; }

    /// 0 while somebody else has it.
    qint64 epoch = 1;
    qint64 until = 1000;
    std::optional<frserver::Waiting> waiting;
    /// Another one would work it.
    bool isWanted = false;
    int asked = 0;
    int left = 0;
    bool isReleased = false;
};
