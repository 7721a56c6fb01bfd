#include "answerbuffer.h"
#include "envelope.h"
#include "errorcatalogue.h"
#include "spffrcommand.h"

#include <abstractserialdriver.h>
#include <currenttime.h>
#include <drivertexts.h>
#include <exceptions.h>
#include <log4qt/logger.h>
#include <mockfactory.h>

#include <QDomDocument>
#include <QUuid>

namespace spfxml {

namespace {

constexpr unsigned long portionSize = 200;
constexpr unsigned long answerTimeout = 15000;
// A device that never ends its answer must not eat the memory of the host, nor hold it for ever with answers
// to other requests.
constexpr qsizetype maxBytesARead = qsizetype(64) * 1024 * 1024;
constexpr int outOfPaperCode = 8;

FrCommandException malformedAnswer()
{
    return FrCommandException(drivertexts::badAnswer());
}

} // namespace

QByteArray SpfFrCommand::getUuid() const
{
    return QUuid::createUuid().toString().toUtf8();
}

QByteArray SpfFrCommand::createCommand(
    const QByteArray& requestId, ECommandCode code, const RequestParams& params) const
{
    return envelope::build({m_protocolVersion, requestId,
        MockFactory<CurrentTime>::create()->getCurrentDateTime(), static_cast<int>(code), params.toString()});
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
    qsizetype read = 0;
    bool isComplete = false;
    while (!isComplete) {
        const QByteArray portion = serial->receiveDataAsByteArray(portionSize, answerTimeout);
        read += portion.size();
        isComplete = buffer.append(portion);
        if (!isComplete && read > maxBytesARead)
            throw FrCommandException(drivertexts::exchangeFailed());
    }
    return buffer.trimmed();
}

bool SpfFrCommand::isValidPackage(const QByteArray& data, const QByteArray& requestId) const
{
    return envelope::isWhole(data, requestId);
}

QDomDocument SpfFrCommand::parseAnswer(const QByteArray& answer) const
{
    envelope::Flaw flaw;
    const std::optional<QDomDocument> document = envelope::parse(answer, &flaw);
    if (document)
        return *document;
    logger->error(QStringLiteral("Ответ не является xml документом. Line %1, column %2, %3")
                      .arg(flaw.line)
                      .arg(flaw.column)
                      .arg(flaw.reason));
    logger->error(QString::fromUtf8(answer));
    throw malformedAnswer();
}

void SpfFrCommand::checkForErrors(const QDomDocument& document) const
{
    envelope::BadField badField;
    const std::optional<envelope::Verdict> verdict = envelope::verdict(document, &badField);
    if (!verdict)
        refuseParameter(badField.tag, badField.text);
    if (verdict->isSuccess)
        return;
    const tr::TrList message
        = spf::utils::getErrorMessage(verdict->errorCategory, verdict->errorCode, verdict->errorDescription);
    const QString separator = QStringLiteral(". ");
    logger->error(message.joinRu(separator));
    const QStringList uiTexts = message.toUiList(true);
    const QString text = uiTexts.isEmpty() ? verdict->errorDescription : uiTexts.join(separator);
    if (verdict->errorCode == outOfPaperCode)
        throw FrWaitForPaperException(text);
    throw FrCommandException(text);
}

void SpfFrCommand::refuseParameter(const QString& tag, const QString& text) const
{
    logger->error(QStringLiteral("Некорректный параметр '%1' - %2").arg(tag, text));
    throw malformedAnswer();
}

QDomDocument SpfFrCommand::getResponseData(const QDomDocument& document) const
{
    const QString text = envelope::data(document);
    if (text.isEmpty()) {
        logger->info(QStringLiteral("Ответ пуст"));
        return {};
    }
    const std::optional<QDomDocument> response = envelope::parse(text);
    if (response)
        return *response;
    logger->error(QStringLiteral("Некорректное значение параметра ResponseData: '%1'").arg(text));
    throw malformedAnswer();
}

void SpfFrCommand::logTraceData(const QByteArray& data, bool sending) const
{
    if (!logger->isTraceEnabled())
        return;
    const std::optional<QDomDocument> document = envelope::parse(data);
    const QString text = document ? document->toString(1) : QString::fromUtf8(data);
    logger->trace((sending ? QStringLiteral("Отправка:\n") : QStringLiteral("Получено:\n")) + text);
}

} // namespace spfxml
