#pragma once

#include "lineobserver.h"

namespace frctl {

/// Looks whether what comes first from a register is of its protocol, and hands all on to another observer.
class FirstAnswer : public devices::LineObserver
{
public:
    /// The other one may be null.
    FirstAnswer(bool isHex, devices::LineObserver* next)
        : m_isHex(isHex)
        , m_next(next)
    {
    }

    /// Something has come, and it was none of the protocol's, or that the register does not know the
    /// protocol.
    bool isForeign() const { return !m_first.isEmpty() && !isOurs(); }

    void opened() override;
    void sent(const QByteArray& bytes) override;
    void received(const QByteArray& bytes) override;
    void failed(const QString& reason) override;

private:
    bool isOurs() const;

    const bool m_isHex;
    devices::LineObserver* const m_next;
    bool m_hasAsked = false;
    bool m_isOver = false;
    QByteArray m_first;
};

} // namespace frctl
