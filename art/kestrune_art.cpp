// Turns the editable pictures of art/ (*.pix, plain text) into the GIF files that the program
// reads. The same sources always give the same bytes, so the GIFs can be kept under version
// control and checked against their sources.
//
//   kestrune-art ROOT           writes every GIF (ROOT is the top of the source tree)
//   kestrune-art --check ROOT   writes nothing; fails when a GIF differs from its source
#include "pix.h"

#include <gif_lib.h>

#include <array>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace fs = std::filesystem;
using namespace art;

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

IndexedPicture maskOf(const IndexedPicture& picture)
{
    IndexedPicture mask{picture.width, picture.height, false, {black, white}, {}};
    for (const std::uint8_t pixel : picture.pixels)
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

    std::vector<GifColorType> colours;
    for (const Rgb& colour : picture.colours)
        colours.push_back({colour.red, colour.green, colour.blue});
    colours.resize(1u << GifBitSize(static_cast<int>(colours.size())), GifColorType{0, 0, 0});
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
