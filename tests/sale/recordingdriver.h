#pragma once

#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "exceptions.h"

#include <functional>
#include <optional>
#include <utility>

/// What a host's device throws to interrupt a driver: no exception of the contract.
struct Interruption
{
};

/// Writes down the calls of a host; those named fail. Its fiscal drive tells the numbers given.
class RecordingDriver : public BasicFrDriver
{
public:
    explicit RecordingDriver(BasicFrSettings* ownSettings)
        : BasicFrDriver(nullptr, QStringLiteral("test"), ownSettings)
    {
    }

    void connect() override
    {
        note("connect");
        deviceInfo.setNumber(QStringLiteral("0030001"));
    }
    QString getInn() override { return noted("inn", QStringLiteral("7721000012")); }
    void init() override { note("init"); }
    void openShift() override
    {
        shiftOpen = opensUnheard;
        note("openShift");
        shiftOpen = true;
    }
    bool isShiftOpen() override { return noted("shift", shiftOpen); }
    FnInfo getFnInfo() override
    {
        // Behind the registers it belongs to the questions before it.
        if (!std::exchange(m_isInRound, false))
            moveOn();
        note("ask");
        FnInfo info;
        info.fnStatus.fnNumber = std::exchange(misreadDrive, {}).value_or(drive);
        info.fnStatus.lastFdNumber = m_number;
        info.fnStatus.isShiftOpen = shiftOpen;
        return info;
    }
    KkmRegisterBeg getKkmRegisterBeg() override
    {
        moveOn();
        m_isInRound = true;
        note("registers");
        KkmRegisterBeg registers;
        registers.fnNumber = drive;
        registers.shiftNumber = 3;
        return registers;
    }
    QString getFrDocNum() override
    {
        if (!calls.ends_with("registers"))
            moveOn();
        note("next");
        return QString::number(m_number);
    }
    QMap<int, double> getCheckCounters(hw::fr::CheckType) override
    {
        note("sums");
        QMap<int, double> counters;
        for (auto payment = payments.cbegin(); payment != payments.cend(); ++payment)
            counters.insert(payment.key(), payment.value() * m_number);
        return counters;
    }
    QDateTime getDateTime() override { return noted("clock", time); }
    MoneyCounters getMoneyCounters(hw::fr::CheckType) override { return noted("cash", MoneyCounters()); }
    QList<hw::fr::common::TaxSystemType> getAllTaxSystems() const override { return registered; }
    void cashierLogin(const FrUser& user) override { cashier = user.name; }
    int checkMarkingCode(const MarkedPosition& position, bool recheck) override
    {
        note(recheck ? "mark" : "mark-as-known");
        if (onMark)
            onMark();
        status = position.status;
        return markResult;
    }
    void clearMarkingCodes() override { note("clear"); }
    void checkOpen(const FiscalDocument&) override { note("open"); }
    void setRequisite(const FdRequisite& requisite) override
    {
        if (requisite.getTag() == EFrDriver::TaxSystem)
            taxSystem = requisite.getSourceData().toInt();
        else
            note("requisite");
    }
    void checkAddPosition(const FrPosition&) override { note("position"); }
    void setFont(const QList<EFrDriver::FontTypes>& fonts) override { font = fonts.constFirst(); }
    QMap<EFrDriver::FontTypes, unsigned> getBandWidthFonts() override { return widths; }
    void checkPrint(const QList<QString>&) override { note("print"); }
    void barcodePrint(const Barcode&) override { note("barcode"); }
    void checkTotal() override { note("total"); }
    void checkPay(const FrPayment& payment) override { note("pay" + std::to_string(payment.kind)); }
    QJsonObject checkClose(const FiscalDocument&) override { return noted("close"); }
    void checkCancel() override { note("cancel"); }
    void checkWaitForPrint() override { note("wait"); }
    void moneyCheckOpen(hw::fr::CheckType type, const QString&) override
    {
        note(type == hw::fr::CheckCashIn ? "cashIn" : "cashOut");
    }
    QJsonObject moneyCheckClose(double sum) override
    {
        return noted("sum" + QString::number(sum).toStdString());
    }
    void textDocPrint(const QList<QString>& lines) override
    {
        note("text:" + QStringList(lines).join('|').toStdString());
    }
    QJsonObject xReport() override { return noted("xReport"); }
    QJsonObject zReport() override { return noted("zReport"); }
    void accountingReport() override { note("accounting"); }
    void printLastFnDocument() override { note("last"); }
    void printFnDocument(long document) override { note("copy" + std::to_string(document)); }

    /// As a step of a document.
    void note(const std::string& call)
    {
        if (isHostDead)
            throw Interruption();
        calls += (calls.empty() ? "" : " ") + call;
        const auto isAmong = [&call](const std::string& names) {
            return (" " + names + " ").find(" " + call + " ") < names.npos;
        };
        if (isAmong(failing) && interrupt)
            throw Interruption();
        if (isAmong(lost))
            throw FrNoConnectionException(QStringLiteral("Нет связи"));
        if (isAmong(unfit))
            throw FrCommandException(unfitText);
        if (isAmong(failing) || isAmong(refused))
            throw FrPaperException(QStringLiteral("Нет бумаги"));
    }

    std::string calls;
    /// Names with blanks between them.
    std::string failing;
    bool interrupt = false;
    /// Its program asks nothing any more.
    bool isHostDead = false;
    /// Those that the register refuses, also beside an interruption.
    std::string refused;
    /// Those that it does not answer.
    std::string lost;
    /// Those that do not fit the register's state, as behind a power cut.
    std::string unfit;
    QString unfitText = QStringLiteral("Функция невыполнима при данном статусе ККТ");
    /// What happens elsewhere while a marking code is checked.
    std::function<void()> onMark;
    /// The last one that was set.
    EFrDriver::FontTypes font = EFrDriver::UndefinedFont;
    QMap<EFrDriver::FontTypes, unsigned> widths;
    int markResult = 15;
    /// Stay from document to document.
    int taxSystem = 0;
    QString cashier;
    QList<hw::fr::common::TaxSystemType> registered{hw::fr::common::TaxSystemGeneral};
    bool shiftOpen = true;
    /// Opens the shift also when that fails.
    bool opensUnheard = false;
    QString drive = QStringLiteral("9999");
    QDateTime time{{2025, 3, 1}, {9, 30, 5}};
    /// What the next answer makes of it.
    std::optional<QString> misreadDrive;
    /// Of the drive's last document, from question to question. Each has moved the sums by the payments.
    QList<quint32> numbers{7};
    QMap<int, double> payments{{0, 6.0}, {1, 1.0}, {4, 3.0}};
    /// Of the goods whose mark was checked last.
    int status = 0;

private:
    /// What is answered to a call that goes well.
    template <typename Answer = QJsonObject>
    Answer noted(const std::string& call, Answer answer = {})
    {
        note(call);
        return answer;
    }
    void moveOn() { m_number = numbers.size() > 1 ? numbers.takeFirst() : numbers.constFirst(); }

    quint32 m_number = 0;
    bool m_isInRound = false;
};
