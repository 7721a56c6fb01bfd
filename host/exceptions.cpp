#include "exceptions.h"

BasicException::BasicException(const QString& message)
    : std::runtime_error(message.toStdString())
    , m_message(tr::undefined, message)
{
}

const char* DriverException::what() const noexcept
{
    return BasicException::what();
}

// The destructors stand here so that each class has one typeinfo, in this library, for catches on both sides
// of the plugin boundary.
BasicException::~BasicException() = default;
DriverException::~DriverException() = default;
ComDriverException::~ComDriverException() = default;
ComDriverTimeoutException::~ComDriverTimeoutException() = default;
FrDriverException::~FrDriverException() = default;
FrCommandException::~FrCommandException() = default;
FrNoConnectionException::~FrNoConnectionException() = default;
FrPaperException::~FrPaperException() = default;
FrWaitForPaperException::~FrWaitForPaperException() = default;
FrShiftTooLongException::~FrShiftTooLongException() = default;
FrFatalException::~FrFatalException() = default;
