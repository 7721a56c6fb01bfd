#include "previewcommand.h"

#include "errors.h"
#include "frctltr.h"
#include "inputfile.h"
#include "judgedreceipt.h"
#include "outputfile.h"
#include "pagedrawer.h"
#include "previewregister.h"
#include "tape/pagetext.h"
#include "textcheck.h"

#include <QJsonArray>

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

Output written(const tape::Page& page, const PictureFormat& format, const QString& fileName)
{
    writeWholeFile(fileName, drawnPage(page, QString::fromLatin1(format.name)));
    return {{tr("receipt drawn: ") + fileName},
        {{QStringLiteral("file"), fileName}, {QStringLiteral("format"), QLatin1String(format.name)}}};
}

} // namespace

Task preparePreview(const Options& options)
{
    const PictureFormat* const format = formatOf(options);
    const JudgedReceipt judged
        = judgedReceipt(readFile(options.arguments.constFirst()), options, options.receiptProtocol());
    settleFindings(options, QStringLiteral("ReceiptError"), judged.checked.findings);
    receipt::Receipt receipt = judged.checked.receipt;
    receipt.cashier = requiredCashier(options, judged);
    if (receipt.document.getPrintMode() == CheckPrintNone)
        options.warnings->add({{receipt::Finding::Warning, QStringLiteral("electronically"), {},
            tr("a register prints nothing of it; shown is what it would print")}});
    Task task;
    task.alone = [options, format, receipt] {
        const tape::Page page = PreviewRegister(options, options.paperWidth).issued(receipt);
        return format == nullptr ? shown(page) : written(page, *format, options.*format->file);
    };
    return task;
}

} // namespace frctl
