#pragma once

#include "http/caller.h"

#include <QByteArray>

#include <optional>
#include <utility>
#include <vector>

namespace http {

/// The bearer tokens that are let in, kept as hashes.
class Tokens
{
public:
    /// 256 random bits as text.
    static QByteArray fresh();
    /// What is kept of a token: its SHA-256 in hexadecimal digits. Enough for one of 256 random bits, and for
    /// nothing that a person has thought of.
    static QByteArray hashOf(const QByteArray& token);

    void add(const QByteArray& hash, const Caller& caller);
    void clear() { m_entries.clear(); }
    bool isEmpty() const { return m_entries.empty(); }
    /// Takes the same time whatever is right of the token.
    std::optional<Caller> callerOf(const QByteArray& token) const;

private:
    std::vector<std::pair<QByteArray, Caller>> m_entries;
};

} // namespace http
