#include "answerbuffer.h"
#include "spffrcommand.h"

#include <abstractserialdriver.h>
#include <currenttime.h>
#include <drivertexts.h>
#include <errorcatalogue.h>
#include <exceptions.h>
#include <logger.h>
#include <mockfactory.h>
#include <xmlutils.h>

#include <QDomDocument>
#include <QUuid>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace spfxml {

namespace {

constexpr unsigned long portionSize = 200;
constexpr unsigned long answerTimeout = 15000;
// A device that never ends its answer must not eat the memory of the host.
constexpr qsizetype maxAnswerSize = qsizetype(64) * 1024 * 1024;
// Nor its stack: a tree is walked and freed level by level. No register comes near that depth.
constexpr int deepestElement = 256;
constexpr int outOfPaperCode = 8;

FrCommandException malformedAnswer()
{
    return FrCommandException(drivertexts::badAnswer());
}

template <typename Text>
bool isTooDeep(const Text& text)
{
    // Most answers are too short for it.
    if (text.count(typename Text::value_type('<')) <= deepestElement)
        return false;
    QXmlStreamReader reader(text);
    for (int depth = 0; !reader.atEnd();) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : 0;
        depth -= token == QXmlStreamReader::EndElement ? 1 : 0;
        if (depth > deepestElement)
            return true;
    }
    return false;
}

void writeRequestBody(
    QXmlStreamWriter& writer, const QString& version, const QByteArray& requestId, int commandCode)
{
    const QString time = MockFactory<CurrentTime>::create()->getCurrentDateTime().toString(
        QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    writer.writeStartElement(QStringLiteral("RequestBody"));
    writer.writeTextElement(QStringLiteral("ProtocolLabel"), QStringLiteral("OFDFNARMUKM"));
    writer.writeTextElement(QStringLiteral("ProtocolVersion"), version);
    writer.writeTextElement(QStringLiteral("RequestId"), QString::fromUtf8(requestId));
    writer.writeTextElement(QStringLiteral("msgFFDVer"), QStringLiteral("4"));
    writer.writeTextElement(QStringLiteral("msgContVer"), QStringLiteral("1"));
    writer.writeTextElement(QStringLiteral("DateTime"), time);
    writer.writeTextElement(QStringLiteral("Command"), QString::number(commandCode));
    writer.writeEndElement();
}

} // namespace

QByteArray SpfFrCommand::getUuid() const
{
    return QUuid::createUuid().toString().toUtf8();
}

QByteArray SpfFrCommand::createCommand(
    const QByteArray& requestId, ECommandCode code, const RequestParams& params) const
{
    QByteArray request;
    QXmlStreamWriter writer(&request);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("ArmRequest"));
    writeRequestBody(writer, protocolVersion, requestId, static_cast<int>(code));
    writer.writeStartElement(QStringLiteral("RequestData"));
    // Half a character, as a text cut at its end may have, would stop the writer: a question mark goes out.
    const QString text = params.toString();
    writer.writeCDATA(text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8()));
    writer.writeEndDocument();
    return request;
}

QDomDocument SpfFrCommand::requestData(ECommandCode code, const RequestParams& params, int attempts) const
{
    const QByteArray requestId = getUuid();
    const QByteArray answer = exchange(createCommand(requestId, code, params), requestId, attempts);
    if (!isValidPackage(answer, requestId)) {
        logger->error(drivertexts::exchangeFailed());
        throw FrCommandException(drivertexts::exchangeFailed());
    }
    const QDomDocument document = parseAnswer(answer);
    checkForErrors(document);
    return getResponseData(document);
}

QByteArray SpfFrCommand::exchange(const QByteArray& request, const QByteArray& requestId, int attempts) const
{
    for (int i = 0; i < attempts; ++i) {
        try {
            // The first repetition is not logged and the number is that of all attempts: both are meant.
            if (i >= 2)
                logger->debug(QStringLiteral("Попытка %1").arg(attempts));
            logTraceData(request, true);
            serial->sendData(request);
            const QByteArray answer = receiveAnswer(requestId);
            logTraceData(answer, false);
            return answer;
        } catch (const ComDriverTimeoutException& exception) {
            logger->error(exception.tr().ru());
        } catch (const FrCommandException& exception) {
            logger->error(exception.tr().ru());
            throw FrCommandException(exception);
        }
    }
    return {};
}

QByteArray SpfFrCommand::receiveAnswer(const QByteArray& requestId) const
{
    AnswerBuffer buffer(requestId);
    bool isComplete = false;
    while (!isComplete) {
        isComplete = buffer.append(serial->receiveDataAsByteArray(portionSize, answerTimeout));
        if (!isComplete && buffer.size() > maxAnswerSize)
            throw FrCommandException(drivertexts::exchangeFailed());
    }
    return buffer.trimmed();
}

bool SpfFrCommand::isValidPackage(const QByteArray& data, const QByteArray& requestId) const
{
    return data.contains(AnswerBuffer::endMark()) && data.contains(requestId);
}

QDomDocument SpfFrCommand::parseAnswer(const QByteArray& answer) const
{
    QDomDocument document;
    QString reason = QStringLiteral("nested too deeply");
    int line = 0;
    int column = 0;
    if (isTooDeep(answer) || !document.setContent(answer, &reason, &line, &column)) {
        logger->error(QStringLiteral("Ответ не является xml документом. Line %1, column %2, %3")
                          .arg(line)
                          .arg(column)
                          .arg(reason));
        logger->error(QString::fromUtf8(answer));
        throw malformedAnswer();
    }
    return document;
}

void SpfFrCommand::checkForErrors(const QDomDocument& document) const
{
    const QString resultTag = QStringLiteral("Result");
    const QString result = xmlutils::getValueByTag(document, resultTag, 0);
    if (result.isEmpty())
        refuseParameter(resultTag, result);
    if (result == QLatin1String("0"))
        return;
    const int category = readErrorNumber(document, QStringLiteral("ErrorCategory"));
    const int code = readErrorNumber(document, QStringLiteral("ErrorCode"));
    const QString description = xmlutils::getValueByTag(document, QStringLiteral("ErrorDescription"), 0);
    const tr::TrList message = spf::utils::getErrorMessage(category, code, description);
    const QString separator = QStringLiteral(". ");
    logger->error(message.joinRu(separator));
    const QStringList uiTexts = message.toUiList(true);
    const QString text = uiTexts.isEmpty() ? description : uiTexts.join(separator);
    if (code == outOfPaperCode)
        throw FrWaitForPaperException(text);
    throw FrCommandException(text);
}

int SpfFrCommand::readErrorNumber(const QDomDocument& document, const QString& tag) const
{
    const QString text = xmlutils::getValueByTag(document, tag, 0);
    bool isNumber = false;
    const int errorNumber = text.toInt(&isNumber);
    if (!isNumber)
        refuseParameter(tag, text);
    return errorNumber;
}

void SpfFrCommand::refuseParameter(const QString& tag, const QString& text) const
{
    logger->error(QStringLiteral("Некорректный параметр '%1' - %2").arg(tag, text));
    throw malformedAnswer();
}

QDomDocument SpfFrCommand::getResponseData(const QDomDocument& document) const
{
    const QString text = xmlutils::getValueByTag(document, QStringLiteral("ResponseData"), 0);
    if (text.isEmpty()) {
        logger->info(QStringLiteral("Ответ пуст"));
        return {};
    }
    QDomDocument response;
    if (isTooDeep(text) || !response.setContent(text)) {
        logger->error(QStringLiteral("Некорректное значение параметра ResponseData: '%1'").arg(text));
        throw malformedAnswer();
    }
    return response;
}

void SpfFrCommand::logTraceData(const QByteArray& data, bool sending) const
{
    if (!logger->isTraceEnabled())
        return;
    QDomDocument document;
    const QString text
        = !isTooDeep(data) && document.setContent(data) ? document.toString(1) : QString::fromUtf8(data);
    logger->trace((sending ? QStringLiteral("Отправка:\n") : QStringLiteral("Получено:\n")) + text);
}

} // namespace spfxml
