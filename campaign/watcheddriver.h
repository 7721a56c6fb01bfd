#pragma once

#include "callwatch.h"
#include "fninfo.h"
#include "markedposition.h"

#include <QJsonObject>
#include <QScopedValueRollback>

#include <type_traits>

class AbstractSerialDriver;
class FrSpfSettings;

/// A protocol's driver that hands each call of a sale to a watch. Whoever makes the call, the campaign or the
/// library of sales, does not know of it.
template <typename Driver>
class WatchedDriver : public Driver
{
public:
    /// The watch must outlive the driver; it may be empty.
    WatchedDriver(AbstractSerialDriver* transport, FrSpfSettings* ownSettings, const CallWatch& watch)
        : Driver(transport, ownSettings)
        , m_watch(watch)
    {
    }

    // clang-format off
    void portOpen() override { watched("portOpen", [this] { Driver::portOpen(); }); }
    void portClose() override { watched("portClose", [this] { Driver::portClose(); }); }
    void connect() override { watched("connect", [this] { Driver::connect(); }); }
    void init() override { watched("init", [this] { Driver::init(); }); }
    void openShift() override { watched("openShift", [this] { Driver::openShift(); }); }
    void cashierLogin(const FrUser& user) override { watched("cashierLogin", [&] { Driver::cashierLogin(user); }); }
    void setRequisite(const FdRequisite& requisite) override
    { watched("setRequisite", [&] { Driver::setRequisite(requisite); }); }
    void setFont(const QList<EFrDriver::FontTypes>& fonts) override { watched("setFont", [&] { Driver::setFont(fonts); }); }
    void resetFont() override { watched("resetFont", [this] { Driver::resetFont(); }); }
    void barcodePrint(const Barcode& barcode) override { watched("barcodePrint", [&] { Driver::barcodePrint(barcode); }); }
    QJsonObject zReport() override { return watched("zReport", [this] { return Driver::zReport(); }); }
    KkmRegisterBeg getKkmRegisterBeg() override
    { return watched("getKkmRegisterBeg", [this] { return Driver::getKkmRegisterBeg(); }); }
    QString getFrDocNum() override { return watched("getFrDocNum", [this] { return Driver::getFrDocNum(); }); }
    QMap<int, double> getCheckCounters(hw::fr::CheckType type) override
    { return watched("getCheckCounters", [&] { return Driver::getCheckCounters(type); }); }
    MoneyCounters getMoneyCounters(hw::fr::CheckType type) override
    { return watched("getMoneyCounters", [&] { return Driver::getMoneyCounters(type); }); }
    FnInfo getFnInfo() override { return watched("getFnInfo", [this] { return Driver::getFnInfo(); }); }
    int checkMarkingCode(const MarkedPosition& position, bool recheck) override
    { return watched("checkMarkingCode", [&] { return Driver::checkMarkingCode(position, recheck); }); }
    void clearMarkingCodes() override { watched("clearMarkingCodes", [this] { Driver::clearMarkingCodes(); }); }
    void checkOpen(const FiscalDocument& document) override
    { watched("checkOpen", [&] { Driver::checkOpen(document); }); }
    void checkAddPosition(const FrPosition& position) override
    { watched("checkAddPosition", [&] { Driver::checkAddPosition(position); }); }
    void checkPrint(const QList<QString>& lines) override { watched("checkPrint", [&] { Driver::checkPrint(lines); }); }
    void checkTotal() override { watched("checkTotal", [this] { Driver::checkTotal(); }); }
    void checkPay(const FrPayment& payment) override { watched("checkPay", [&] { Driver::checkPay(payment); }); }
    QJsonObject checkClose(const FiscalDocument& document) override
    { return watched("checkClose", [&] { return Driver::checkClose(document); }); }
    void checkWaitForPrint() override { watched("checkWaitForPrint", [this] { Driver::checkWaitForPrint(); }); }
    void checkCancel() override { watched("checkCancel", [this] { Driver::checkCancel(); }); }
    // clang-format on

private:
    template <typename Work>
    auto watched(const char* name, const Work& work)
    {
        // What the driver calls of itself belongs to the call from outside.
        if (!m_watch || m_isBusy)
            return work();
        const QScopedValueRollback busy(m_isBusy, true);
        if constexpr (std::is_void_v<decltype(work())>) {
            m_watch(name, work);
        } else {
            decltype(work()) result{};
            m_watch(name, [&] { result = work(); });
            return result;
        }
    }

    const CallWatch& m_watch;
    bool m_isBusy = false;
};
