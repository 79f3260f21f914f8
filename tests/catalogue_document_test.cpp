#include "app/workspace.h"
#include "support.h"

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::ListItem;

namespace {

using Contents = std::vector<ListItem::Contents>;

Contents contentsOf(const CatalogueDocument& document)
{
    Contents all;
    for (int i = 0; i < document.items().count(); ++i) {
        EXPECT_EQ(document.items().positionOf(document.items().at(i)), i);
        EXPECT_EQ(document.items().find(document.items().at(i).key()), &document.items().at(i));
        all.push_back(document.items().at(i).contents());
    }
    return all;
}

Contents byKey(Contents all)
{
    std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
    return all;
}

/// The fields of a record, of which only the first three are told.
QStringList record(const CatalogueDocument& document, const QStringList& first)
{
    QStringList fields = first;
    while (fields.size() < static_cast<qsizetype>(document.kind().fields.size()))
        fields.append(QString());
    return fields;
}

/// An edit of every kind, also one that fails half-way.
void editAtRandom(CatalogueDocument& document, std::mt19937& engine)
{
    const auto below = [&](int bound) { return static_cast<int>(engine() % unsigned(bound)); };
    const auto name = [&] { return u"N%1"_s.arg(below(12)); };
    const auto fields = [&] {
        QStringList all = record(document, {name(), QString::number(below(3)), u"x"_s});
        const auto image = static_cast<qsizetype>(document.kind().imageField());
        if (below(3) == 0)
            all[image] = below(2) == 0 ? u"ini\\a.gif"_s : u"ini\\nada.gif"_s;
        return all;
    };
    const int count = document.items().count();
    const QString key = count == 0 ? name() : document.items().at(below(count)).key();
    try {
        switch (below(3)) {
        case 0:
            document.add(fields());
            break;
        case 1:
            document.change(key, fields());
            break;
        default:
            document.remove(key);
        }
    } catch (const platform::Error&) {
    }
}

/// The sorts that a walk makes.
enum class Sorts { Never, Before, Between };

void walk(CatalogueDocument& document, std::mt19937& engine, Sorts sorts)
{
    const auto sort = [&] { document.model().sortByColumn(static_cast<int>(engine() % 3)); };
    if (sorts == Sorts::Before)
        sort();
    std::vector<Contents> states{contentsOf(document)};
    for (int i = 0; i < 20; ++i) {
        editAtRandom(document, engine);
        Contents now = contentsOf(document);
        if (now != states.back())
            states.push_back(std::move(now));
        if (sorts == Sorts::Between && i % 4 == 0) {
            sort();
            states.back() = contentsOf(document);
        }
    }
    std::size_t at = states.size() - 1;
    for (int i = 0; i < 60; ++i) {
        const History& history = document.history();
        ASSERT_EQ(history.canUndo(), at > 0);
        ASSERT_EQ(history.canRedo(), at + 1 < states.size());
        const bool back = history.canUndo() && (engine() % 2 == 0 || !history.canRedo());
        at += back ? std::size_t(-1) : 1;
        back ? document.undo() : document.redo();
        const Contents now = contentsOf(document);
        if (sorts != Sorts::Between) {
            ASSERT_TRUE(now == states.at(at)) << "step " << i;
            continue;
        }
        ASSERT_TRUE(byKey(now) == byKey(states.at(at))) << "step " << i;
        document.model().sortAgain();
        ASSERT_TRUE(contentsOf(document) == now) << "it was sorted, step " << i;
    }
}

} // namespace

TEST(CatalogueDocument, WalksBackAndForthThroughAnyEdits)
{
    const TempAppFolder app;
    app.write(u"ini/a.gif"_s, onePixelGif());
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 engine(seed);
        Workspace workspace;
        for (CatalogueDocument* const document : workspace.catalogues()) {
            SCOPED_TRACE(document->kind().file.toStdString() + ' ' + std::to_string(seed));
            for (int i = 0; i < 5; ++i) {
                const QString name = u"N%1"_s.arg(i * 7 % 5);
                ListItem& item = document->model().add(document->kind().itemKey(name, {}), name);
                if (i > 0) // a file that was read in part leaves an item without its fields
                    item.setSubItem(document->kind().fields[1].key, {});
            }
            walk(*document, engine, static_cast<Sorts>(seed % 3));
        }
    }
}

TEST(CatalogueDocument, NamesItsStepsAndLeavesOutWhatChangesNothing)
{
    const TempAppFolder app;
    app.write(u"ini/Armas.ini"_s, "Daga;1d4;1d3;;;;;;;Corta\r\nMaza;1d6;;;;;;;;\r\n");
    Workspace workspace;
    CatalogueDocument& armas = workspace.armas;
    armas.load();
    const auto daga = [&](const QString& name, const QString& damage) {
        QStringList fields = record(armas, {name, damage, u"1d3"_s});
        fields.back() = u"Corta"_s;
        return fields;
    };
    const History& history = armas.history();
    armas.change(u"Daga"_s, daga(u"Daga"_s, u"1d4"_s));
    armas.remove(u"Nada"_s);
    armas.model().sortByColumn(1);
    armas.save();
    EXPECT_FALSE(history.canUndo());
    armas.change(u"Daga"_s, daga(u"Puñal"_s, u"1d4"_s));
    EXPECT_EQ(history.undoText(), u"editar «Puñal»"_s);
    armas.add(record(armas, {u"Arco"_s}));
    EXPECT_EQ(history.undoText(), u"añadir «Arco»"_s);
    armas.remove(u"Maza"_s);
    EXPECT_EQ(history.undoText(), u"eliminar «Maza»"_s);
    armas.undo();
    EXPECT_EQ(history.redoText(), u"eliminar «Maza»"_s);
    EXPECT_EQ(armas.items().find(u"Maza"_s)->subItem(u"dp"_s), u"1d6"_s);

    // What fails changes nothing, or what it has done already is a step.
    expectError([&] { armas.change(u"Daga"_s, daga(u"Daga"_s, {})); }, ErrorNumber::NoSuchKey,
                {u"«Daga»"_s});
    expectError([&] { armas.add(daga(u"Maza"_s, {})); }, ErrorNumber::DuplicateKey, {u"«Maza»"_s});
    EXPECT_EQ(history.redoText(), u"eliminar «Maza»"_s);
    expectError([&] { armas.change(u"Puñal"_s, daga(u"Maza"_s, u"9"_s)); },
                ErrorNumber::DuplicateKey, {u"«Maza»"_s});
    EXPECT_EQ(armas.items().find(u"Puñal"_s)->text(), u"Maza"_s);
    EXPECT_EQ(armas.items().find(u"Puñal"_s)->subItem(u"dp"_s), u"9"_s);
    armas.undo();
    EXPECT_EQ(armas.items().find(u"Puñal"_s)->text(), u"Puñal"_s);
    armas.load();
    EXPECT_FALSE(history.canUndo() || history.canRedo());
    EXPECT_EQ(armas.items().count(), 2);
}

TEST(CatalogueDocument, TheOldestStepsGoWhenTheHistoryIsFull)
{
    Workspace workspace;
    CatalogueDocument& equipo = workspace.equipo;
    const auto fields = [&](int i) {
        return record(equipo, {u"Saco"_s, QString::number(i), QString(4'000'000, u'x')});
    };
    equipo.add(fields(0));
    for (int i = 1; i <= 12; ++i) // 8 MB each
        equipo.change(u"Saco"_s, fields(i));
    int steps = 0;
    for (; equipo.history().canUndo(); equipo.undo())
        ++steps;
    EXPECT_GE(steps, 6);
    EXPECT_LE(steps, 8);
    EXPECT_EQ(equipo.items().at(0).subItem(u"magico"_s), QString::number(12 - steps));
    while (equipo.history().canRedo())
        equipo.redo();
    EXPECT_EQ(equipo.items().at(0).subItem(u"magico"_s), u"12"_s);
}
