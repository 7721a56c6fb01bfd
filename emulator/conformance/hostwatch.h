#pragma once

#include "conformance/hostrecord.h"
#include "conformance/hostrule.h"

#include <memory>
#include <vector>

namespace emulator {

class Register;

/// Keeps a record of what a host does, for whoever develops it. It is told of each exchange after the
/// documents that were stored in it.
class HostWatch
{
public:
    explicit HostWatch(const Register& device);

    /// A document as the journal has it.
    void store(const QJsonObject& document);
    void note(const Exchange& exchange);
    /// The register is another one than before: what the host did with the last one binds it no more. The
    /// record goes on.
    void beginAnew();
    const HostRecord& record() const { return m_record; }

private:
    const Register& m_device;
    HostRecord m_record;
    std::vector<std::unique_ptr<HostRule>> m_rules;
};

} // namespace emulator
