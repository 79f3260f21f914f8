// A weapon catalogue as large as its file can be, against reading and writing the same bytes.
#include "catalogue/catalogue_file.h"
#include "platform/core/app_folder.h"
#include "platform/core/text_file.h"
#include "ratios.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

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

BENCHMARK(ReadWriteSameBytes)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(LoadSortSaveWeapons)->Unit(benchmark::kMillisecond)->Repetitions(3);

[[maybe_unused]] const bool ratioAdded =
    addRatio({"LoadSortSaveWeapons", "ReadWriteSameBytes", 100});

} // namespace
