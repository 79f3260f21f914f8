#include "pix.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace art {
namespace {

std::vector<std::string> readLines(const std::filesystem::path& path)
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

} // namespace

std::string readFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return file ? text.str() : throw std::runtime_error("cannot read " + path.string());
}

Palette readPalette(const std::filesystem::path& path)
{
    Palette palette;
    for (const std::string& line : readLines(path)) {
        if (line.size() < 9 || line[1] != ' ' || line[2] != '#')
            continue;
        const unsigned long rgb = std::stoul(line.substr(3, 6), nullptr, 16);
        const Rgb colour{static_cast<std::uint8_t>(rgb >> 16),
                         static_cast<std::uint8_t>(rgb >> 8 & 0xff),
                         static_cast<std::uint8_t>(rgb & 0xff)};
        if (line[0] == transparentMark || !palette.emplace(line[0], colour).second)
            throw std::runtime_error(path.string() + ": mark used twice: " + line);
    }
    return palette;
}

IndexedPicture readPix(const std::filesystem::path& path, const Palette& palette)
{
    IndexedPicture picture;
    picture.colours.push_back(black);
    std::map<char, std::uint8_t> indexOf{{transparentMark, transparentIndex}};
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
            const auto index = static_cast<std::uint8_t>(picture.colours.size());
            indexOf.emplace(mark, index);
            picture.colours.push_back(colour->second);
            picture.pixels.push_back(index);
        }
    }
    if (picture.pixels.empty())
        throw std::runtime_error(path.string() + ": no rows");
    return picture;
}

} // namespace art
