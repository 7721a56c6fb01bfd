#pragma once

#include "lineobserver.h"

namespace frctl {

/// Hands all on to another observer, for those that look at some of it.
class PassingObserver : public devices::LineObserver
{
public:
    /// The other one may be null.
    explicit PassingObserver(devices::LineObserver* next)
        : m_next(next)
    {
    }

    void opening() override
    {
        if (m_next != nullptr)
            m_next->opening();
    }
    void opened() override
    {
        if (m_next != nullptr)
            m_next->opened();
    }
    void sent(const QByteArray& bytes) override
    {
        if (m_next != nullptr)
            m_next->sent(bytes);
    }
    void received(const QByteArray& bytes) override
    {
        if (m_next != nullptr)
            m_next->received(bytes);
    }
    void failed(const QString& reason) override
    {
        if (m_next != nullptr)
            m_next->failed(reason);
    }

private:
    devices::LineObserver* const m_next;
};

} // namespace frctl
