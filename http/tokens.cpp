#include "http/tokens.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <array>

namespace http {

namespace {

bool isSame(const QByteArray& left, const QByteArray& right)
{
    if (left.size() != right.size())
        return false;
    int difference = 0;
    for (qsizetype index = 0; index < left.size(); ++index)
        difference |= left.at(index) ^ right.at(index);
    return difference == 0;
}

} // namespace

QByteArray Tokens::fresh()
{
    std::array<quint32, 8> words;
    QRandomGenerator::system()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
    const QByteArray bytes(reinterpret_cast<const char*>(words.data()), sizeof(words));
    return bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QByteArray Tokens::hashOf(const QByteArray& token)
{
    return QCryptographicHash::hash(token, QCryptographicHash::Sha256).toHex();
}

void Tokens::add(const QByteArray& hash, const Caller& caller)
{
    m_entries.emplace_back(hash.toLower(), caller);
}

std::optional<Caller> Tokens::callerOf(const QByteArray& token) const
{
    const QByteArray hash = hashOf(token);
    std::optional<Caller> found;
    for (const auto& [kept, caller] : m_entries) {
        if (isSame(kept, hash))
            found = caller;
    }
    return found;
}

} // namespace http
