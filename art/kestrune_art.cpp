// Turns the editable pictures of art/ (*.pix, plain text) into the GIF files that the program
// reads. The same sources always give the same bytes, so the GIFs can be kept under version
// control and checked against their sources.
//
//   kestrune-art ROOT           writes every GIF (ROOT is the top of the source tree)
//   kestrune-art --check ROOT   writes nothing; fails when a GIF differs from its source
#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// One folder of art/, the folder that receives its GIFs, and the palette of its pictures.
struct PictureSet {
    const char* source;
    const char* target;
    const char* palette;
    bool withMasks; ///< also write NAME_m.gif for every picture with transparent pixels: white
                    ///< where the picture is transparent, else black
};

constexpr std::array pictureSets{
    PictureSet{"art/tiles", "data/ini/pics/tiles", "art/palettes/tiles.txt", false},
    PictureSet{"art/pines", "data/ini/pics/pines", "art/palettes/pines.txt", true},
    PictureSet{"art/tilesLocales", "data/ini/pics/tilesLocales", "art/palettes/tilesLocales.txt",
               true},
    PictureSet{"art/armas", "data/ini/pics/armas", "art/palettes/items.txt", false},
    PictureSet{"art/armaduras", "data/ini/pics/armaduras", "art/palettes/items.txt", false},
    PictureSet{"art/equipo", "data/ini/pics/equipo", "art/palettes/items.txt", false},
    PictureSet{"art/conjuros", "data/ini/pics/conjuros", "art/palettes/items.txt", false},
    PictureSet{"art/ui", "src/app/pictures", "art/palettes/ui.txt", false},
};

constexpr char transparentMark = '.';
constexpr int transparentIndex = 0;
constexpr GifColorType black{0, 0, 0};
constexpr GifColorType white{255, 255, 255};

using Palette = std::map<char, GifColorType>;

/// Colour-indexed pixels, row by row. Index 0 is black and stands for "transparent" when
/// `transparent` is set: a reader that knows no transparency sees the black that masked drawing
/// needs.
struct IndexedPicture {
    int width = 0;
    int height = 0;
    bool transparent = false;
    std::vector<GifColorType> colours;
    std::vector<GifByteType> pixels;
};

std::string readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return file ? text.str() : throw std::runtime_error("cannot read " + path.string());
}

std::vector<std::string> readLines(const fs::path& path)
{
    std::istringstream text(readFile(path));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

/// Reads a palette: lines "c #rrggbb note"; other lines are comments.
Palette readPalette(const fs::path& path)
{
    Palette palette;
    for (const std::string& line : readLines(path)) {
        if (line.size() < 9 || line[1] != ' ' || line[2] != '#')
            continue;
        const unsigned long rgb = std::stoul(line.substr(3, 6), nullptr, 16);
        const GifColorType colour{static_cast<GifByteType>(rgb >> 16),
                                  static_cast<GifByteType>(rgb >> 8 & 0xff),
                                  static_cast<GifByteType>(rgb & 0xff)};
        if (line[0] == transparentMark || !palette.emplace(line[0], colour).second)
            throw std::runtime_error(path.string() + ": mark used twice: " + line);
    }
    return palette;
}

/// Reads a .pix file: rows of equal length, one palette mark a pixel, "." for transparent.
/// Lines that begin with a blank are comments.
IndexedPicture readPix(const fs::path& path, const Palette& palette)
{
    IndexedPicture picture;
    picture.colours.push_back(black);
    std::map<char, GifByteType> indexOf{{transparentMark, transparentIndex}};
    for (const std::string& row : readLines(path)) {
        if (row.empty() || row[0] == ' ')
            continue;
        if (picture.height++ == 0)
            picture.width = static_cast<int>(row.size());
        if (static_cast<int>(row.size()) != picture.width)
            throw std::runtime_error(path.string() + ": row " + std::to_string(picture.height) +
                                     " has " + std::to_string(row.size()) + " pixels, not " +
                                     std::to_string(picture.width));
        for (const char mark : row) {
            const auto known = indexOf.find(mark);
            if (known != indexOf.end()) {
                picture.pixels.push_back(known->second);
                picture.transparent |= mark == transparentMark;
                continue;
            }
            const auto colour = palette.find(mark);
            if (colour == palette.end())
                throw std::runtime_error(path.string() + ": no colour for mark '" + mark + "'");
            const auto index = static_cast<GifByteType>(picture.colours.size());
            indexOf.emplace(mark, index);
            picture.colours.push_back(colour->second);
            picture.pixels.push_back(index);
        }
    }
    if (picture.pixels.empty())
        throw std::runtime_error(path.string() + ": no rows");
    return picture;
}

IndexedPicture maskOf(const IndexedPicture& picture)
{
    IndexedPicture mask{picture.width, picture.height, false, {black, white}, {}};
    for (const GifByteType pixel : picture.pixels)
        mask.pixels.push_back(pixel == transparentIndex ? 1 : 0);
    return mask;
}

void require(int status, const char* step)
{
    if (status != GIF_OK)
        throw std::runtime_error(std::string("GIF encoder failed at ") + step);
}

std::string encodeGif(const IndexedPicture& picture)
{
    std::string bytes;
    int error = 0;
    GifFileType* gif = EGifOpen(
        &bytes,
        [](GifFileType* file, const GifByteType* data, int size) {
            static_cast<std::string*>(file->UserData)
                ->append(reinterpret_cast<const char*>(data), static_cast<size_t>(size));
            return size;
        },
        &error);
    if (!gif)
        throw std::runtime_error("GIF encoder cannot start");

    std::vector<GifColorType> colours = picture.colours;
    colours.resize(1u << GifBitSize(static_cast<int>(colours.size())), black);
    ColorMapObject* map = GifMakeMapObject(static_cast<int>(colours.size()), colours.data());
    EGifSetGifVersion(gif, true);
    require(EGifPutScreenDesc(gif, picture.width, picture.height, 8, 0, map), "screen");
    GifFreeMapObject(map);
    if (picture.transparent) {
        const GraphicsControlBlock control{DISPOSAL_UNSPECIFIED, false, 0, transparentIndex};
        std::array<GifByteType, 4> extension{};
        EGifGCBToExtension(&control, extension.data());
        require(EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, extension.size(), extension.data()),
                "transparency");
    }
    require(EGifPutImageDesc(gif, 0, 0, picture.width, picture.height, false, nullptr), "image");
    std::vector<GifByteType> pixels = picture.pixels;
    require(EGifPutLine(gif, pixels.data(), static_cast<int>(pixels.size())), "pixels");
    require(EGifCloseFile(gif, &error), "end");
    return bytes;
}

/// The GIF files (path below the root, bytes) that the sources call for.
std::map<fs::path, std::string> buildAll(const fs::path& root)
{
    std::map<fs::path, std::string> files;
    for (const PictureSet& set : pictureSets) {
        const fs::path folder = root / set.source;
        if (!fs::is_directory(folder))
            continue;
        const Palette palette = readPalette(root / set.palette);
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() != ".pix")
                continue;
            const IndexedPicture picture = readPix(entry.path(), palette);
            const std::string name = entry.path().stem().string();
            files[fs::path(set.target) / (name + ".gif")] = encodeGif(picture);
            if (set.withMasks && picture.transparent)
                files[fs::path(set.target) / (name + "_m.gif")] = encodeGif(maskOf(picture));
        }
    }
    return files;
}

/// GIFs in the target folders that no source stands for: they would never be rebuilt.
std::vector<fs::path> orphans(const fs::path& root, const std::map<fs::path, std::string>& files)
{
    std::vector<fs::path> found;
    for (const PictureSet& set : pictureSets) {
        if (!fs::is_directory(root / set.target))
            continue;
        for (const fs::directory_entry& entry : fs::directory_iterator(root / set.target)) {
            const fs::path path = fs::path(set.target) / entry.path().filename();
            if (path.extension() == ".gif" && !files.contains(path))
                found.push_back(path);
        }
    }
    return found;
}

int check(const fs::path& root, const std::map<fs::path, std::string>& files)
{
    int faults = 0;
    for (const auto& [path, bytes] : files) {
        if (fs::exists(root / path) && readFile(root / path) == bytes)
            continue;
        std::cerr << path.string() << ": not what its source gives; run art/rebuild\n";
        ++faults;
    }
    for (const fs::path& path : orphans(root, files)) {
        std::cerr << path.string() << ": has no source in art/\n";
        ++faults;
    }
    std::cout << files.size() << " pictures checked, " << faults << " faults\n";
    return faults == 0 && !files.empty() ? 0 : 1;
}

int write(const fs::path& root, const std::map<fs::path, std::string>& files)
{
    for (const auto& [path, bytes] : files) {
        fs::create_directories((root / path).parent_path());
        std::ofstream file(root / path, std::ios::binary);
        if (!(file << bytes).flush())
            throw std::runtime_error("cannot write " + path.string());
    }
    for (const fs::path& path : orphans(root, files)) {
        fs::remove(root / path);
        std::cout << path.string() << ": removed, it has no source\n";
    }
    std::cout << files.size() << " pictures written\n";
    return 0;
}

} // namespace

int main(int argc, char** argv)
try {
    const bool checking = argc == 3 && std::string(argv[1]) == "--check";
    if (argc != (checking ? 3 : 2)) {
        std::cerr << "usage: kestrune-art [--check] ROOT\n";
        return 2;
    }
    const fs::path root = argv[argc - 1];
    const auto files = buildAll(root);
    return checking ? check(root, files) : write(root, files);
} catch (const std::exception& failure) {
    std::cerr << "kestrune-art: " << failure.what() << '\n';
    return 1;
}
