// A weapon catalogue as large as its file can be, against reading and writing the same bytes; and
// filtering it, for the first keystroke and for one of those that follow, against going through its
// texts.
#include "catalogue/catalogue_file.h"
#include "platform/core/app_folder.h"
#include "platform/core/text_file.h"
#include "platform/core/text_filter.h"
#include "ratios.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A folder that holds the catalogue and a picture, in the place of AppFolder.
struct Folder {
    Folder()
    {
        QDir(dir.path()).mkpath(u"ini/pics/armas"_s);
        QFile::copy(QStringLiteral(KESTRUNE_DATA) + u"/ini/pics/armas/daga.gif"_s,
                    dir.filePath(u"ini/pics/armas/daga.gif"_s));
        QByteArray bytes("#Nombre\r\n");
        for (int i = 0; i < maxCatalogueItems; ++i)
            bytes += "Daga " + QByteArray::number(i * 7919 % maxCatalogueItems) +
                     ";1d4;1d3;19-20/x2;Sencilla;Perforante;" + QByteArray::number(i % 97) +
                     " mo;0,5 kg;ini\\pics\\armas\\daga.gif;Cabe en una bota.\r\n";
        platform::writeFileAtomically(path, bytes);
    }

    QTemporaryDir dir;
    QString path = dir.filePath(u"ini/Armas.ini"_s);
    platform::ScopedAppFolder app{dir.path()};
};

void LoadSortSaveWeapons(benchmark::State& state)
{
    const Folder folder;
    for ([[maybe_unused]] const auto iteration : state) {
        Catalogue weapons(armasKind());
        weapons.items.setColumns(weapons.kind.fields);
        loadCatalogue(weapons);
        weapons.items.sortByColumn(6);
        saveCatalogue(weapons);
    }
}

void ReadWriteSameBytes(benchmark::State& state)
{
    const Folder folder;
    for ([[maybe_unused]] const auto iteration : state)
        platform::writeFileAtomically(folder.path,
                                      platform::readFile(folder.path, platform::maxTextFileBytes));
}

/// How many characters a list shows.
qsizetype shownLength(const platform::ListItems& items)
{
    qsizetype length = 0;
    for (int row = 0; row < items.rowCount(); ++row) {
        for (int column = 0; column < items.columnCount(); ++column)
            length += items.data(items.index(row, column), Qt::DisplayRole).toString().size();
    }
    return length;
}

int matches(const platform::ListItems& items, const QString& typed)
{
    const platform::TextFilter filter(typed);
    int count = 0;
    for (int row = 0; row < items.count(); ++row)
        count += filter.matches(items.at(row).searchText());
    return count;
}

/// Loads the weapons outside the time that counts.
void loadFresh(Catalogue& weapons)
{
    weapons.items.setColumns(weapons.kind.fields);
    loadCatalogue(weapons);
}

void ListWeapons(benchmark::State& state)
{
    const Folder folder;
    Catalogue weapons(armasKind());
    loadFresh(weapons);
    qsizetype sum = 0;
    for ([[maybe_unused]] const auto iteration : state)
        sum += shownLength(weapons.items);
    benchmark::DoNotOptimize(sum);
}

void FilterWeaponsFirst(benchmark::State& state)
{
    const Folder folder;
    int found = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        state.PauseTiming();
        auto weapons = std::make_unique<Catalogue>(armasKind());
        loadFresh(*weapons);
        state.ResumeTiming();
        found += matches(weapons->items, u"d"_s);
        state.PauseTiming();
        weapons.reset();
        state.ResumeTiming();
    }
    benchmark::DoNotOptimize(found);
}

void FilterWeapons(benchmark::State& state)
{
    const Folder folder;
    Catalogue weapons(armasKind());
    loadFresh(weapons);
    int found = matches(weapons.items, u"d"_s);
    for ([[maybe_unused]] const auto iteration : state)
        found += matches(weapons.items, u"bota perforante dága"_s);
    benchmark::DoNotOptimize(found);
}

BENCHMARK(ListWeapons)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(FilterWeaponsFirst)->Unit(benchmark::kMillisecond)->Repetitions(3);
BENCHMARK(FilterWeapons)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(ReadWriteSameBytes)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(LoadSortSaveWeapons)->Unit(benchmark::kMillisecond)->Repetitions(3);

[[maybe_unused]] const bool ratioAdded =
    addRatio({"LoadSortSaveWeapons", "ReadWriteSameBytes", 100}) &&
    addRatio({"FilterWeaponsFirst", "ListWeapons", 5}) &&
    addRatio({"FilterWeapons", "ListWeapons", 1});

} // namespace
