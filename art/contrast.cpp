#include "contrast.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace art {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

// Linear light to CIE XYZ; its second row alone is the luminance.
constexpr Matrix toXyz{{{0.4124564, 0.3575761, 0.1804375},
                        {0.2126729, 0.7151522, 0.0721750},
                        {0.0193339, 0.1191920, 0.9503041}}};
constexpr Triple whitePoint{0.95047, 1, 1.08883};

// Linear light as the colour-blind see it (Machado, Oliveira and Fernandes 2009, full severity).
constexpr Matrix deuteranopia{{{0.367322, 0.860646, -0.227968},
                               {0.280085, 0.672501, 0.047413},
                               {-0.011820, 0.042940, 0.968881}}};
constexpr Matrix protanopia{{{0.152286, 1.052583, -0.204868},
                             {0.114503, 0.786281, 0.099216},
                             {-0.003882, -0.048116, 1.051998}}};
constexpr Matrix grey{toXyz[1], toXyz[1], toXyz[1]};

double linear(std::uint8_t channel)
{
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

Triple operator*(const Matrix& matrix, const Triple& vector)
{
    Triple product{};
    for (std::size_t row = 0; row < product.size(); ++row) {
        for (std::size_t i = 0; i < vector.size(); ++i)
            product[row] += matrix[row][i] * vector[i];
    }
    return product;
}

Triple seen(const Triple& light, Sight sight)
{
    if (sight == Sight::full)
        return light;
    Triple shown = (sight == Sight::deuteranopia ? deuteranopia
                    : sight == Sight::protanopia ? protanopia
                                                 : grey) *
                   light;
    for (double& channel : shown)
        channel = std::clamp(channel, 0.0, 1.0);
    return shown;
}

Lab labOf(const Rgb& colour, Sight sight)
{
    Triple f = toXyz * seen({linear(colour.red), linear(colour.green), linear(colour.blue)}, sight);
    for (std::size_t i = 0; i < f.size(); ++i) {
        const double t = f[i] / whitePoint[i];
        f[i] = t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
    }
    return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

Rgb commonest(const std::vector<Rgb>& pixels)
{
    std::map<Rgb, int> counts;
    for (const Rgb& pixel : pixels)
        ++counts[pixel];
    return std::max_element(
               counts.begin(), counts.end(),
               [](const auto& one, const auto& other) { return one.second < other.second; })
        ->first;
}

} // namespace

TileLook lookAt(const std::vector<Rgb>& pixels, Sight sight)
{
    TileLook look;
    look.groundLightness = labOf(commonest(pixels), sight).lightness;
    const double each = 1.0 / static_cast<double>(pixels.size());
    for (const Rgb& pixel : pixels) {
        const Lab lab = labOf(pixel, sight);
        look.mean.lightness += each * lab.lightness;
        look.mean.a += each * lab.a;
        look.mean.b += each * lab.b;
        if (std::abs(lab.lightness - look.groundLightness) >= patternContrast)
            look.patternShare += each;
    }
    return look;
}

double lightnessDifference(const TileLook& one, const TileLook& other)
{
    return std::abs(one.mean.lightness - other.mean.lightness);
}

double colourDifference(const TileLook& one, const TileLook& other)
{
    return std::hypot(lightnessDifference(one, other), one.mean.a - other.mean.a,
                      one.mean.b - other.mean.b);
}

bool toldApart(const TileLook& one, const TileLook& other)
{
    return lightnessDifference(one, other) >= lightnessFloor ||
           one.hasPattern() != other.hasPattern();
}

std::vector<TilePair> pairsToTellApart(const std::vector<std::string>& tiles)
{
    const std::set<std::string> generated{"M1", "M2", "M3", "T1", "T2", "T3",
                                          "T4", "P1", "P2", "B1", "B2"};
    const std::set<std::string> forests{"B1", "B2", "Pinar", "Jungla"};
    const std::set<std::set<std::string>> lookAlikes{
        {"Desierto", "Dunas"}, {"B2", "Jungla"}, {"Colinas", "T2"}, {"P1", "Volcan"}};
    const auto isSea = [](const std::string& name) { return name.find('M') != name.npos; };
    const auto mustDiffer = [&](const std::string& one, const std::string& other) {
        return (generated.contains(one) && generated.contains(other)) ||
               isSea(one) != isSea(other) || forests.contains(one) != forests.contains(other) ||
               lookAlikes.contains({one, other});
    };
    std::vector<TilePair> pairs;
    for (auto one = tiles.begin(); one != tiles.end(); ++one) {
        for (auto other = one + 1; other != tiles.end(); ++other) {
            if (mustDiffer(*one, *other))
                pairs.push_back({*one, *other});
        }
    }
    return pairs;
}

} // namespace art
