#include "messages.h"

#include "streams.h"

namespace frctl {

namespace {
bool isLost = false;
} // namespace

void complain(const QString& text)
{
    isLost = print(stderr, QStringLiteral("frctl: ") + text) != 0 || isLost;
}

bool isMessageLost()
{
    return isLost;
}

} // namespace frctl
