#include "registerstart.h"

#include "abstractfrdriver.h"
#include "deviceinfo.h"
#include "documentstore.h"
#include "exceptions.h"
#include "pendingsales.h"
#include "saletr.h"
#include "showntext.h"
#include "wrongregister.h"

namespace sale {

namespace {

void compare(const QString& what, const QString& told, const QString& expected)
{
    if (told.trimmed() != expected.trimmed())
        throw WrongRegister(tr("another register is at the line: its %1 is %2, not %3")
                                .arg(what, receipt::shownText(told), receipt::shownText(expected)));
}

/// Asks for what is expected alone.
template <typename Serial, typename Inn>
void compareTold(const RegisterLine& line, const Serial& serial, const Inn& inn)
{
    const ExpectedRegister& expected = line.expected;
    if (!expected.serial.isEmpty())
        compare(tr("serial number"), serial(), expected.serial);
    if (!expected.inn.isEmpty() && line.protocol == receipt::Protocol::Hex)
        compare(tr("tax number"), inn(), expected.inn);
}

/// Empty when it does not tell.
QString driveOf(AbstractFrDriver& driver)
{
    try {
        return driver.getFnInfo().fnStatus.fnNumber;
    } catch (const FrNoConnectionException&) {
        throw;
    } catch (const FrCommandException&) {
        return {};
    }
}

} // namespace

void connectRegister(AbstractFrDriver& driver, const RegisterLine& line)
{
    driver.connect();
    compareTold(
        line, [&driver] { return driver.getDeviceInfo().getNumber(); },
        [&driver] { return driver.getInn(); });
}

void compareRegister(const ExpectedRegister& told, const RegisterLine& line)
{
    compareTold(
        line, [&told] { return told.serial; }, [&told] { return told.inn; });
}

void meetRegister(
    AbstractFrDriver& driver, DocumentStore* journal, const RegisterLine& line, const QString& registerName)
{
    connectRegister(driver, line);
    if (journal != nullptr)
        journal->meetRegister(registerName, [&driver] { return driveOf(driver); });
}

QList<SettledSale> startRegister(
    AbstractFrDriver& driver, DocumentStore* journal, const RegisterLine& line, const QString& registerName)
{
    meetRegister(driver, journal, line, registerName);
    QList<SettledSale> settled;
    if (journal != nullptr)
        settled = settlePendingSales(driver, *journal, line, registerName);
    driver.init();
    return settled;
}

} // namespace sale
