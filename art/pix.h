// The editable pictures of art/: text files with one character a pixel, and their palettes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace art {

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    auto operator<=>(const Rgb&) const = default;
};

constexpr char transparentMark = '.';
constexpr std::uint8_t transparentIndex = 0;
constexpr Rgb black{0, 0, 0};
constexpr Rgb white{255, 255, 255};

using Palette = std::map<char, Rgb>;

/// Colour-indexed pixels, row by row. Index 0 is black and stands for "transparent" when
/// `transparent` is set: a reader that knows no transparency sees the black that masked drawing
/// needs.
struct IndexedPicture {
    int width = 0;
    int height = 0;
    bool transparent = false;
    std::vector<Rgb> colours;
    std::vector<std::uint8_t> pixels;
};

/// The file's bytes. Throws std::runtime_error, as all readers here do, naming the file.
std::string readFile(const std::filesystem::path& path);

/// Reads a palette: lines "c #rrggbb note"; other lines are comments.
Palette readPalette(const std::filesystem::path& path);

/// Reads a .pix file: rows of equal length, one palette mark a pixel, "." for transparent.
/// Lines that begin with a blank are comments.
IndexedPicture readPix(const std::filesystem::path& path, const Palette& palette);

} // namespace art
