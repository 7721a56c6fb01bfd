#pragma once

#include <QtGlobal>

#include <optional>

/// What a host can say about a receipt whose closing failed.
enum class Verdict { Issued, NotIssued, Unknown };

/// Judges by the number of the fiscal drive's last document before the closing and after the connection came
/// back. It holds as long as nobody else works the register in between and nothing else that the drive
/// stores, as the opening of a shift, is done.
inline Verdict judge(std::optional<quint32> before, std::optional<quint32> after)
{
    if (!before || !after)
        return Verdict::Unknown;
    if (*after == *before)
        return Verdict::NotIssued;
    return *after == *before + 1 ? Verdict::Issued : Verdict::Unknown;
}
