#include "platform/gdi/image_list.h"
#include "platform/gdi/memory_dc.h"
#include "platform/gdi/picture.h"
#include "support.h"

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::MemoryDC;
using platform::RasterOp;

namespace {

constexpr QRgb colourBits = 0xffffff;

QRgb combined(QRgb dst, QRgb src, RasterOp op)
{
    switch (op) {
    case RasterOp::SRCCOPY:
        return src & colourBits;
    case RasterOp::SRCAND:
        return dst & src & colourBits;
    case RasterOp::SRCPAINT:
        return (dst | src) & colourBits;
    }
    return 0;
}

} // namespace

TEST(MemoryDC, BlitsEveryOperationClippedToBothSurfaces)
{
    struct Case {
        int x, y, w, h, sourceX, sourceY;
    };
    const std::vector<Case> cases{
        {2, 3, 5, 4, 0, 0},  {-3, -2, 9, 9, 1, 1}, {18, 12, 10, 10, 0, 0}, {0, 0, 40, 40, -4, -5},
        {5, 5, 4, 4, 30, 0}, {5, 5, 0, -2, 0, 0},  {-50, 0, 10, 10, 0, 0}, {3, 3, 8, 8, 8, 6}};
    for (const RasterOp op : {RasterOp::SRCCOPY, RasterOp::SRCAND, RasterOp::SRCPAINT}) {
        for (const Case& c : cases) {
            const MemoryDC before = noise(20, 15, 1);
            const MemoryDC source = noise(12, 10, 2);
            MemoryDC after = before;
            after.BitBlt(c.x, c.y, c.w, c.h, source, c.sourceX, c.sourceY, op);
            for (int y = 0; y < 15; ++y) {
                for (int x = 0; x < 20; ++x) {
                    const QPoint from(x - c.x + c.sourceX, y - c.y + c.sourceY);
                    const bool drawn = x >= c.x && x < c.x + c.w && y >= c.y && y < c.y + c.h &&
                                       source.image().rect().contains(from);
                    const QRgb old = before.image().pixel(x, y);
                    const QRgb wanted =
                        drawn ? combined(old, source.image().pixel(from), op) : old & colourBits;
                    ASSERT_EQ(after.image().pixel(x, y) & colourBits, wanted)
                        << x << ',' << y << " op " << static_cast<int>(op);
                }
            }
        }
    }
}

TEST(MemoryDC, MaskBltIsMaskThenPicture)
{
    struct Case {
        QPoint at;
        QSize size;
        QSize picture;
        QSize mask;
    };
    std::vector<Case> cases{{{3, 3}, {9, 9}, {12, 12}, {6, 7}}, {{0, 0}, {9, 9}, {4, 4}, {12, 12}}};
    for (int width = 1; width <= 20; ++width) {
        for (const QPoint at : {QPoint(2, 1), QPoint(-3, -2), QPoint(30 - width / 2, 8)})
            cases.push_back({at, {width, 6}, {20, 10}, {20, 10}});
    }
    for (const Case& c : cases) {
        const MemoryDC picture = noise(c.picture.width(), c.picture.height(), 4);
        const MemoryDC mask = noise(c.mask.width(), c.mask.height(), 5);
        MemoryDC inOne = noise(30, 12, 6);
        MemoryDC inTwo = inOne;
        inOne.MaskBlt(c.at.x(), c.at.y(), c.size.width(), c.size.height(), picture, mask);
        inTwo.BitBlt(c.at.x(), c.at.y(), c.size.width(), c.size.height(), mask, 0, 0,
                     RasterOp::SRCAND);
        inTwo.BitBlt(c.at.x(), c.at.y(), c.size.width(), c.size.height(), picture, 0, 0,
                     RasterOp::SRCPAINT);
        EXPECT_EQ(inOne.image(), inTwo.image()) << c.size.width() << " wide";
    }
}

TEST(MemoryDC, StretchingAveragesTheCoveredArea)
{
    QImage checks(4, 2, QImage::Format_RGB32);
    for (int x = 0; x < 4; ++x) {
        checks.setPixel(x, 0, x < 2 ? qRgb(200, 0, 10) : qRgb(0, 0, 0));
        checks.setPixel(x, 1, x < 2 ? qRgb(100, 0, 20) : qRgb(0, 40, 0));
    }
    MemoryDC target(3, 1);
    target.StretchBlt(0, 0, 2, 1, MemoryDC(checks), 0, 0, 4, 2, RasterOp::SRCCOPY);
    EXPECT_EQ(target.image().pixel(0, 0), qRgb(150, 0, 15));
    EXPECT_EQ(target.image().pixel(1, 0), qRgb(0, 20, 0));
    EXPECT_EQ(target.image().pixel(2, 0), qRgb(0, 0, 0)) << "drew beyond its rectangle";

    // Four pixels into three: each covers one and a third.
    target.StretchBlt(0, 0, 3, 1, MemoryDC(checks), 0, 0, 4, 1, RasterOp::SRCCOPY);
    EXPECT_EQ(qRed(target.image().pixel(0, 0)), 200);
    EXPECT_EQ(qRed(target.image().pixel(1, 0)), 100);
    EXPECT_EQ(qRed(target.image().pixel(2, 0)), 0);

    // A mean over everything, whatever the sizes: no weight is lost.
    const MemoryDC source = noise(37, 23, 5);
    MemoryDC dot(1, 1);
    dot.StretchBlt(0, 0, 1, 1, source, 0, 0, 37, 23, RasterOp::SRCCOPY);
    double sum = 0;
    for (int y = 0; y < 23; ++y) {
        for (int x = 0; x < 37; ++x)
            sum += qGreen(source.image().pixel(x, y));
    }
    EXPECT_EQ(qGreen(dot.image().pixel(0, 0)), qRound(sum / (37 * 23)));
}

TEST(MemoryDC, EqualSizesAreCopiedPixelForPixel)
{
    const MemoryDC source = noise(15, 14, 3);
    MemoryDC target(15, 14);
    target.StretchBlt(0, 0, 15, 14, source, 0, 0, 15, 14, RasterOp::SRCCOPY);
    EXPECT_EQ(target.image(), source.image());
}

TEST(MemoryDC, PenDrawsHardEdgedLines)
{
    MemoryDC dc(12, 8);
    const platform::Pen pen{2, qRgb(60, 30, 20)};
    dc.MoveToEx({2, 4});
    dc.LineTo({9, 4}, pen);
    dc.LineTo({9, 7}, pen);
    int drawn = 0;
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 12; ++x) {
            const QRgb pixel = dc.image().pixel(x, y);
            ASSERT_TRUE(pixel == qRgb(0, 0, 0) || pixel == pen.color) << "a blended pixel";
            drawn += pixel == pen.color ? 1 : 0;
        }
    }
    EXPECT_EQ(dc.image().pixel(5, 4), pen.color);
    EXPECT_EQ(dc.image().pixel(9, 6), pen.color);
    EXPECT_NEAR(drawn, 2 * (7 + 3), 4);
}

TEST(Picture, RefusesWhatIsNotAWholeGif)
{
    const TempAppFolder app;
    const QByteArray gif = onePixelGif();
    app.write(u"bien.gif"_s, gif);
    app.write(u"cola.gif"_s, gif + "trailing bytes do no harm");
    EXPECT_EQ(platform::loadPicture(app.path(u"bien.gif"_s)).size(), QSize(1, 1));
    EXPECT_EQ(platform::loadPicture(app.path(u"cola.gif"_s)).size(), QSize(1, 1));

    // The size that a file says is judged before memory is taken for it.
    const auto saying = [&](QByteArray picture, qsizetype at, const char* size) {
        app.write(u"grande.gif"_s, picture.replace(at, 4, QByteArray::fromHex(size)));
        expectError([&] { platform::loadPicture(app.path(u"grande.gif"_s)); },
                    ErrorNumber::TooLarge, {u"«grande.gif» mide"_s});
    };
    constexpr qsizetype screen = 6;
    saying(gif, screen, "01100110"); // 4097 × 4097
    saying(gif, gif.indexOf(',') + 5, "ffff0101");

    // Cut off anywhere before the end of its pixels, a GIF is no picture.
    const qsizetype endOfPixels = gif.size() - 2;
    for (qsizetype length = 0; length <= endOfPixels; ++length) {
        app.write(u"corto.gif"_s, gif.first(length));
        expectError([&] { platform::loadPicture(app.path(u"corto.gif"_s)); },
                    ErrorNumber::BadPicture, {u"«corto.gif»"_s});
    }
    app.write(u"texto.gif"_s, "Esto no es una imagen");
    expectError([&] { platform::loadPicture(app.path(u"texto.gif"_s)); }, ErrorNumber::BadPicture,
                {u"«texto.gif»"_s});
    expectError([&] { platform::loadPicture(app.path(u"falta.gif"_s)); }, ErrorNumber::FileNotFound,
                {u"«falta.gif»"_s});
}

TEST(Picture, IsShownInItsProportionsAndCrispAtWholeMultiples)
{
    struct Case {
        QSize picture, place;
        qreal scale;
        QSize pixels;
    };
    for (const Case& c :
         {Case{{16, 14}, {32, 32}, 1, {32, 28}}, Case{{16, 14}, {16, 16}, 2, {32, 28}},
          Case{{32, 32}, {16, 16}, 2, {32, 32}}, Case{{40, 10}, {16, 16}, 1, {16, 4}},
          Case{{20, 20}, {32, 32}, 1, {20, 20}}, Case{{10, 10}, {32, 32}, 1.5, {45, 45}},
          Case{{400, 1}, {16, 16}, 1, {16, 1}}}) {
        const QImage picture = noise(c.picture.width(), c.picture.height(), 3).image();
        const QImage shown = platform::pictureInPlace(picture, c.place, c.scale);
        EXPECT_EQ(shown.size(), c.pixels);
        EXPECT_EQ(shown.devicePixelRatio(), c.scale);
        const int times = c.pixels.width() / c.picture.width();
        if (c.picture * times != c.pixels)
            continue;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x)
                ASSERT_EQ(shown.pixel(x, y), picture.pixel(x / times, y / times));
        }
    }
}

TEST(ImageList, CountsPositionsFromOneAndKeepsNoMoreThanAnIconNeeds)
{
    platform::ImageList images;
    const QImage tall = noise(100, 400, 7).image();
    EXPECT_EQ(images.add(u"a"_s, noise(32, 32, 7).image()), 1);
    EXPECT_EQ(images.add(u"b"_s, tall, u"ini/alta.gif"_s), 2);
    EXPECT_EQ(images.positionOf(u"b"_s), 2);
    EXPECT_EQ(images.positionOf(u"c"_s), 0);
    EXPECT_EQ(images.at(1), noise(32, 32, 7).image());
    EXPECT_EQ(images.at(2).size(), QSize(8, 32));
    EXPECT_EQ(images.pathAt(2), u"ini/alta.gif"_s);
    EXPECT_TRUE(images.at(0).isNull());
    EXPECT_TRUE(images.at(3).isNull());
    EXPECT_TRUE(images.pathAt(3).isEmpty());
    expectError([&] { images.add(u"a"_s, tall); }, ErrorNumber::DuplicateKey, {u"«a»"_s});
}
