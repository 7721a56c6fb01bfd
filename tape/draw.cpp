// frspf-draw: draws a page for a program without Qt Gui, which would double the time that the start takes.

#include "tape/drawingprogram.h"
#include "tape/offscreen.h"
#include "tape/pagejson.h"
#include "tape/pagepicture.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

#include <cstdio>
#include <optional>

namespace {

struct Format
{
    const char* name;
    QByteArray (*draw)(const tape::Page& page);
};

constexpr Format formats[] = {{"png", tape::toPng}, {"pdf", tape::toPdf}, {"svg", tape::toSvg}};

const Format* formatOf(const char* name)
{
    for (const Format& format : formats) {
        if (qstrcmp(format.name, name) == 0)
            return &format;
    }
    return nullptr;
}

std::optional<tape::Page> readPage()
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return std::nullopt;
    return tape::pageFromJson(QJsonDocument::fromJson(input.readAll()).object());
}

int wrongUsage()
{
    std::fputs("Usage: frspf-draw png|pdf|svg <PAGE.json >PICTURE\n", stderr);
    return tape::WrongUsage;
}

} // namespace

int main(int argc, char** argv)
{
    const Format* const format = argc == 2 ? formatOf(argv[1]) : nullptr;
    if (format == nullptr)
        return wrongUsage();
    // Of folders that a session on a screen would have.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    const auto application = tape::makeOffscreenApplication(argv);
    const std::optional<tape::Page> page = readPage();
    if (!page)
        return wrongUsage();
    const QByteArray picture = format->draw(*page);
    if (picture.isEmpty())
        return tape::TooLong;
    const auto size = static_cast<std::size_t>(picture.size());
    const bool isWritten
        = std::fwrite(picture.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
    return isWritten ? tape::Drawn : tape::OutputLost;
}
