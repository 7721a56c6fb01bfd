#pragma once

#include <QtGlobal>

/// A small generator that gives the same numbers on every machine, one stream a purpose.
class Random
{
public:
    Random(quint64 seed, quint64 stream)
        : m_state(seed * 0x9E3779B97F4A7C15U + stream * 0xD1B54A32D192ED03U)
    {
    }

    quint64 next()
    {
        m_state += 0x9E3779B97F4A7C15U;
        quint64 z = m_state;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }
    /// 0 to limit - 1.
    int below(qsizetype limit) { return static_cast<int>(next() % static_cast<quint64>(limit)); }
    int between(int low, int high) { return low + below(high - low + 1); }
    bool chance(int permille) { return below(1000) < permille; }

private:
    quint64 m_state;
};
