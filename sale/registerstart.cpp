#include "registerstart.h"

#include "abstractfrdriver.h"
#include "deviceinfo.h"
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

} // namespace

void connectRegister(AbstractFrDriver& driver, const RegisterLine& line)
{
    driver.connect();
    const ExpectedRegister& expected = line.expected;
    if (!expected.serial.isEmpty())
        compare(tr("serial number"), driver.getDeviceInfo().getNumber(), expected.serial);
    if (!expected.inn.isEmpty() && line.protocol == receipt::Protocol::Hex)
        compare(tr("tax number"), driver.getInn(), expected.inn);
}

void compareRegister(const ExpectedRegister& told, const RegisterLine& line)
{
    if (!line.expected.serial.isEmpty())
        compare(tr("serial number"), told.serial, line.expected.serial);
    if (!line.expected.inn.isEmpty() && line.protocol == receipt::Protocol::Hex)
        compare(tr("tax number"), told.inn, line.expected.inn);
}

QList<SettledSale> startRegister(
    AbstractFrDriver& driver, DocumentStore* journal, const RegisterLine& line, const QString& registerName)
{
    connectRegister(driver, line);
    QList<SettledSale> settled;
    if (journal != nullptr)
        settled = settlePendingSales(driver, *journal, line, registerName);
    driver.init();
    return settled;
}

} // namespace sale
