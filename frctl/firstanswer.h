#pragma once

#include "passingobserver.h"

#include <QByteArray>

namespace frctl {

/// Looks whether what comes first from a register is of its protocol, and hands all on to another observer.
class FirstAnswer : public PassingObserver
{
public:
    /// The other one may be null.
    FirstAnswer(bool isHex, devices::LineObserver* next)
        : PassingObserver(next)
        , m_isHex(isHex)
    {
    }

    /// Something has come, and it was none of the protocol's, or that the register does not know the
    /// protocol.
    bool isForeign() const { return !m_first.isEmpty() && !isOurs(); }

    void sent(const QByteArray& bytes) override;
    void received(const QByteArray& bytes) override;

private:
    bool isOurs() const;

    const bool m_isHex;
    bool m_hasAsked = false;
    bool m_isOver = false;
    QByteArray m_first;
};

} // namespace frctl
