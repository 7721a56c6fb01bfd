#pragma once

#include "spfxml/spffrcommand.h"

#include <gmock/gmock.h>

/// The operations of the command object that the driver calls.
class MockSpfFrCommand : public spfxml::SpfFrCommand
{
public:
    using SpfFrCommand::SpfFrCommand;

    MOCK_METHOD(QDateTime, getDateTime, (), (const, override));
    MOCK_METHOD(void, setDateTime, (const QDateTime&), (const, override));
    MOCK_METHOD(void, printXReport, (), (const, override));
    MOCK_METHOD(spfxml::ShiftStatus, getShiftStatus, (), (const, override));
    MOCK_METHOD(spfxml::SpfStatus, getStatus, (), (const, override));
    MOCK_METHOD(bool, getCashDrawerStatus, (), (const, override));
    MOCK_METHOD(void, openDrawer, (), (const, override));
    MOCK_METHOD(void, shiftOpen, (), (const, override));
    MOCK_METHOD(void, shiftClose, (), (const, override));
    MOCK_METHOD(void, accountingReport, (), (const, override));
    MOCK_METHOD(void, printFNDocument, (unsigned int), (const, override));
    MOCK_METHOD(void, printLastFNDocument, (), (const, override));
    MOCK_METHOD(void, setTail, (const QList<QString>&), (override));

    QString sentCashierName() const { return cashierName; }
    QString sentCashierInn() const { return cashierInn; }
};
