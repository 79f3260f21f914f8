// Prints how the terrain tiles of art/ differ, so that whoever draws one sees what it does to the
// maps: first each tile, then each pair that must be told apart.
//
//   kestrune-contrast ROOT   (ROOT is the top of the source tree); fails when a pair is too alike
#include "contrast.h"

#include <algorithm>
#include <iomanip>
#include <iostream>

namespace fs = std::filesystem;
using namespace art;

namespace {

/// What a tile shows to each kind of sight, in the order of `sights`.
using Looks = std::array<TileLook, sights.size()>;

constexpr std::array sightNames{"full sight", "deuteranopia", "protanopia", "grey"};
static_assert(sightNames.size() == sights.size());

std::map<std::string, Looks> readTiles(const fs::path& root)
{
    const Palette palette = readPalette(root / "art/palettes/tiles.txt");
    std::map<std::string, Looks> tiles;
    for (const fs::directory_entry& entry : fs::directory_iterator(root / "art/tiles")) {
        if (entry.path().extension() != ".pix" || entry.path().stem() == "mascara")
            continue;
        const IndexedPicture picture = readPix(entry.path(), palette);
        std::vector<Rgb> pixels;
        for (const std::uint8_t pixel : picture.pixels) {
            if (pixel != transparentIndex)
                pixels.push_back(picture.colours[pixel]);
        }
        std::ranges::transform(sights, tiles[entry.path().stem().string()].begin(),
                               [&](Sight sight) { return lookAt(pixels, sight); });
    }
    return tiles;
}

void printTiles(const std::map<std::string, Looks>& tiles)
{
    std::cout << "tile          L*     a*     b*  ground L*  pattern (share of pixels)\n";
    for (const auto& [name, looks] : tiles) {
        const TileLook& look = looks.front();
        std::cout << std::left << std::setw(10) << name << std::right << std::setw(6)
                  << look.mean.lightness << std::setw(7) << look.mean.a << std::setw(7)
                  << look.mean.b << std::setw(11) << look.groundLightness << std::setw(8)
                  << 100 * look.patternShare << " %" << (look.hasPattern() ? "  yes" : "") << '\n';
    }
}

/// Prints the pairs and gives how many are too alike.
int printPairs(const std::map<std::string, Looks>& tiles)
{
    std::vector<std::string> names;
    names.reserve(tiles.size());
    for (const auto& [name, looks] : tiles)
        names.push_back(name);
    std::cout << '\n' << std::setw(22) << ' ';
    for (const char* const name : sightNames)
        std::cout << std::setw(20) << name;
    std::cout << '\n' << std::left << std::setw(22) << "pair" << std::right;
    for (std::size_t i = 0; i < sights.size(); ++i)
        std::cout << "      dL*   dE  pat.";
    std::cout << '\n';
    int tooAlike = 0;
    for (const auto& [one, other] : pairsToTellApart(names)) {
        std::cout << std::left << std::setw(11) << one << std::setw(11) << other << std::right;
        bool apart = true;
        for (std::size_t i = 0; i < sights.size(); ++i) {
            const TileLook& first = tiles.at(one)[i];
            const TileLook& second = tiles.at(other)[i];
            apart &= toldApart(first, second);
            std::cout << std::setw(9) << lightnessDifference(first, second) << std::setw(6)
                      << colourDifference(first, second) << "   "
                      << (first.hasPattern() ? '#' : '-') << (second.hasPattern() ? '#' : '-');
        }
        std::cout << (apart ? "\n" : "  TOO ALIKE\n");
        tooAlike += !apart;
    }
    return tooAlike;
}

} // namespace

int main(int argc, char** argv)
try {
    if (argc != 2) {
        std::cerr << "usage: kestrune-contrast ROOT\n";
        return 2;
    }
    std::cout << std::fixed << std::setprecision(1);
    const auto tiles = readTiles(argv[1]);
    printTiles(tiles);
    const int tooAlike = printPairs(tiles);
    std::cout << '\n' << tooAlike << " pairs too alike\n";
    return tooAlike == 0 && !tiles.empty() ? 0 : 1;
} catch (const std::exception& failure) {
    std::cerr << "kestrune-contrast: " << failure.what() << '\n';
    return 1;
}
