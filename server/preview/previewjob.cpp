#include "preview/previewjob.h"

#include "preview/previewstatus.h"

#include "previewregister.h"
#include "receiptcheck.h"
#include "refused.h"
#include "tape/pagejson.h"
#include "tape/pagepicture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>

namespace frserver {

namespace {

/// Above those that programs take for their standard streams.
constexpr int firstOwn = 3;

/// A plugin that prints would be taken for a part of the picture.
int takenOutput()
{
    const int output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, firstOwn);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    return output;
}

bool writeAll(int to, const QByteArray& bytes)
{
    QFile file;
    return file.open(to, QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size();
}

QJsonObject readOrder()
{
    QFile input;
    return input.open(stdin, QIODevice::ReadOnly) ? QJsonDocument::fromJson(input.readAll()).object()
                                                  : QJsonObject();
}

QString textOf(const QJsonObject& order, const char* name)
{
    return order.value(QLatin1String(name)).toString();
}

receipt::Receipt receiptOf(const QJsonObject& order, receipt::Protocol protocol, const QDateTime& time)
{
    const QByteArray body = textOf(order, "receipt").toUtf8();
    receipt::Receipt receipt = receipt::checkedReceipt(body, {protocol, time.date()}).receipt;
    if (!receipt.cashier || receipt.cashier->name.isEmpty()) {
        const QString name = textOf(order, "cashier");
        receipt.cashier
            = FrUser{name.isEmpty() ? QStringLiteral("Кассир") : name, {}, textOf(order, "cashierInn")};
    }
    return receipt;
}

tape::Page pageOf(const QJsonObject& order)
{
    preview::PreviewRegister::Settings settings;
    settings.connection.protocol = textOf(order, "protocol");
    settings.connection.plugins = order.value(QStringLiteral("plugins")).toVariant().toStringList();
    settings.protocol = receipt::protocolNamed(settings.connection.protocol).value_or(receipt::Protocol::Xml);
    settings.time = QDateTime::fromString(textOf(order, "time"), Qt::ISODate);
    return preview::PreviewRegister(settings).issued(receiptOf(order, settings.protocol, settings.time));
}

/// Letters as dots want Qt Gui, for which every start of the service would have to wait: the program that has
/// it takes the place of this one. Comes back when it cannot.
int drawByProgram(const QString& program, const QString& format, const tape::Page& page, int output)
{
    const int input = ::memfd_create("page", 0);
    const QByteArray json = QJsonDocument(tape::toJson(page)).toJson(QJsonDocument::Compact);
    if (input < 0 || !writeAll(input, json) || ::lseek(input, 0, SEEK_SET) != 0)
        return PreviewFailed;
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    const QByteArray path = QFile::encodeName(program);
    ::execl(path.constData(), path.constData(), format.toLatin1().constData(), nullptr);
    std::perror(path.constData());
    return PreviewFailed;
}

int draw(const QJsonObject& order, int output)
{
    const tape::Page page = pageOf(order);
    const QString format = textOf(order, "format");
    if (format != QStringLiteral("svg"))
        return drawByProgram(textOf(order, "drawing"), format, page, output);
    return writeAll(output, tape::toSvg(page)) ? PreviewDrawn : PreviewFailed;
}

} // namespace

int runPreview()
{
    const int output = takenOutput();
    try {
        return draw(readOrder(), output);
    } catch (const preview::Refused& refused) {
        return writeAll(output, refused.what()) ? PreviewRefused : PreviewFailed;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "frserver: a picture: %s\n", error.what());
        return PreviewFailed;
    }
}

} // namespace frserver
