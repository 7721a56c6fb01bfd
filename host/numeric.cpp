#include "numeric.h"

#include <functional>
#include <numeric>

namespace numeric {

int calcLRC(const QByteArray& data)
{
    return std::accumulate(data.cbegin(), data.cend(), quint8{0}, std::bit_xor<quint8>());
}

} // namespace numeric
