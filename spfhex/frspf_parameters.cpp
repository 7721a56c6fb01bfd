// Parameters, header, advertising text, logo.

#include "frspf.h"

#include "centredline.h"
#include "command.h"
#include "driverlogger.h"
#include "exceptions.h"
#include "headerimage.h"
#include "paramtable.h"
#include "protocol.h"
#include "stringutils.h"

namespace spfhex {

namespace {

constexpr QRect logoArea(0, 0, 288, 100);

FrParameter scalar(protocol::Parameter parameter, const QString& value)
{
    return {protocol::parameterTable, 0, parameter, value};
}

QList<FrParameter> defaultParameters()
{
    const QString off = QStringLiteral("0");
    const QString on = QStringLiteral("1");
    return {
        scalar(protocol::DrawerOpeningParameter, off),
        scalar(protocol::LogoParameter, off),
        scalar(protocol::CashControlParameter, on),
        scalar(protocol::AutomaticCollectionParameter, off),
        scalar(protocol::CutTypeParameter, off), // below the table's least value, and meant so
        scalar(protocol::ReceiptDesignParameter, off),
        scalar(protocol::AutomaticPaymentParameter, on),
        scalar(protocol::NoExtraClicheLineParameter, on),
        scalar(protocol::ReceiptRequisitesParameter, off),
    };
}

} // namespace

bool FrSpf::setParams(const QList<FrParameter>& parameters)
{
    logger->info(QStringLiteral("Программирование параметров"));
    isPortReady();
    return programParameters([this, &parameters] {
        // What was written before a refused one stays written.
        for (const FrParameter& parameter : parameters)
            command->setParameter(parameter);
    });
}

bool FrSpf::setDefaults()
{
    logger->info(QStringLiteral("Программирование настроек ФР по умолчанию"));
    isPortReady();
    const bool done = setParams(defaultParameters());
    // Meant to be logged after a failed write as well.
    logger->info(QStringLiteral("Установлены настройки по умолчанию"));
    return done;
}

QStringList FrSpf::getParametersDescription()
{
    logger->info(QStringLiteral("Получение описания параметров"));
    isPortReady();
    const auto width = static_cast<int>(deviceInfo.getBandWidth());
    QStringList lines{
        centredLine(QStringLiteral("Параметры устройства"), QLatin1Char('-'), width),
        QString(width, QLatin1Char('-')),
    };
    const QMap<int, utils::TableParameter> table = utils::getParamTableStructure();
    for (auto entry = table.cbegin(); entry != table.cend(); ++entry)
        lines.append(parameterLines(entry.key(), entry.value(), width));
    logger->info(QStringLiteral("Описание параметров получено"));
    return lines;
}

QStringList FrSpf::parameterLines(
    int parameterNumber, const utils::TableParameter& parameter, int width) const
{
    const auto lineOf = [this, parameterNumber, width](int row, const char* caption) {
        const QString value = command->getParameter(parameterNumber, row).trimmed();
        const QString heading = QStringLiteral("%1.%2 ").arg(parameterNumber).arg(row);
        return stringutils::wrappedString(heading + QString::fromUtf8(caption), value, width);
    };
    if (parameter.getType() != utils::DataType::Array)
        return lineOf(0, parameter.getDescription());

    const QString heading = QStringLiteral("%1. ").arg(parameterNumber);
    QStringList lines = stringutils::wrappedString(
        heading + QString::fromUtf8(parameter.getDescription()), QString(), width);
    const QMap<int, utils::TableParameter> rows = parameter.getSubParams();
    for (auto row = rows.cbegin(); row != rows.cend(); ++row)
        lines.append(lineOf(row.key(), row.value().getDescription()));
    return lines;
}

bool FrSpf::programLines(unsigned short parameter, const QString& message, const QList<QString>& lines)
{
    logger->info(message);
    QList<FrParameter> parameters;
    for (const QString& line : lines) {
        const auto row = static_cast<unsigned short>(parameters.size());
        parameters.append({protocol::parameterTable, row, parameter, line});
    }
    const bool done = setParams(parameters);
    // Meant to be logged whatever came out of it.
    logger->info(QStringLiteral("Программирование завершено"));
    return done;
}

bool FrSpf::setCliche(const QList<QString>& lines)
{
    return programLines(
        protocol::ClicheLinesParameter, QStringLiteral("Программирование строк клише"), lines);
}

bool FrSpf::setTail(const QList<QString>& lines)
{
    return programLines(
        protocol::TailLinesParameter, QStringLiteral("Программирование строк рекламного текста"), lines);
}

bool FrSpf::setGraphicCliche(const QString& fileName)
{
    logger->info(QStringLiteral("Программирование графического клише"));
    isPortReady();
    QImage image = loadHeaderImage(fileName, *logger);
    if (image.isNull())
        return false;
    if (image.size() != logoArea.size())
        image = image.copy(logoArea);
    try {
        command->setLogo(toBmpFile(image));
    } catch (const FrCommandException& exception) {
        logger->error(QString::fromUtf8(exception.what()));
        return false;
    }
    logDone();
    return true;
}

void FrSpf::clearGraphicCliche()
{
    logger->info(QStringLiteral("Очистка графического клише"));
    isPortReady();
    command->clearLogo();
    logDone();
}

} // namespace spfhex
