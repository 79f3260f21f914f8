#include "catalogue/catalogue_file.h"
#include "support.h"

#include <QDir>
#include <QFile>
#include <array>

using namespace Qt::StringLiterals;
using platform::ErrorNumber;

namespace {

using KindFunction = const CatalogueKind& (*)();
constexpr std::array<KindFunction, 4> allKinds{&armasKind, &armadurasKind, &equipoKind,
                                               &conjurosKind};

QByteArray header(const CatalogueKind& kind)
{
    return kind.headerLine.toLatin1() + "\r\n";
}

/// Texts of an item in file order; missing sub-items as "-".
QStringList recordOf(const Catalogue& catalogue, int position)
{
    const platform::ListItem& item = catalogue.items.at(position);
    QStringList record{item.text()};
    for (std::size_t i = 1; i < catalogue.kind.fields.size(); ++i) {
        const QString& key = catalogue.kind.fields[i].key;
        record.append(item.hasSubItem(key) ? item.subItem(key) : u"-"_s);
    }
    return record;
}

} // namespace

TEST(CatalogueFile, LoadsAndSavesTheSameBytes)
{
    // Free text is kept as it is: blanks, "#" inside, a name that begins with a blank, quotes.
    const QByteArray records = "Espada larga;1d8;1d12;19-20/x2;Marcial;Cortante;15 mo;2 kg;;"
                               "A\xF1"
                               "eja # y \"fiel\"\r\n"
                               " #no es comentario;;;;;;;;;\r\n"
                               "  ;;;;;;;;;  \r\n"
                               "Daga;1d4;1d3;x2;;;;;ini\\PICS\\armas\\Daga.gif;\r\n";
    const TempAppFolder app;
    app.write(u"ini/Pics/Armas/daga.gif"_s, onePixelGif());
    app.write(u"ini/Armas.ini"_s, header(armasKind()) + "\r\n#;comentario\r\n" + records);
    Catalogue armas(armasKind());
    loadCatalogue(armas);
    ASSERT_EQ(armas.items.count(), 4);
    EXPECT_EQ(recordOf(armas, 0).last(), u"Añeja # y \"fiel\""_s);
    EXPECT_EQ(armas.items.at(1).key(), u" #no es comentario"_s);
    EXPECT_EQ(armas.items.at(0).icon(), 0);
    EXPECT_EQ(armas.items.at(3).icon(), 1);
    EXPECT_EQ(armas.pictures.positionOf(u"Daga"_s), 1);

    int advanced = 0;
    saveCatalogue(armas, [&] { ++advanced; });
    EXPECT_EQ(advanced, 4);
    EXPECT_EQ(app.read(u"ini/Armas.ini"_s), header(armasKind()) + records);
    EXPECT_FALSE(QFile::exists(app.path(u"ini/Armas.ini.bak"_s)));

    armas.items.setColumns(armasKind().fields);
    armas.items.sortByColumn(0);
    saveCatalogue(armas);
    EXPECT_TRUE(app.read(u"ini/Armas.ini"_s).endsWith(records.split('\n')[0] + "\n"))
        << "the file follows the order shown";
}

TEST(CatalogueFile, HeadersAloneGiveEmptyListsThatWriteHeadersAlone)
{
    const TempAppFolder app;
    for (const KindFunction kind : allKinds) {
        const QString file = u"ini/"_s + kind().file;
        app.write(file, header(kind()));
        Catalogue catalogue(kind());
        loadCatalogue(catalogue);
        EXPECT_TRUE(catalogue.items.isEmpty());
        saveCatalogue(catalogue);
        EXPECT_EQ(app.read(file), header(kind()));
    }
    EXPECT_EQ(app.read(u"ini/Armaduras.ini"_s).right(9), ";Notas \r\n");
}

TEST(CatalogueFile, SpellsAreKeyedByNameAndCaster)
{
    const TempAppFolder app;
    const QByteArray tail = ";1;No;No;;;;;;;;;;;;\r\n";
    app.write(u"ini/Conjuros.ini"_s,
              "Luz;Mago" + tail + "Luz;Clérigo" + tail + "Luz;Mago" + tail + "Otro;Mago" + tail);
    Catalogue conjuros(conjurosKind());
    expectError([&] { loadCatalogue(conjuros); }, ErrorNumber::DuplicateKey,
                {u"Conjuros.ini"_s, u"línea 3"_s, u"Luz-Mago"_s});
    ASSERT_EQ(conjuros.items.count(), 2) << "what was read before the fault stays, the rest isn't";
    EXPECT_EQ(conjuros.items.at(0).key(), u"Luz-Mago"_s);
    EXPECT_EQ(conjuros.items.at(1).text(), u"Luz"_s);
}

TEST(CatalogueFile, AFaultyRecordKeepsWhatWasAddedBeforeTheFault)
{
    struct Case {
        const char* name;
        QByteArray line;
        ErrorNumber error;
        QString reason;
        int items;
        int subItems;
        int icon;
    };
    const std::vector<Case> cases{
        {"five fields", "Maza;1;2;3;4", ErrorNumber::BadFormat, u"«imagen»"_s, 2, 0, 0},
        {"nine fields", "Maza;1;2;3;4;5;6;7;ini\\a.gif", ErrorNumber::BadFormat, u"«notas»"_s, 2, 8,
         2},
        {"picture missing", "Maza;;;;;;;;ini\\no.gif;", ErrorNumber::FileNotFound, u"no.gif"_s, 2,
         0, 0},
        {"not a picture", "Maza;;;;;;;;ini\\Armas.ini;", ErrorNumber::BadPicture, u"GIF"_s, 2, 0,
         0},
        {"name used", "Daga;;;;;;;;;", ErrorNumber::DuplicateKey, u"«Daga»"_s, 1, 9, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TempAppFolder app;
        app.write(u"ini/a.gif"_s, onePixelGif());
        const QByteArray whole =
            "#x\r\nDaga;;;;;;;;ini\\a.gif;\r\n" + c.line + "\r\nLanza;;;;;;;;;nunca se lee\r\n";
        app.write(u"ini/Armas.ini"_s, whole);
        Catalogue armas(armasKind());
        expectError([&] { loadCatalogue(armas); }, c.error, {u"línea 3"_s, c.reason});
        ASSERT_EQ(armas.items.count(), c.items);
        const int last = c.items - 1;
        EXPECT_EQ(recordOf(armas, last).count(u"-"_s), 9 - c.subItems);
        EXPECT_EQ(armas.items.at(last).icon(), c.icon);

        // The rest of the file is in nobody's memory: saving must not destroy it.
        saveCatalogue(armas);
        EXPECT_EQ(app.read(u"ini/Armas.ini.bak"_s), whole);
        for (const QByteArray& line : app.read(u"ini/Armas.ini"_s).trimmed().split('\n'))
            EXPECT_EQ(line.count(';'), 9) << line.toStdString();
        Catalogue again(armasKind());
        if (c.error == ErrorNumber::BadFormat) {
            loadCatalogue(again);
            EXPECT_EQ(again.items.count(), c.items);
        }
    }
}

TEST(CatalogueFile, FieldsBeyondTheLastAreDropped)
{
    const TempAppFolder app;
    app.write(u"ini/Equipo.ini"_s, "Cuerda;No;1 mo;2 kg;;nota;con punto y coma\n");
    Catalogue equipo(equipoKind());
    loadCatalogue(equipo);
    saveCatalogue(equipo);
    EXPECT_EQ(app.read(u"ini/Equipo.ini"_s),
              header(equipoKind()) + "Cuerda;No;1 mo;2 kg;;nota\r\n");
}

TEST(CatalogueFile, WhatCannotBeWrittenLeavesTheOldFile)
{
    const TempAppFolder app;
    app.write(u"ini/Equipo.ini"_s, "Cuerda;No;1 mo;2 kg;;nota\r\n");
    Catalogue equipo(equipoKind());
    loadCatalogue(equipo);
    equipo.items.at(0).setSubItem(u"notas"_s, u"del río Łaba"_s);
    expectError([&] { saveCatalogue(equipo); }, ErrorNumber::BadCharacter,
                {u"«Cuerda»"_s, u"«Ł»"_s});
    EXPECT_EQ(app.read(u"ini/Equipo.ini"_s), "Cuerda;No;1 mo;2 kg;;nota\r\n");
}

TEST(CatalogueFile, HoldsNoMoreRecordsThanTheFormatAllows)
{
    const TempAppFolder app;
    QByteArray records;
    for (int i = 0; i <= maxCatalogueItems; ++i)
        records += QByteArray::number(i) + ";No;;;;\r\n";
    app.write(u"ini/Equipo.ini"_s, records);
    Catalogue equipo(equipoKind());
    expectError([&] { loadCatalogue(equipo); }, ErrorNumber::TooLarge,
                {u"línea 32768"_s, u"32767"_s});
    EXPECT_EQ(equipo.items.count(), maxCatalogueItems);
}

TEST(CatalogueKinds, ColumnsAgreeWithTheFileFormat)
{
    const std::array<std::size_t, 4> fieldCounts{10, 10, 6, 17};
    const std::array<std::size_t, 4> imageFields{8, 8, 4, 15};
    for (std::size_t i = 0; i < allKinds.size(); ++i) {
        const CatalogueKind& kind = allKinds[i]();
        EXPECT_EQ(kind.fields.size(), fieldCounts[i]);
        EXPECT_EQ(kind.imageField(), imageFields[i]);
        EXPECT_EQ(kind.headerLine.count(u';'), kind.fields.size() - 1);
        EXPECT_EQ(kind.fields.back().key, u"notas"_s);
    }
}
