#include "tape/pagedrawing.h"

#include "tape/codemodules.h"
#include "tape/pagetext.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace tape {

namespace {

// The paper, and what the head reaches of it.
constexpr int paperWidth = 640;
constexpr int printedWidth = 576;
constexpr int margin = (paperWidth - printedWidth) / 2;

constexpr int letterHeight = 24;
constexpr int smallLetterHeight = 16;
/// Above and below a code: a scanner wants four modules of white, of the widest.
constexpr int codeGap = 24;

double cellWidth(Attributes attributes, int pageWidth)
{
    return static_cast<double>(printedWidth) / columns(attributes, pageWidth);
}

int cellHeight(Attributes attributes)
{
    const int height = attributes.testFlag(Attribute::Small) ? smallLetterHeight : letterHeight;
    return attributes.testFlag(Attribute::DoubleHeight) ? 2 * height : height;
}

/// Beginning and end, where blanks are nothing but a place; a renderer may swallow them.
DrawnText withoutOuterBlanks(DrawnText drawn)
{
    const double cell = drawn.box.width() / static_cast<double>(drawn.text.size());
    const QString trimmed = drawn.text.trimmed();
    if (trimmed.isEmpty())
        return {};
    drawn.box.translate(cell * static_cast<double>(drawn.text.indexOf(trimmed)), 0);
    drawn.box.setWidth(cell * static_cast<double>(trimmed.size()));
    drawn.text = trimmed;
    return drawn;
}

/// Letters on one row: they stand on a common ground, however high they are.
class Row
{
public:
    double width() const { return m_width; }

    void add(const QString& text, Attributes attributes, double cell)
    {
        const double width = cell * static_cast<double>(text.size());
        m_pieces.append({{{m_width, 0, width, static_cast<double>(cellHeight(attributes))}, text,
            attributes.testFlag(Attribute::Bold), attributes.testFlag(Attribute::Inverse)}});
        m_width += width;
    }

    int height() const
    {
        return std::accumulate(m_pieces.begin(), m_pieces.end(), m_pieces.isEmpty() ? letterHeight : 0,
            [](int height, const DrawnText& piece) { return std::max(height, qRound(piece.box.height())); });
    }

    void draw(Drawing& drawing, int top) const
    {
        for (DrawnText piece : m_pieces) {
            piece.box.translate(margin, top + height() - piece.box.height());
            if (piece.isWhite)
                drawing.black.append(piece.box.toRect());
            piece = withoutOuterBlanks(piece);
            if (!piece.text.isEmpty())
                drawing.texts.append(piece);
        }
    }

private:
    QList<DrawnText> m_pieces;
    double m_width = 0;
};

/// What fits on the rest of the row, but no half of a character.
qsizetype fitting(const QString& text, double room, double cell)
{
    constexpr double rounding = 0.01;
    const auto length = std::min(text.size(), static_cast<qsizetype>(room / cell + rounding));
    const bool isHalved = length > 0 && length < text.size() && text.at(length).isLowSurrogate();
    return isHalved ? length - 1 : length;
}

QList<Row> rowsOf(const TextLine& line, int pageWidth)
{
    QList<Row> rows(1);
    for (const Cells& cells : line.cells) {
        const double cell = cellWidth(cells.attributes, pageWidth);
        for (QString rest = cells.text; !rest.isEmpty();) {
            qsizetype length = fitting(rest, printedWidth - rows.constLast().width(), cell);
            if (length == 0)
                rows.append(Row());
            rows.last().add(rest.first(length), cells.attributes, cell);
            rest = rest.sliced(length);
        }
    }
    return rows;
}

/// Draws line under line.
class Feed
{
public:
    explicit Feed(int pageWidth)
        : m_pageWidth(pageWidth)
    {
    }

    void operator()(const TextLine& line)
    {
        for (const Row& row : rowsOf(line, m_pageWidth)) {
            row.draw(m_drawing, m_top);
            m_top += row.height();
        }
    }

    void operator()(const Picture& picture)
    {
        const int shown = std::min(picture.width, printedWidth);
        const int left = margin + (printedWidth - shown) / 2;
        for (int y = 0; y < picture.height; ++y)
            addDots(picture, y, shown, left);
        m_top += picture.height;
    }

    void operator()(const Code& code)
    {
        const std::optional<CodeModules> modules = modulesOf(code);
        if (!modules || modules->columns > printedWidth)
            return addFrame(code);
        m_top += codeGap;
        addCaption(code, *modules, CodeCaption::Above);
        addModules(code, *modules);
        addCaption(code, *modules, CodeCaption::Below);
        m_top += codeGap;
    }

    void operator()(const Cut&)
    {
        constexpr int dash = 16;
        m_top += letterHeight;
        for (int left = 0; left < paperWidth; left += 2 * dash)
            m_drawing.black.append({left, m_top, dash, 2});
        m_top += letterHeight;
    }

    Drawing finished()
    {
        m_drawing.size = {paperWidth, m_top + letterHeight};
        return m_drawing;
    }

private:
    /// One rectangle for neighbours.
    void addDots(const Picture& picture, int y, int shown, int left)
    {
        const char* const row = picture.rows.constData() + Picture::rowSize(picture.width) * y;
        const auto isBlack = [row](int x) { return ((row[x / 8] >> (7 - x % 8)) & 1) != 0; };
        for (int x = 0; x < shown; ++x) {
            const int from = x;
            while (x < shown && isBlack(x))
                ++x;
            if (x > from)
                m_drawing.black.append({left + from, m_top + y, x - from, 1});
        }
    }

    void addModules(const Code& code, const CodeModules& modules)
    {
        constexpr int usualBar = 2;
        constexpr int usualModule = 5;
        constexpr int usualHeight = 80;
        const bool isBarcode = modules.rows == 1;
        const int wanted = code.moduleWidth > 0 ? code.moduleWidth : isBarcode ? usualBar : usualModule;
        const int side = std::min(wanted, printedWidth / modules.columns);
        const int height = isBarcode ? (code.height > 0 ? code.height : usualHeight) : side;
        const int left = margin + (printedWidth - side * modules.columns) / 2;
        for (const QRect& black : modules.black)
            m_drawing.black.append({left + black.x() * side, m_top + black.y() * height, black.width() * side,
                black.height() * height});
        m_top += modules.rows * height;
    }

    void addCaption(const Code& code, const CodeModules& modules, CodeCaption place)
    {
        if (code.caption != place && code.caption != CodeCaption::Both)
            return;
        const auto blanks = std::max<qsizetype>(0, (m_pageWidth - modules.caption.size()) / 2);
        operator()(TextLine::of(QString(blanks, QLatin1Char(' ')) + modules.caption));
    }

    void addFrame(const Code& code)
    {
        for (const QString& line : toText(code, m_pageWidth))
            operator()(TextLine::of(line));
    }

    const int m_pageWidth;
    Drawing m_drawing;
    int m_top = letterHeight;
};

} // namespace

Drawing drawingOf(const Page& page)
{
    Feed feed(page.width);
    for (const Line& line : page.lines)
        std::visit(feed, line);
    return feed.finished();
}

} // namespace tape
