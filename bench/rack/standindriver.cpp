#include "standindriver.h"

#include <QCryptographicHash>

#include <thread>

namespace {

constexpr int usualMs = 3000;

std::chrono::milliseconds timeOfReceipt()
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("FRSPF_STANDIN_MS", &isGiven);
    return std::chrono::milliseconds(isGiven ? given : usualMs);
}

/// The same for a worker that is started anew, which begins with a drive that is empty: nothing that was
/// begun before can be settled here.
emulator::Identity identityOf(const QString& name)
{
    const QByteArray digest = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256).toHex();
    const qulonglong number = digest.left(12).toULongLong(nullptr, 16) % 1'000'000'000'000;
    emulator::Identity identity;
    identity.driveNumber = QStringLiteral("9999%1").arg(number, 12, 10, QLatin1Char('0'));
    return identity;
}

} // namespace

StandInLine::StandInLine(const QString& name)
    : line(liveRegister(Language::Hex, identityOf(name)))
{
}

StandInDriver::StandInDriver(const QString& name)
    : StandInLine(name)
    , FrSpf(&line, &ownSettings)
{
}

void StandInDriver::checkOpen(const FiscalDocument& document)
{
    m_opened = std::chrono::steady_clock::now();
    FrSpf::checkOpen(document);
}

QJsonObject StandInDriver::checkClose(const FiscalDocument& document)
{
    std::this_thread::sleep_until(m_opened + timeOfReceipt());
    return FrSpf::checkClose(document);
}
