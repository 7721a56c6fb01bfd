#include "previewcommand.h"

#include "errors.h"
#include "frctltr.h"
#include "judgedreceipt.h"
#include "outputfile.h"
#include "pagedrawer.h"
#include "previewregister.h"
#include "receipttexts.h"
#include "refused.h"
#include "tape/pagetext.h"
#include "textcheck.h"

#include <QJsonArray>

#include <unistd.h>

#include <algorithm>
#include <iterator>

namespace frctl {

namespace {

struct PictureFormat
{
    const char* name;
    QString Options::*file;
};

constexpr PictureFormat pictureFormats[]
    = {{"png", &Options::png}, {"pdf", &Options::pdf}, {"svg", &Options::svg}};

/// Null for text.
const PictureFormat* formatOf(const Options& options)
{
    const auto isWanted
        = [&options](const PictureFormat& format) { return !(options.*format.file).isEmpty(); };
    if (std::count_if(std::begin(pictureFormats), std::end(pictureFormats), isWanted) > 1)
        throw UsageError(tr("preview makes one of --png, --pdf and --svg at a time"));
    const auto* const format = std::find_if(std::begin(pictureFormats), std::end(pictureFormats), isWanted);
    return format == std::end(pictureFormats) ? nullptr : format;
}

Output shown(const tape::Page& page)
{
    const QStringList lines = tape::toText(page);
    return {lines, {{QStringLiteral("lines"), QJsonArray::fromStringList(lines)}}};
}

CheckError refusal(const preview::Refused& refused)
{
    return CheckError(QStringLiteral("ReceiptError"),
        {{receipt::Finding::Error, {}, {}, tr("the register refuses it: ") + refused.why()}});
}

tape::Page issuedPage(const Options& options, const receipt::Receipt& receipt)
{
    try {
        return preview::PreviewRegister({options.connection(), options.receiptProtocol(), options.paperWidth})
            .issued(receipt);
    } catch (const preview::Refused& refused) {
        throw refusal(refused);
    }
}

const QString standardOutput = QStringLiteral("-");

/// Before anything is drawn.
void requireRoomFor(const PictureFormat& format, const Options& options)
{
    if (options.*format.file != standardOutput)
        return;
    if (options.json)
        throw UsageError(
            tr("--json and --%1 - both take the standard output").arg(QLatin1String(format.name)));
    if (::isatty(STDOUT_FILENO) != 0)
        throw UsageError(tr("--%1 -: the standard output is a terminal, for which a picture is none")
                             .arg(QLatin1String(format.name)));
}

Output written(const tape::Page& page, const PictureFormat& format, const QString& fileName)
{
    const QByteArray picture = drawnPage(page, QString::fromLatin1(format.name));
    if (fileName == standardOutput)
        return {.bytes = picture};
    writeWholeFile(fileName, picture);
    return {{tr("receipt drawn: ") + fileName},
        {{QStringLiteral("file"), fileName}, {QStringLiteral("format"), QLatin1String(format.name)}}};
}

} // namespace

Task preparePreview(const Options& options)
{
    const PictureFormat* const format = formatOf(options);
    if (format != nullptr)
        requireRoomFor(*format, options);
    const JudgedReceipt judged = judgedReceipt(oneReceipt(options), options, options.receiptProtocol());
    settleFindings(options, QStringLiteral("ReceiptError"), judged.checked.findings);
    receipt::Receipt receipt = judged.checked.receipt;
    receipt.cashier = receiptCashier(options, judged);
    if (receipt.document.getPrintMode() == CheckPrintNone)
        options.warnings->add({{receipt::Finding::Warning, QStringLiteral("electronically"), {},
            tr("a register prints nothing of it; shown is what it would print")}});
    return alone([options, format, receipt] {
        const tape::Page page = issuedPage(options, receipt);
        return format == nullptr ? shown(page) : written(page, *format, options.*format->file);
    });
}

} // namespace frctl
