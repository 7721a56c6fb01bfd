#include "frspf.h"

#include <frutils.h>

#include <QJsonObject>

namespace spfxml {

void FrSpf::openShift()
{
    logger->info(QStringLiteral("Открытие смены"));
    isPortReady();
    if (command->getShiftStatus().opened)
        logger->info(QStringLiteral("Смена в ФР открыта"));
    else
        command->shiftOpen();
}

QJsonObject FrSpf::xReport()
{
    logger->info(QStringLiteral("Снятие суточного отчета без гашения"));
    isPortReady();
    command->printXReport();
    logDone();
    return {};
}

QJsonObject FrSpf::zReport()
{
    logger->info(QStringLiteral("Снятие суточного отчета с гашением"));
    isPortReady();
    if (command->getShiftStatus().opened) {
        command->shiftClose();
        logDone();
    } else {
        logger->info(QStringLiteral("Смена в ФР закрыта"));
    }
    return {};
}

void FrSpf::accountingReport()
{
    logger->info(QStringLiteral("Снятие отчета о текущем состоянии расчетов"));
    // The report needs an open shift and the text asks to close it: the contradiction is meant to stay.
    if (!command->getShiftStatus().opened)
        throw FrCommandException(QStringLiteral("Необходимо закрыть смену в ФР"));
    command->accountingReport();
}

void FrSpf::printFnDocument(long documentNumber)
{
    logger->info(QStringLiteral("Печать ФД №%1").arg(documentNumber));
    command->printFNDocument(static_cast<unsigned int>(documentNumber));
}

void FrSpf::printLastFnDocument()
{
    logger->info(QStringLiteral("Запрос и печать копии последнего ФД"));
    command->printLastFNDocument();
}

bool FrSpf::isCashDrawerOpened() const
{
    return withLoggedFailure([this] {
        logger->info(QStringLiteral("Проверка статуса денежного ящика"));
        isPortReady();
        return command->getCashDrawerStatus();
    });
}

void FrSpf::drawerOpen()
{
    withLoggedFailure([this] {
        logger->info(QStringLiteral("Открытие денежного ящика"));
        isPortReady();
        command->openDrawer();
        logDone();
    });
}

QDateTime FrSpf::getDateTime()
{
    logger->info(QStringLiteral("Получение даты/времени из ККМ"));
    isPortReady();
    const QDateTime dateTime = command->getDateTime();
    logger->info(QStringLiteral("Дата/время ККМ: %1").arg(FrUtils::getTimeAsString(dateTime)));
    return dateTime;
}

bool FrSpf::setDateTime(const QDateTime& dateTime)
{
    return withLoggedFailure([this, &dateTime] {
        logger->info(
            QStringLiteral("Установка даты/времени в ККМ: %1").arg(FrUtils::getTimeAsString(dateTime)));
        isPortReady();
        if (command->getShiftStatus().opened) {
            logger->info(QStringLiteral("Невозможно выполнить синхронизацию времени, смена в ФР открыта"));
            return false;
        }
        command->setDateTime(dateTime);
        logDone();
        return true;
    });
}

} // namespace spfxml
