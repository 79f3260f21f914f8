#include "catalogue/catalogue_file.h"
#include "platform/core/kept_versions.h"
#include "support.h"

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

QList<QStringList> records(const Catalogue& catalogue)
{
    QList<QStringList> all;
    for (int i = 0; i < catalogue.items.count(); ++i)
        all.append(QStringList{catalogue.items.at(i).key()} + recordOf(catalogue, i));
    return all;
}

} // namespace

TEST(CatalogueFile, IsWrittenInTheOrderShownAndReadsBackTheSame)
{
    const TempAppFolder app;
    app.addShippedData();
    // Free text is kept as it is: blanks, "#" inside, a name that begins with a blank, quotes.
    app.write(u"ini/Armas.ini"_s, app.read(u"ini/Armas.ini"_s) +
                                      "A\xF1"
                                      "eja # y \"fiel\";1d8;\t;\xA0;\xB6;;15 mo;2 kg;;y#\r\n"
                                      " #no es comentario;;;;;;;;;\r\n"
                                      "  ;;;;;;;;;  \r\n"
                                      "Otra;;;;;;;;ini\\PICS/armas\\Daga.gif;\r\n");
    for (const KindFunction kind : allKinds) {
        SCOPED_TRACE(kind().file.toStdString());
        const QString file = u"ini/"_s + kind().file;
        const QByteArray bytes = app.read(file);
        Catalogue catalogue(kind());
        loadCatalogue(catalogue);
        EXPECT_GE(catalogue.items.count(), 12);
        const int withoutPicture = kind == &armasKind ? 3 : 0;
        EXPECT_EQ(catalogue.pictures.count(), catalogue.items.count() - withoutPicture);
        int advanced = 0;
        EXPECT_EQ(saveCatalogue(catalogue, [&] { ++advanced; }).records, advanced);
        EXPECT_EQ(advanced, catalogue.items.count());
        EXPECT_TRUE(app.read(file) == bytes);

        catalogue.items.setColumns(kind().fields);
        for (int column = 0; column < static_cast<int>(kind().fields.size()); column += 3) {
            catalogue.items.sortByColumn(column);
            saveCatalogue(catalogue);
            Catalogue again(kind());
            loadCatalogue(again);
            ASSERT_EQ(records(again), records(catalogue)) << "column " << column;
        }
    }
    EXPECT_FALSE(QFile::exists(app.path(u"ini/Armas.ini.bak"_s)));
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

TEST(CatalogueFile, NothingIsLostOfAFileWhoseReadingStopped)
{
    struct Case {
        const char* name;
        QByteArray line;
        ErrorNumber error;
        QString reason;
        int items;
        int subItems;
        int icon;
        QByteArray first = "Daga;;;;;;;;ini\\a.gif;\r\n";
        QByteArray rest = "\r\n\r\n# a mano;\nDaga;1;;;;;;;;otra\rÑ\xF1;;;;;;;;;sin final";
    };
    const std::vector<Case> cases{
        {"five fields", "Maza;1;2;3;4", ErrorNumber::BadFormat, u"«imagen»"_s, 2, 0, 0},
        {"nine fields", "Maza;1;2;3;4;5;6;7;ini\\a.gif", ErrorNumber::BadFormat, u"«notas»"_s, 2, 8,
         2},
        {"picture missing", "Maza;;;;;;;;ini\\no.gif;", ErrorNumber::FileNotFound, u"no.gif"_s, 2,
         0, 0},
        {"not a picture", "Maza;;;;;;;;ini\\Armas.ini;", ErrorNumber::BadPicture, u"GIF"_s, 2, 0,
         0},
        {"name used", "Daga;;;;;;;;;", ErrorNumber::DuplicateKey, u"«Daga»"_s, 1, 9, 1},
        {"last line", "Maza", ErrorNumber::BadFormat, u"«imagen»"_s, 2, 0, 0,
         "Daga;;;;;;;;ini\\a.gif;\r\n", ""},
        {"in UTF-8", "Cañada;1", ErrorNumber::BadFormat, u"«imagen»"_s, 2, 0, 0,
         "Daga;;;;;;;;ini\\a.gif;Añeja\r\n", "\r\ndel río Łaba;;;;;;;;;"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TempAppFolder app;
        app.write(u"ini/a.gif"_s, onePixelGif());
        const QByteArray whole = "#x\r\n" + c.first + c.line + c.rest;
        app.write(u"ini/Armas.ini"_s, whole);
        Catalogue armas(armasKind());
        const auto stops = [&](Catalogue& catalogue) {
            expectError([&] { loadCatalogue(catalogue); }, c.error, {u"línea 3"_s, c.reason});
            ASSERT_EQ(catalogue.items.count(), c.items);
            const int last = c.items - 1;
            EXPECT_EQ(recordOf(catalogue, last).count(u"-"_s), 9 - c.subItems);
            EXPECT_EQ(catalogue.items.at(last).icon(), c.icon);
        };
        stops(armas);
        for (int twice = 0; twice < 2; ++twice) {
            const SavedCatalogue saved = saveCatalogue(armas);
            EXPECT_EQ(saved.records, 1) << "half-read records aren't written";
            ASSERT_EQ(saved.notices.size(), 1);
            EXPECT_TRUE(saved.notices[0].contains(u"Armas.ini.bak»"_s));
            EXPECT_EQ(app.read(u"ini/Armas.ini"_s),
                      header(armasKind()) + c.first + c.line + c.rest);
        }
        EXPECT_EQ(app.read(u"ini/Armas.ini.bak"_s), whole);
        EXPECT_FALSE(QFile::exists(app.path(u"ini/Armas.ini.bak2"_s)));
        Catalogue again(armasKind());
        stops(again);
        EXPECT_EQ(records(again), records(armas));

        // Completed by hand it is a record of its own; its old line is still there to be seen to.
        if (c.subItems == 9)
            continue;
        for (std::size_t i = 1; i < armasKind().fields.size(); ++i)
            armas.items.at(1).setSubItem(armasKind().fields[i].key, u"x"_s);
        EXPECT_EQ(saveCatalogue(armas).records, 2);
        EXPECT_TRUE(app.read(u"ini/Armas.ini"_s).endsWith(";x;x\r\n" + c.line + c.rest));
    }
}

TEST(CatalogueFile, WhatTheReaderWouldRefuseIsNotSaved)
{
    const TempAppFolder app;
    const QByteArray tail = ";1;No;No;;;;;;;;;;;;\r\n";
    const QByteArray whole =
        header(conjurosKind()) + "Luz;Mago" + tail + "Sombra;Mago" + tail + "Luz;Bardo" + tail;
    app.write(u"ini/Conjuros.ini"_s, whole);
    Catalogue conjuros(conjurosKind());
    loadCatalogue(conjuros);
    platform::ListItem& third = conjuros.items.at(2);
    third.setSubItem(u"tipo"_s, u"Mago"_s); // as a refused change of its key leaves it
    expectError([&] { saveCatalogue(conjuros); }, ErrorNumber::DuplicateKey,
                {u"filas 1 («Luz») y 3 («Luz»)"_s, u"«Luz-Mago»"_s});
    third.setSubItem(u"tipo"_s, u"Bardo"_s);
    third.setSubItem(u"notas"_s, u"del río Łaba"_s);
    expectError([&] { saveCatalogue(conjuros); }, ErrorNumber::BadCharacter,
                {u"«Luz»"_s, u"«Ł»"_s});
    EXPECT_EQ(app.read(u"ini/Conjuros.ini"_s), whole);
}

TEST(CatalogueFile, WhatASaveLeavesOutIsToldAndKept)
{
    const TempAppFolder app;
    for (const QByteArray& byHand :
         {QByteArray("Cuerda;No;1 mo;2 kg;;nota;con punto y coma\n"),
          "# mío\n" + header(equipoKind()), header(equipoKind()) + "\r\n"}) {
        app.write(u"ini/Equipo.ini"_s, byHand);
        QStringList remarks;
        Catalogue equipo(equipoKind());
        loadCatalogue(equipo, platform::giveUp,
                      [&](const platform::Error& remark) { remarks.append(remark.description); });
        EXPECT_EQ(remarks.size(), byHand.contains("Cuerda") ? 1 : 0);
        EXPECT_TRUE(remarks.isEmpty() || remarks[0].contains(u"línea 1: sobran datos"_s));
        saveCatalogue(equipo);
        const QByteArray rest = byHand.contains("Cuerda") ? "Cuerda;No;1 mo;2 kg;;nota\r\n" : "";
        EXPECT_EQ(app.read(u"ini/Equipo.ini"_s), header(equipoKind()) + rest);
        QFile kept(platform::keptVersions(app.path(u"ini/Equipo.ini"_s)).at(0).path);
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), byHand);
    }
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
