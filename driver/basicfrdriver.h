#pragma once

#include "abstractfrdriver.h"
#include "abstractserialdriver.h"

#include <vector>

namespace Log4Qt {
class Logger;
}

/// The whole driver contract with defaults: what no protocol driver overrides behaves as written here. An
/// operation that a device cannot do logs and does nothing, or answers empty; the base never throws for it.
///
/// It also holds what both protocols share: transport, settings, logger, speeds, the device's identity, the
/// option mask and the host's two callbacks, which are stored and never called.
class BasicFrDriver : public AbstractFrDriver
{
public:
    /// Without a transport: every operation that needs one throws FrNoConnectionException.
    BasicFrDriver();
    /// The driver deletes neither the transport nor the settings. Without settings it makes its own.
    BasicFrDriver(AbstractSerialDriver* serialDriver, const QString& name, BasicFrSettings* driverSettings);
    BasicFrDriver(const BasicFrDriver&) = delete;
    BasicFrDriver& operator=(const BasicFrDriver&) = delete;
    ~BasicFrDriver() override;

    void portOpen() override;
    void portClose() override;
    void connect() override;
    void init() override;
    void reinitialize() override;
    void reboot(EFrDriver::RebootMode mode) override;
    bool setDefaults() override;
    QStringList getDeviceStateDescription() override;
    QStringList getFnStateDescription() override;
    void printLastFnDocument() override;
    void printFnDocument(long number) override;
    FnDocument getFnDocument(unsigned long long number) override;
    QStringList getCountersDescription() override;
    QStringList getParametersDescription() override;
    std::ostream& getDump(int first, int last, std::ostream& stream) override;
    DeviceInfo getDeviceInfo() override;
    BasicFrSettings* getDeviceSettings() const override;
    void setFont(const QList<EFrDriver::FontTypes>& fonts) override;
    void setLineSpacing(int spacing) override;
    void resetFont() override;
    bool loadFont(const Font& font) override;
    void beep() override;
    void drawerOpen() override;
    void checkOpen(const FiscalDocument& document) override;
    QJsonObject checkClose(const FiscalDocument& document) override;
    void checkCancel() override;
    void checkWaitForPrint() override;
    void cutAfterChecksClosing() override;
    void cutPaper() override;
    void checkAddPosition(const FrPosition& position) override;
    void checkStornoPosition(const FrPosition& position) override;
    void checkTotal() override;
    void checkPay(const FrPayment& payment) override;
    void checkPrint(const QList<QString>& lines) override;
    void moneyCheckOpen(hw::fr::CheckType type, const QString& text) override;
    void moneyCheckPrint(const QList<QString>& lines) override;
    QJsonObject moneyCheckClose(double sum) override;
    void moneyCheckWaitForPrint() override;
    void textDocOpen(hw::fr::CheckType type) override;
    void textDocPrint(const QList<QString>& lines) override;
    void textDocClose() override;
    void barcodePrint(const Barcode& barcode) override;
    void vatReport() override;
    QJsonObject zReport() override;
    QJsonObject xReport() override;
    QJsonObject xReportDept() override;
    MoneyCounters getMoneyCounters(hw::fr::CheckType type) override;
    QMap<int, double> getCheckCounters(hw::fr::CheckType type) override;
    QMap<int, double> getPositionCounters(hw::fr::CheckType type) const override;
    int getLastShiftNumber() override;
    int getDefaultPaymentType() override;
    QString getSendLinesTemplate() const override;
    void fpReportInDatesRange(const QString& password, long from, long to, bool full) override;
    void fpReportInShiftsRange(const QString& password, long from, long to, bool full) override;
    void fiscalization(const QString& oldPassword, const QString& registrationNumber, const QString& inn,
        const QString& newPassword) override;
    bool setDateTime(const QDateTime& dateTime) override;
    QDateTime getDateTime() override;
    int getHoursDifferenceLimit() const override;
    bool setCliche(const QList<QString>& lines) override;
    bool setTail(const QList<QString>& lines) override;
    void setDefaultBaudrate() override;
    QString getFrModeString() const override;
    void printLogo(const Logo& logo) override;
    void ping() override;
    KkmRegisterBeg getKkmRegisterBeg() override;
    KkmRegisterEnd getKkmRegisterEnd() override;
    QMap<EFrDriver::FontTypes, unsigned> getBandWidthFonts() override;
    QString getInn() override;
    bool setGraphicCliche(const QString& fileName) override;
    void clearGraphicCliche() override;
    QString getFrDocNum() override;
    QString getFrDocNumAfterClosing() override;
    QString getFrDocCopy(long number) override;
    int getFrDocOffset() override;
    void cancelCheckOpen(const FiscalDocument& document) override;
    void cancelCheckTotal(const FiscalDocument& document) override;
    void cancelCheckPay(const FiscalDocument& document) override;
    QJsonObject cancelCheckClose(const FiscalDocument& document) override;
    void cashierLogin(const FrUser& user) override;
    void cashierLogout(const FrUser& user) override;
    bool useSKNO() override;
    bool isSKNOConnectedToServer() override;
    bool checkOption(hw::fr::Option option) const override;
    void setOption(hw::fr::Option option, bool enable) override;
    void d2dReport(const QDateTime& from, const QDateTime& to, bool full) override;
    void z2zReport(unsigned int from, unsigned int to, bool full) override;
    void openShift() override;
    bool isShiftOpen() override;
    bool useFN() override;
    void printEj() override;
    QString getEj(int shift) override;
    void accountingReport() override;
    void setRequisite(const FdRequisite& requisite) override;
    OfdStatusInfo getOfdStatusInfo() override;
    FnInfo getFnInfo() override;
    FiscalInfo getFiscalInfo(int index, bool full) override;
    QString getFfdVersion() override;
    int getMainPaymentType(int type) override;
    void setCheckTemplate(int number, const QString& text) override;
    int getCheckCountersTries() const override;
    hw::fr::common::TaxSystemType getDefaultTaxSystem() const override;
    QList<hw::fr::common::TaxSystemType> getAllTaxSystems() const override;
    void setNumber(int number) override;
    int getNumber() const override;
    QMap<int, QString> getRelatedCounters() const override;
    void continuePrintClosedDoc() override;
    void registration(const QList<hw::fr::common::TaxSystemType>& taxSystems,
        hw::fr::common::TaxSystemType defaultTaxSystem, const QString& cashierName,
        const QList<RegistrationReason>& reasons, const QMap<QString, QVariant>& parameters) override;
    void maintenance() override;
    QJsonObject loadImage(int slot, const QString& fileName) override;
    int checkMarkingCode(const MarkedPosition& position, bool recheck) override;
    bool isRegistrationParametersChanged(const QMap<QString, QVariant>& parameters) const override;
    void checkPaper() const override;
    void clearMarkingCodes() override;
    int getAnnulationCounter() override;
    void setSymbolsMapping(const QMap<QChar, QChar>& mapping) override;
    void setProgramCliche(const QList<QString>& lines) override;
    bool isCashDrawerOpened() const override;
    bool setParams(const QList<FrParameter>& parameters) override;
    bool isLastCheckWithNumber(const QString& number) override;
    QJsonObject getLastCheck(const FiscalDocument& document) override;
    void printCodePageSymbols(int codePage) override;
    void addPostLines(const QList<FrPrintData>& items) override;
    void clearLinesForPrint() override;
    void setErrorNotificationHandler(
        const std::function<void(const tr::Tr&, const QString&)>& handler) override;
    void setOfdNotificationHandler(
        const std::function<void(bool, const tr::Tr&, const QDateTime&)>& handler) override;
    QString queryData(const QString& name) const override;
    void printLastZReport() override;

    /// One real exchange with the device; throws when it does not answer. The base has none.
    virtual void setConnection();
    /// Tries the other speeds; true when one worked.
    virtual bool enumerateSpeed();
    /// Tries the speed that worked last; true when it worked again.
    virtual bool connectAtCurrentSpeed();
    /// Returns when the port is open, throws FrNoConnectionException otherwise.
    virtual void isPortReady() const;
    /// Packs a map of modules into rows of bits, the first module in the highest bit; reverse turns each byte
    /// round.
    virtual std::vector<std::vector<unsigned char>> convertBytes2Bits(
        const std::vector<std::vector<unsigned char>>& rows, bool reverse) const;
    /// The QR code of a text as a square map of modules: 0xFF dark, 0 light. Empty when it cannot be made.
    virtual std::vector<std::vector<unsigned char>> generateQR(const QString& text) const;
    virtual void msleep(int milliseconds) const;
    /// Writes one parameter; false when it was refused. The base refuses all.
    virtual bool legacySetParam(
        unsigned short table, unsigned short row, unsigned short field, const QString& value);

protected:
    /// portOpen of both protocols: logs, lets the protocol prepare the line, opens it at the default speed.
    void openPort(const std::function<void()>& prepareLine = {});
    /// portClose of both protocols.
    void closePort();
    /// Runs the writing of parameters; false with a line in the log when it throws.
    bool programParameters(const std::function<void()>& write);
    /// The registers of a shift with the device's identity filled in.
    KkmRegisterBeg registersWithIdentity() const;
    /// The number of the shift after that one, also of a number that no register reaches.
    static int nextShift(int shiftNumber);
    void logDone() const;

    enum PortState { PortIsOpen = 0, PortIsClosed = 1 };

    AbstractSerialDriver* serial = nullptr;
    BasicFrSettings* settings = nullptr;
    Log4Qt::Logger* logger = nullptr;
    int portState = PortIsClosed;
    /// The first speed that is tried.
    int defaultSpeed = 19200;
    /// The speed of the last success.
    int currentSpeed = 19200;
    /// Speeds for enumeration in the order in which they are tried; for derived drivers to fill.
    QList<int> speeds;
    DeviceInfo deviceInfo;
    EFrDriver::FontTypes currentFont = EFrDriver::UndefinedFont;
    quint64 optionMask = 0;
    bool deviceInfoLoaded = false;
    /// A connection has succeeded since the driver was created.
    bool connectedOnce = false;
    int number = 0;
    FiscalInfo fiscalInfo;
    std::function<void(bool, const tr::Tr&, const QDateTime&)> ofdNotificationHandler;
    std::function<void(const tr::Tr&, const QString&)> errorNotificationHandler;

private:
    void connectWithoutBaudRate();
    void connectAtSomeSpeed();
};

/// The byte with its bits in reverse order.
unsigned char reverseBits(unsigned char byte);
