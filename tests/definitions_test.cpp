#include "support.h"
#include "worldmap/definitions.h"

using namespace Qt::StringLiterals;
using platform::ErrorNumber;

namespace {

struct Loaded {
    explicit Loaded(const DefinitionKind& kind) : palette(kind) {}
    void load() { loadDefinitions(palette, pictures, masks); }

    Palette palette;
    PictureCollection pictures;
    PictureCollection masks;
};

} // namespace

TEST(Definitions, ReadsEveryKindOfLine)
{
    const TempAppFolder app;
    app.write(u"ini/pics/a.gif"_s, onePixelGif());
    app.write(u"ini/tiles.ini"_s, "#nombre;...\r\n\r\n"
                                  "T1;ini\\pics\\A.gif;Prado;ini/pics/a.gif;12.5;2;-1,5\r\n"
                                  " #T2;ini\\pics\\a.gif;opaco;;;;\r\n"
                                  "vac\xEDo;;sin imagen;;0;1;2;de m\xE1s");
    Loaded tiles(tilesKind());
    tiles.load();
    ASSERT_EQ(tiles.palette.items.count(), 3);
    const platform::ListItem& meadow = *tiles.palette.items.find(u"T1"_s);
    EXPECT_EQ(meadow.text(), u"Prado"_s);
    EXPECT_EQ(meadow.subItem(u"habitantes"_s), u"12.5"_s);
    EXPECT_EQ(meadow.subItem(u"temperatura"_s), u"-1,5"_s);
    EXPECT_EQ(meadow.icon(), 1);
    EXPECT_NE(tiles.masks.value(u"T1"_s), SIN_MASCARA);
    EXPECT_EQ(tiles.palette.items.at(1).icon(), 2);
    EXPECT_TRUE(tiles.masks.contains(u" #T2"_s));
    EXPECT_EQ(tiles.masks.value(u" #T2"_s), SIN_MASCARA);
    EXPECT_EQ(tiles.palette.items.at(2).icon(), 0);
    EXPECT_FALSE(tiles.pictures.contains(u"vacío"_s));
    EXPECT_FALSE(tiles.masks.contains(u"vacío"_s));
}

TEST(Definitions, PinsAndLocalTilesHaveFourFieldsAndThreeWithoutPicture)
{
    const TempAppFolder app;
    for (const DefinitionKind* const kind : {&pinesKind(), &tilesLocalesKind()}) {
        app.write(u"ini/x.gif"_s, onePixelGif());
        app.write(u"ini/"_s + kind->file, "p1;ini\\x.gif;Hierba;\r\np2;;sin imagen\r\n");
        Loaded local(*kind);
        local.load();
        EXPECT_EQ(local.palette.items.count(), 2);
        EXPECT_EQ(local.pictures.size(), 1);
        EXPECT_EQ(local.palette.items.at(0).subItem(u"imagen"_s), u"ini\\x.gif"_s);
        EXPECT_FALSE(local.palette.items.at(0).hasSubItem(u"costo"_s));
    }
    // A map's file ends its places with the mark.
    app.write(u"ini/pines.ini"_s, "Aldea;;a\r\nAl|dea;;b\r\n");
    expectError([] { Loaded(pinesKind()).load(); }, ErrorNumber::BadName,
                {u"pines.ini"_s, u"línea 2"_s, u"«Al|dea»"_s});
}

TEST(Definitions, AFaultLeavesEverythingAsItWas)
{
    struct Case {
        const char* name;
        QByteArray file;
        ErrorNumber error;
        QStringList fragments;
    };
    const std::vector<Case> cases{{"cut off in a line",
                                   "#x\r\nT1;ini\\a.gif;Prado;;1;2;3\r\nT2;ini\\a.gif;Ma",
                                   ErrorNumber::BadFormat,
                                   {u"línea 3"_s, u"7"_s}},
                                  {"six fields",
                                   "T1;;Prado;;1;2\r\n",
                                   ErrorNumber::BadFormat,
                                   {u"línea 1"_s, u"campos: 6"_s}},
                                  {"name used",
                                   "T1;;a;;1;2;3\r\nT1;;b;;1;2;3\r\n",
                                   ErrorNumber::DuplicateKey,
                                   {u"línea 2"_s, u"«T1»"_s}},
                                  {"picture missing",
                                   "T1;ini\\no.gif;a;;1;2;3\r\n",
                                   ErrorNumber::FileNotFound,
                                   {u"línea 1"_s, u"no.gif"_s}},
                                  {"mask is no picture",
                                   "T1;ini\\a.gif;a;ini\\tiles.ini;1;2;3\r\n",
                                   ErrorNumber::BadPicture,
                                   {u"línea 1"_s, u"GIF"_s}}};
    const TempAppFolder app;
    app.write(u"ini/a.gif"_s, onePixelGif());
    app.write(u"ini/tiles.ini"_s, "V;ini\\a.gif;Viejo;;1;2;3\r\n");
    Loaded tiles(tilesKind());
    tiles.load();
    const auto expectOld = [&] {
        ASSERT_EQ(tiles.palette.items.count(), 1);
        EXPECT_EQ(tiles.palette.items.at(0).text(), u"Viejo"_s);
        EXPECT_EQ(tiles.palette.images.count(), 1);
        EXPECT_TRUE(tiles.pictures.contains(u"V"_s));
        EXPECT_TRUE(tiles.masks.contains(u"V"_s));
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        app.write(u"ini/tiles.ini"_s, c.file);
        expectError([&] { tiles.load(); }, c.error, c.fragments);
        expectOld();
    }
    const TempAppFolder empty;
    expectError([&] { tiles.load(); }, ErrorNumber::FileNotFound, {u"tiles.ini"_s});
    expectOld();
}
