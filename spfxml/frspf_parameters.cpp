// Settings, header lines and header picture.

#include "frspf.h"
#include "names.h"
#include "parametercatalogue.h"

#include <centredline.h>
#include <frparameter.h>
#include <headerimage.h>
#include <stringutils.h>

#include <QRegularExpression>

namespace spfxml {

namespace {

constexpr int maxClicheLines = 4;
constexpr int minLogoHeight = 50;
constexpr int maxLogoHeight = 100;
constexpr int maxLogoWidth = 575;

SpfFrCommand::ParameterMap singleParameter(const names::setting::Path& path, const QString& value)
{
    return {{path.section, {{path.subsection, {{path.parameter, value}}}}}};
}

QImage fittedLogo(const QImage& image)
{
    const QSize size(qMin(image.width(), maxLogoWidth), qBound(minLogoHeight, image.height(), maxLogoHeight));
    // The smooth scaling leaves shades of grey, and the picture is meant not to be made black and white
    // again.
    return size == image.size() ? image : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

bool FrSpf::setParams(const QList<FrParameter>& parameters)
{
    logger->info(QStringLiteral("Программирование параметров"));
    // Meant to be neither anchored nor wider: a name with a hyphen does not match, a value ends at a line
    // feed.
    const QRegularExpression path(QStringLiteral("(\\w+)\\.(\\w+)\\.(\\w+)\\.(.*)"));
    SpfFrCommand::ParameterMap values;
    for (const FrParameter& parameter : parameters) {
        const QRegularExpressionMatch match = path.match(parameter.getValue());
        if (!match.hasMatch()) {
            logger->error(QStringLiteral("Некорректное значение параметра '%1'").arg(parameter.getValue()));
            return false;
        }
        values[match.captured(1)][match.captured(2)][match.captured(3)] = match.captured(4);
    }
    return programParameters([this, &values] { command->setParameters(values); });
}

bool FrSpf::setDefaults()
{
    return withLoggedFailure<BasicException>([this] {
        logger->info(QStringLiteral("Программирование настроек ФР по умолчанию"));
        isPortReady();
        // Without it the device leaves the totals of the fiscal drive out of its counters.
        command->setParameters(singleParameter(names::setting::cumulativeCounters, QStringLiteral("true")));
        logger->info(QStringLiteral("Установлены настройки по умолчанию"));
        return true;
    });
}

QStringList FrSpf::getParametersDescription()
{
    logger->info(QStringLiteral("Получение описания параметров"));
    isPortReady();
    const RequestParams settingsTree = command->getParameters();
    const QMap<QString, QString> sectionTexts = spf::utils::getSectionsDescription();
    const QMap<QString, QString> subsectionTexts = spf::utils::getSubsectionsDescription();
    const QMap<QString, QString> parameterTexts = spf::utils::getParametersDescription();

    const auto width = static_cast<int>(deviceInfo.getBandWidth());
    const QLatin1Char fill('-');
    QStringList lines{centredLine(QStringLiteral("Параметры устройства"), fill, width), QString(width, fill)};
    for (const RequestParams& section : settingsTree.getParams()) {
        lines.append(centredLine(sectionTexts.value(section.getName()), fill, width));
        for (const RequestParams& subsection : section.getParams()) {
            lines.append(subsectionTexts.value(subsection.getName()));
            for (const RequestParams& parameter : subsection.getParams()) {
                const QString left = QStringLiteral("* ") + parameterTexts.value(parameter.getName());
                lines.append(stringutils::wrappedString(left, parameter.getFormattedValue(), width));
            }
        }
    }
    logger->info(QStringLiteral("Описание параметров получено"));
    return lines;
}

bool FrSpf::setCliche(const QList<QString>& lines)
{
    writeHeader(
        singleParameter(names::setting::headerLines, lines.mid(0, maxClicheLines).join(QLatin1Char('\n'))));
    return true;
}

bool FrSpf::setGraphicCliche(const QString& fileName)
{
    logger->info(QStringLiteral("Программирование графического клише"));
    const QImage image = loadHeaderImage(fileName, *logger);
    if (image.isNull())
        return false;
    const QByteArray digits = toBmpFile(fittedLogo(image)).toHex();
    writeHeader(singleParameter(names::setting::headerPicture, QString::fromLatin1(digits)));
    logDone();
    return true;
}

// A refusal is logged by the bytes of its message, as that of a receipt is.
void FrSpf::writeHeader(const SpfFrCommand::ParameterMap& values)
{
    try {
        command->setParameters(values);
    } catch (const FrCommandException& exception) {
        logger->error(QString::fromUtf8(exception.what()));
        throw;
    }
}

} // namespace spfxml
