#include "app/procs.h"
#include "platform/core/file_replacement.h"
#include "platform/core/kept_versions.h"
#include "platform/core/list_items.h"
#include "platform/core/random_source.h"
#include "platform/core/text_codec.h"
#include "platform/core/text_file.h"
#include "platform/core/text_filter.h"
#include "support.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <array>
#include <sys/file.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::ListItem;
using platform::ListItems;

TEST(TextCodec, EveryByteSurvivesBothWays)
{
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all.append(static_cast<char>(byte));
    const QString text = platform::fromWindows1252(all);
    EXPECT_EQ(platform::toWindows1252(text), all);
    EXPECT_EQ(platform::fromWindows1252("S\xED \x80 \x97"), u"Sí € —"_s);
}

TEST(TextCodec, NamesTheFirstCharacterItLacks)
{
    EXPECT_FALSE(platform::firstOutsideWindows1252(u"año «€»"_s));
    EXPECT_EQ(platform::firstOutsideWindows1252(u"a→b"_s), u"→"_s);
    EXPECT_EQ(platform::firstOutsideWindows1252(u"dragón 🐉 rojo"_s), u"🐉"_s);
    expectError([] { platform::toWindows1252(u"río Łódź"_s); }, ErrorNumber::BadCharacter,
                {u"«Ł»"_s});
    // Control characters of the second kind are not the characters of the bytes 0x80 to 0x9F.
    expectError([] { platform::toWindows1252(u"\u0080"_s); }, ErrorNumber::BadCharacter, {});
}

TEST(TextCodec, TakesModernFilesAsUtf8)
{
    struct Case {
        QByteArray bytes;
        QString text;
        bool isUtf8;
    };
    for (const Case& c : {Case{"S\xED", u"Sí"_s, false},
                          {"S\xC3\xAD", u"Sí"_s, true},
                          {"\xEF\xBB\xBFSi", u"Si"_s, true},
                          {"Si", u"Si"_s, false},
                          {"S\xC3\xAD \xED", u"SÃ\u00AD í"_s, false},
                          {"", u""_s, false}}) {
        const auto decoded = platform::decodeText(c.bytes);
        ASSERT_TRUE(decoded);
        EXPECT_EQ(decoded->text, c.text);
        EXPECT_EQ(decoded->isUtf8, c.isUtf8);
    }
    EXPECT_FALSE(platform::decodeText("\xEF\xBB\xBFS\xED"));
    // What is written is read as it was, also where its bytes happen to look modern.
    EXPECT_EQ(platform::encodeText(u"Sí"_s), "S\xED");
    for (const QString& text : {u"Ã±"_s, u"SÂ¶o"_s, u"ï»¿Sí"_s, u"ï»¿Ã±"_s, u"Sí"_s, u""_s})
        EXPECT_EQ(platform::decodeText(platform::encodeText(text)).value().text, text);
}

TEST(TextFile, EndsLinesAtEveryKindOfLineEnd)
{
    const auto lines = [](const QString& text) {
        const std::vector<QString> found = platform::splitLines(text);
        return QStringList(found.begin(), found.end());
    };
    EXPECT_EQ(lines(u"a\r\nb\rc\nd"_s), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(lines(u"a\r\n\r\n"_s), (QStringList{u"a"_s, u""_s}));
    EXPECT_EQ(lines(u"\r\r\n\n"_s), (QStringList{u""_s, u""_s, u""_s}));
    EXPECT_EQ(lines(u""_s), QStringList());
}

TEST(TextFile, ReportsWhatCannotBeRead)
{
    const TempAppFolder app;
    app.write(u"carpeta/x.ini"_s, "abc");
    expectError([&] { platform::readTextFile(app.path(u"falta.ini"_s)); },
                ErrorNumber::FileNotFound, {u"«falta.ini»"_s});
    expectError([&] { platform::readTextFile(app.path(u"carpeta"_s)); },
                ErrorNumber::FileUnreadable, {u"«carpeta»"_s, u"es una carpeta"_s});
    expectError([&] { platform::readFile(app.path(u"carpeta/x.ini"_s), 2); }, ErrorNumber::TooLarge,
                {QDir::toNativeSeparators(u"carpeta/x.ini"_s)});
    QFile::setPermissions(app.path(u"carpeta/x.ini"_s), QFile::WriteOwner);
    const WithoutPrivileges plainUser;
    expectError([&] { platform::readTextFile(app.path(u"carpeta/x.ini"_s)); },
                ErrorNumber::FileUnreadable, {u"permisos"_s});
}

TEST(TextFile, AFailedWriteLeavesTheOldFileWhole)
{
    const TempAppFolder app;
    const QString name = u"datos/f.txt"_s;
    const QString file = app.path(name);
    const QByteArray old(2000, 'o');
    app.write(name, old);
    const auto expectFailure = [&](const QByteArray& bytes, const QString& reason) {
        expectError([&] { platform::writeFileAtomically(file, bytes); },
                    ErrorNumber::FileUnwritable, {u"f.txt"_s, u"No se puede guardar"_s, reason});
        EXPECT_EQ(app.read(name), old);
    };
    // Small enough to stay in a buffer until the very end, and too large for that.
    for (const qsizetype size : {5000, 100'000}) {
        const FullDisk disk(3000);
        expectFailure(QByteArray(size, 'x'), u"espacio libre"_s);
    }
    EXPECT_EQ(QDir(app.path(u"datos"_s)).entryList(QDir::Files | QDir::Hidden),
              QStringList{u"f.txt"_s})
        << "a temporary file was left behind";

    // A folder that takes no new file: the file itself is overwritten, if it may be.
    QFile::setPermissions(file, openFile);
    QFile::setPermissions(app.path(u"datos"_s), readOnlyFolder);
    {
        const WithoutPrivileges plainUser;
        const FullDisk disk(3000);
        expectFailure(QByteArray(5000, 'x'), u"espacio libre"_s);
    }
    QByteArray before = old;
    for (const qsizetype size : {5000, 10}) {
        const WithoutPrivileges plainUser;
        const QStringList told = platform::writeFileAtomically(file, QByteArray(size, 'x'));
        EXPECT_EQ(app.read(name), QByteArray(size, 'x'));
        ASSERT_EQ(told.size(), 1); // it was written in place, after a copy was made
        QFile copy(told[0].section(u'«', 2).section(u'»', 0, 0));
        ASSERT_TRUE(copy.open(QIODevice::ReadOnly)) << told[0].toStdString();
        EXPECT_EQ(copy.readAll(), before);
        copy.remove();
        before = QByteArray(size, 'x');
    }
    QFile::setPermissions(file, readOnlyFile);
    {
        const WithoutPrivileges plainUser;
        expectError([&] { platform::writeFileAtomically(file, "new"); },
                    ErrorNumber::FileUnwritable, {u"permisos"_s});
    }
    QFile::setPermissions(app.path(u"datos"_s), openFolder);
    EXPECT_EQ(app.read(name), QByteArray(10, 'x'));
    QFile::setPermissions(file, openFile);
    platform::writeFileAtomically(file, "new");
    EXPECT_EQ(app.read(name), "new");

    ASSERT_EQ(mkfifo(QFile::encodeName(app.path(u"tubo"_s)).constData(), 0600), 0);
    expectError([&] { platform::writeFileAtomically(app.path(u"tubo"_s), "x"); },
                ErrorNumber::FileUnwritable, {u"no es un archivo"_s});
    expectError([&] { platform::writeFileAtomically(app.path(u"falta/x"_s), "x"); },
                ErrorNumber::FileUnwritable, {u"falta la carpeta «falta»"_s});
    expectError([&] { platform::writeFileAtomically(app.path(QString(300, u'x')), "x"); },
                ErrorNumber::FileUnwritable, {u"demasiado largo"_s});
    expectError([&] { platform::readFile(app.path(u"falta/x.ini"_s), 2); },
                ErrorNumber::FileNotFound, {u"falta la carpeta «falta»"_s});
    ASSERT_TRUE(QFile::link(u"/dev/zero"_s, app.path(u"cero"_s)));
    expectError([&] { platform::readFile(app.path(u"cero"_s), 2); }, ErrorNumber::FileUnreadable,
                {u"no es un archivo"_s});
    QDir().mkpath(app.path(u"carpeta.map"_s));
    expectError([&] { platform::writeFileAtomically(app.path(u"carpeta.map"_s), "x"); },
                ErrorNumber::FileUnwritable, {u"hay una carpeta"_s});
}

TEST(SaveFile, KeepsWhatItReplaces)
{
    const TempAppFolder app;
    const QString path = app.path(u"mapas/Una Isla.map"_s);
    const auto kept = [&] {
        QByteArrayList contents;
        for (const platform::KeptVersion& version : platform::keptVersions(path))
            contents.append(
                app.read(u"respaldo/mapas/Una Isla.map/"_s + QFileInfo(version.path).fileName()));
        return contents;
    };
    app.write(u"mapas/Una Isla.map"_s, "de otro");
    platform::KnownFile known;
    const auto save = [&](const QByteArray& bytes) {
        const platform::Saved saved = platform::saveFile(path, bytes, known);
        EXPECT_EQ(saved.notices, QStringList());
        EXPECT_EQ(app.read(u"mapas/Una Isla.map"_s), bytes);
        EXPECT_TRUE(!saved.other || QFileInfo::exists(saved.other->path));
        return saved.other ? saved.other->text.section(u'«', 0, 0) : QString();
    };
    EXPECT_EQ(save("1"), u"Ya había otro archivo "_s);
    EXPECT_EQ(kept(), QByteArrayList{"de otro"});
    EXPECT_EQ(save("2"), QString()) << "its own, and one was kept just now";
    EXPECT_EQ(kept(), QByteArrayList{"de otro"});
    app.write(u"mapas/Una Isla.map"_s, "de un editor");
    EXPECT_EQ(save("3"), u"Otro programa había cambiado "_s);
    EXPECT_EQ(kept(), (QByteArrayList{"de un editor", "de otro"}));
    known = {path, platform::contentDigest("3"), true};
    save("4");
    EXPECT_EQ(kept().size(), 2);
    known.isWritten = false; // it was read: another program may have written it
    EXPECT_EQ(save("5"), QString());
    EXPECT_EQ(kept().front(), "4");

    // The oldest go first, and what isn't a version stays. The newest one lies in the future.
    app.write(u"respaldo/mapas/Una Isla.map/notas.txt"_s, "x");
    app.write(u"respaldo/mapas/Una Isla.map/2900-01-01 00.00.00.map"_s, "mañana");
    app.write(u"respaldo/mapas/Una Isla.map/9999-12-31 23.59.59.map"_s, "nunca");
    for (int i = 0; i < 12; ++i) {
        app.write(u"mapas/Una Isla.map"_s, QByteArray::number(i));
        save("propio");
    }
    ASSERT_EQ(kept().size(), platform::maxKeptVersions + 1);
    EXPECT_EQ(kept().at(1), "11");
    EXPECT_EQ(kept().back(), "2");
    EXPECT_EQ(app.read(u"respaldo/mapas/Una Isla.map/notas.txt"_s), "x");

    // Unsaved ones have room of their own.
    for (int i = 0; i < 12; ++i)
        platform::keepVersion(path, QByteArray::number(100 + i), true);
    const std::vector<platform::KeptVersion> all = platform::keptVersions(path);
    EXPECT_EQ(all.size(), 2 * platform::maxKeptVersions + 1);
    EXPECT_EQ(std::count_if(all.begin(), all.end(), [](const auto& one) { return one.isUnsaved; }),
              platform::maxKeptVersions);
    EXPECT_EQ(kept().count("111"), 1);
    EXPECT_EQ(kept().count("101"), 0);
    app.write(u"respaldo/mapas/ajeno/notas.txt"_s, "x");
    EXPECT_EQ(platform::filesWithVersions(), QStringList{path});
}

TEST(SaveFile, GoesOnWhereNothingCanBeKept)
{
    const TempAppFolder app;
    app.write(u"mapas/m.map"_s, "viejo");
    app.write(u"respaldo"_s, "un archivo");
    platform::KnownFile known;
    const QStringList told = platform::saveFile(app.path(u"mapas/m.map"_s), "nuevo", known).notices;
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].contains(u"«respaldo»"_s) && told[0].contains(u"m.map"_s));
    EXPECT_EQ(app.read(u"mapas/m.map"_s), "nuevo");
    EXPECT_EQ(known.digest, platform::contentDigest("nuevo"));

    // What a killed run left goes, what another run is writing stays.
    app.write(u"mapas/.kestrune-abc.tmp"_s, "x");
    app.write(u"mapas/.kestrune-def.tmp"_s, "x");
    QFile busy(app.path(u"mapas/.kestrune-def.tmp"_s));
    ASSERT_TRUE(busy.open(QIODevice::ReadWrite));
    ASSERT_EQ(flock(busy.handle(), LOCK_EX), 0);
    platform::removeAbandonedFiles({u"mapas"_s, u"falta"_s});
    EXPECT_EQ(QDir(app.path(u"mapas"_s)).entryList(QDir::Files | QDir::Hidden),
              (QStringList{u".kestrune-def.tmp"_s, u"m.map"_s}));
}

TEST(AppFolder, ForgivesBackslashesAndLetterCase)
{
    const TempAppFolder app;
    app.write(u"Ini/Pics/Árbol.gif"_s, "x");
    app.write(u"Ini/Pics/uno.gif"_s, "x");
    app.write(u"Ini/Pics/UNO.gif"_s, "x");
    EXPECT_EQ(platform::inAppFolder(u"ini\\pics\\árbol.GIF"_s), app.path(u"Ini/Pics/Árbol.gif"_s));
    EXPECT_EQ(platform::inAppFolder(u"ini/pics/uno.gif"_s), app.path(u"Ini/Pics/uno.gif"_s))
        << "a name that is there as written wins";
    EXPECT_EQ(platform::inAppFolder(u"INI\\nuevo.Map"_s), app.path(u"Ini/nuevo.Map"_s));
    EXPECT_EQ(platform::displayPath(app.path(u"Ini/x"_s)), QDir::toNativeSeparators(u"Ini/x"_s));
}

TEST(RandomInRange, GivesEveryValueOfTheRangeAndNoOther)
{
    platform::randomSource().seed(1);
    std::array<int, 5> counts{};
    constexpr int draws = 50'000;
    for (int i = 0; i < draws; ++i) {
        const int n = Procs::RandomInRange(-2, 2);
        ASSERT_TRUE(n >= -2 && n <= 2);
        const int bucket = n + 2;
        ++counts.at(static_cast<std::size_t>(bucket));
        ASSERT_EQ(Procs::RandomInRange(5, 5), 5);
    }
    for (const int count : counts)
        EXPECT_NEAR(count, draws / 5.0, draws / 100.0); // over 10 standard deviations
    const int widest = Procs::RandomInRange(INT32_MIN, INT32_MAX);
    EXPECT_NE(widest, Procs::RandomInRange(INT32_MIN, INT32_MAX));
}

TEST(ErrorReport, HasTheFixedForm)
{
    EXPECT_EQ(Procs::errorReport({ErrorNumber::FileNotFound, u"No está 100 %1"_s}, u"loadArmas"_s,
                                 u"Módulo Procs"_s),
              u"Error 2 (No está 100 %1) in procedure loadArmas of Módulo Procs"_s);
}

namespace {

QStringList texts(const ListItems& items)
{
    QStringList all;
    for (int i = 0; i < items.count(); ++i)
        all.append(items.at(i).text());
    return all;
}

} // namespace

TEST(ListItems, KeepsOrderKeysAndSubItems)
{
    ListItems items;
    const QAbstractItemModelTester tester(&items); // any broken model rule fails the test
    items.setColumns({{u"nombre"_s, u"Nombre"_s, 100}, {u"precio"_s, u"Precio"_s, 50}});
    items.add(u"k1"_s, u"Zeta"_s).setSubItem(u"precio"_s, u"10"_s);
    items.add(u"k2"_s, u"alfa"_s);
    expectError([&] { items.add(u"k1"_s, u"otra"_s); }, ErrorNumber::DuplicateKey, {u"«k1»"_s});
    items.add(u"K1"_s, u"mayúscula"_s); // another key
    EXPECT_EQ(texts(items), (QStringList{u"Zeta"_s, u"alfa"_s, u"mayúscula"_s}));
    EXPECT_EQ(items.find(u"k1"_s)->subItem(u"precio"_s), u"10"_s);
    EXPECT_EQ(items.find(u"k9"_s), nullptr);
    expectError([&] { items.find(u"k2"_s)->subItem(u"precio"_s); }, ErrorNumber::NoSuchKey,
                {u"alfa"_s, u"precio"_s});
    EXPECT_EQ(items.data(items.index(0, 1), Qt::DisplayRole).toString(), u"10"_s);
    EXPECT_EQ(items.data(items.index(1, 1), Qt::DisplayRole).toString(), u""_s);
}

TEST(ListItems, SortsAsTextBySpanishRulesAndKeepsSelection)
{
    ListItems items;
    const QAbstractItemModelTester tester(&items);
    items.setColumns({{u"nombre"_s, u"Nombre"_s, 100}, {u"precio"_s, u"Precio"_s, 50}});
    const QStringList names{u"nube"_s, u"ñandú"_s, u"Árbol"_s, u"zorro"_s, u"oca"_s, u"barro"_s};
    const QStringList prices{u"9"_s, u"10"_s, u"9"_s, u"100"_s, u"2"_s, u"10"_s};
    for (int i = 0; i < names.size(); ++i)
        items.add(names[i], names[i]).setSubItem(u"precio"_s, prices[i]);
    const QPersistentModelIndex pinned = items.index(3, 0);

    items.sortByColumn(0);
    EXPECT_EQ(texts(items),
              (QStringList{u"Árbol"_s, u"barro"_s, u"nube"_s, u"ñandú"_s, u"oca"_s, u"zorro"_s}));
    EXPECT_EQ(pinned.data().toString(), u"zorro"_s);
    items.sortByColumn(1); // as text, equal ones as they stood
    EXPECT_EQ(texts(items),
              (QStringList{u"barro"_s, u"ñandú"_s, u"zorro"_s, u"oca"_s, u"Árbol"_s, u"nube"_s}));
    QSignalSpy changes(&items, &QAbstractItemModel::dataChanged);
    items.find(u"oca"_s)->setIcon(7);
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 3);
}

TEST(TextFilter, FindsEveryWordWhateverItsCaseAndAccents)
{
    ListItems list;
    ListItem& item = list.add(u"clave"_s, u"Árbol An\u0303ejo"_s);
    item.setSubItem(u"peso"_s, u"½ kg\u00A0"_s); // not one of the columns
    item.setSubItem(u"notas"_s, u"uno\ndos"_s);
    QStringList parts; // of the text, and of one another
    for (int i = 0; i < 5000; ++i)
        parts.append(u"arbol"_s.mid(i % 4, 1 + i % 3));
    const std::vector<std::pair<QString, bool>> cases{{{}, true},
                                                      {u" \t\u00A0\n"_s, true},
                                                      {u"\u0301"_s, true},
                                                      {u"arbol"_s, true},
                                                      {u"ÁRB"_s, true},
                                                      {u"A\u0301rbol"_s, true},
                                                      {u"añejo"_s, true},
                                                      {u"anejo arbol"_s, true},
                                                      {u"dos ½ \u00E1 uno"_s, true},
                                                      {u"1⁄2"_s, true},
                                                      {u"unodos"_s, false},
                                                      {u"arbol x"_s, false},
                                                      {u"clave"_s, false},
                                                      {QString(u'\0'), false},
                                                      {QString(10'000, u'a'), false},
                                                      {parts.join(u' '), true}};
    for (const auto& [typed, matches] : cases) {
        SCOPED_TRACE(typed.left(20).toStdString());
        EXPECT_EQ(platform::TextFilter(typed).matches(item.searchText()), matches);
    }
    EXPECT_TRUE(platform::TextFilter(u" \u0301"_s).isEmpty());
    item.setText(u"Roble"_s);
    item.setSubItem(u"notas"_s, u"seco"_s);
    EXPECT_TRUE(platform::TextFilter(u"seco roble"_s).matches(item.searchText()));
}
