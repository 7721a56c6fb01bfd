#include "tape/offscreen.h"
#include "tape/pagedrawing.h"
#include "tape/pagepicture.h"

#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using tape::Attribute;
using tape::Code;
using tape::CodeCaption;
using tape::Page;
using tape::Symbology;
using tape::TextLine;

namespace {

const tape::Picture logo{QStringLiteral("ЛОГОТИП"), 18, 4, QByteArray::fromHex("ffffc0aaaa80555540c000c0")};

/// Each kind of line once, and each attribute.
const Page everything{44,
    {TextLine::of("ООО \"РОМАШКА\"  касса № 1 Ё й ╔═╗"), TextLine(), logo,
        TextLine::of("Хлеб", Attribute::Bold),
        TextLine::of("ИТОГ 100.00", Attribute::DoubleWidth | Attribute::DoubleHeight),
        TextLine::of("двадцать четыре знака и ещё", Attribute::DoubleWidth),
        TextLine{{{"НАЛИЧНЫМИ ", {}}, {"100.00", Attribute::DoubleHeight}, {" руб.", Attribute::Small}}},
        TextLine::of("  инверсия  ", Attribute::Inverse), TextLine::of(QString(64, 'w'), Attribute::Small),
        Code{Symbology::Ean13, "460123456789", -1, 2, 40, CodeCaption::Both}, tape::Cut(),
        Code{Symbology::Other, "12345", 12}, Code{Symbology::Qr, "t=20240301T0900&s=100.00"}}};
const Page wide{48,
    {TextLine::of(QString(24, u'Ж') + QString(24, '8')),
        TextLine::of(QString(24, 'W'), Attribute::DoubleWidth)}};

QImage drawn(const Page& page)
{
    return QImage::fromData(tape::toPng(page));
}

/// The black of an SVG on white paper.
QImage blackOf(const QByteArray& svg)
{
    QImage image(640, 640, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    static const QRegularExpression box("M(\\d+) (\\d+)h(\\d+)v(\\d+)h-\\3z");
    for (const QRegularExpressionMatch& match : box.globalMatch(QString::fromUtf8(svg)))
        painter.fillRect(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt(),
            match.captured(4).toInt(), Qt::black);
    return image;
}

/// What a scanner reads.
QByteArray readBack(const QImage& picture)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("code.png");
    EXPECT_TRUE(picture.save(file));
    QProcess scanner;
    scanner.start("zbarimg", {"-q", "-Supca.enable", "-Supce.enable", file});
    EXPECT_TRUE(scanner.waitForFinished()) << scanner.errorString().toStdString();
    return scanner.readAllStandardOutput();
}

/// Letters look a little different with each version of the font's library: averaged over four by four dots
/// little remains of that.
QImage blurred(const QImage& image)
{
    return image.convertToFormat(QImage::Format_Grayscale8)
        .scaled(image.size() / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

int greatestDifference(const QImage& given, const QImage& expected)
{
    if (given.size() != expected.size())
        return 256;
    const QImage one = blurred(given);
    const QImage other = blurred(expected);
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            greatest = std::max(greatest, std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))));
    }
    return greatest;
}

class TapePicture : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        static char name[] = "tape_picture_test";
        static char* arguments[]{name, nullptr};
        application = tape::makeOffscreenApplication(arguments);
    }
    static void TearDownTestSuite() { application.reset(); }

    static inline std::unique_ptr<QGuiApplication> application;
};

TEST_F(TapePicture, CodesAreReadBackByAScanner)
{
    const QString tracking(25, '7');
    const QPair<Code, const char*> cases[]{
        {{Symbology::UpcA, "01234567890"}, "UPC-A:012345678905\n"},
        {{Symbology::UpcE, "01234565"}, "UPC-E:01234565\n"},
        {{Symbology::Ean13, "460123456789"}, "EAN-13:4601234567893\n"},
        {{Symbology::Ean13, "4601234567893", -1, 3, 30, CodeCaption::Both}, "EAN-13:4601234567893\n"},
        {{Symbology::Ean8, "4601234"}, "EAN-8:46012340\n"},
        {{Symbology::Ean8, "96385074"}, "EAN-8:96385074\n"},
        {{Symbology::Code39, "ABC-12"}, "CODE-39:ABC-12\n"},
        {{Symbology::Itf, "12345678"}, "I2/5:12345678\n"},
        {{Symbology::Codabar, "A12345B"}, "Codabar:A12345B\n"},
        {{Symbology::Code93, "ABC-12"}, "CODE-93:ABC-12\n"},
        {{Symbology::Code128, "Order 42/b", -1, 3}, "CODE-128:Order 42/b\n"},
        {{Symbology::Code128, tracking + tracking},
            "CODE-128:77777777777777777777777777777777777777777777777777\n"},
        {{Symbology::Qr, "t=20240301T0900&s=100.00&fn=9999078900001234&i=1&fp=1&n=1"},
            "QR-Code:t=20240301T0900&s=100.00&fn=9999078900001234&i=1&fp=1&n=1\n"},
        {{Symbology::Qr, "Чек № 7", -1, 3}, "QR-Code:Чек № 7\n"},
    };
    for (const auto& [code, read] : cases)
        EXPECT_EQ(readBack(drawn({44, {TextLine::of("above"), code}})), read) << read;
}

TEST_F(TapePicture, CodesThatCannotBeAreFramesWithTheirData)
{
    const Code codes[]{{Symbology::Ean13, "4601234567890"}, {Symbology::Ean13, "1234567"},
        {Symbology::Ean8, "460123456789"}, {Symbology::Ean8, "96385075"}, {Symbology::Code39, "Хлеб"},
        {Symbology::Codabar, "12345"}, {Symbology::Code128, QString(200, 'x')}, {Symbology::Qr, ""},
        {Symbology::Qr, QString(3000, 'x')}, {Symbology::Other, "12345", 12}};
    for (const Code& code : codes) {
        const tape::Drawing drawing = tape::drawingOf({44, {code}});
        EXPECT_TRUE(drawing.black.isEmpty()) << code.data.toStdString();
        ASSERT_GE(drawing.texts.size(), 3) << code.data.toStdString();
        EXPECT_TRUE(drawing.texts.at(0).text.contains('[' + code.title() + ']'));
        EXPECT_TRUE(drawing.texts.at(1).text.contains(code.data.left(40)));
    }
}

TEST_F(TapePicture, NothingStandsBesideThePaper)
{
    Page page = everything;
    page.lines += {TextLine::of(QString(500, 'x')), TextLine::of(QString(50, 'x'), Attribute::DoubleWidth),
        tape::Picture{"", 4096, 1, QByteArray(512, '\xff')}, Code{Symbology::Qr, QString(800, 'x'), -1, 50}};
    const tape::Drawing drawing = tape::drawingOf(page);
    const QRect paper({}, drawing.size);
    for (const QRect& black : drawing.black)
        EXPECT_TRUE(paper.contains(black)) << black.x() << ' ' << black.y() << ' ' << black.width();
    for (const tape::DrawnText& drawn : drawing.texts)
        EXPECT_TRUE(QRectF(paper).contains(drawn.box)) << drawn.text.toStdString();
}

/// FRSPF_RENEW_GOLDEN=1 in the environment makes them anew: look at them before they are committed.
TEST_F(TapePicture, LooksAsItDid)
{
    constexpr int tolerance = 64;
    const QPair<Page, const char*> pages[]{{everything, "everything.png"}, {wide, "wide.png"}};
    for (const auto& [page, fileName] : pages) {
        const QString golden = QStringLiteral(FRSPF_GOLDEN) + '/' + fileName;
        if (qEnvironmentVariableIsSet("FRSPF_RENEW_GOLDEN")) {
            ASSERT_TRUE(drawn(page).save(golden));
        }
        EXPECT_LE(greatestDifference(drawn(page), QImage(golden)), tolerance) << fileName;
        for (qsizetype line = 0; line < page.lines.size(); ++line) {
            Page changed = page;
            if (auto* const text = std::get_if<TextLine>(&changed.lines[line]);
                text && !text->cells.isEmpty())
                text->cells.last().attributes ^= tape::Attributes(Attribute::DoubleHeight);
            else
                changed.lines.removeAt(line);
            EXPECT_GT(greatestDifference(drawn(changed), QImage(golden)), tolerance) << line;
        }
    }
}

TEST_F(TapePicture, SvgHasTheTextAndTheCodes)
{
    const QByteArray svg = tape::toSvg(
        {44, {TextLine::of("a<b&\"c\x1d"), TextLine::of("  ИТОГ  1.00 "), everything.lines.last()}});
    QXmlStreamReader reader(svg);
    QStringList texts;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QStringLiteral("text"))
            texts.append(reader.readElementText());
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_EQ(texts, QStringList({QStringLiteral("a<b&\"c\uFFFD"), "ИТОГ  1.00"}));
    EXPECT_EQ(readBack(blackOf(svg)), "QR-Code:t=20240301T0900&s=100.00\n");
}

TEST_F(TapePicture, PaperIsAsLongAsThePage)
{
    Page longPage{44, QList<tape::Line>(1400, TextLine::of("x"))};
    EXPECT_EQ(tape::toPng(longPage), QByteArray());
    longPage.lines.resize(10);
    EXPECT_EQ(drawn(longPage).size(), QSize(640, 12 * 24));
    const QByteArray pdf = tape::toPdf(longPage);
    // In points: 80 by 36 mm.
    EXPECT_TRUE(pdf.contains("MediaBox [0 0 227.000000 102.000000]"));
    EXPECT_TRUE(pdf.contains("DejaVuSansMono"));
}

} // namespace
