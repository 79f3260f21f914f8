// Measures whether terrain tiles can be told apart: by their lightness or because one carries a
// pattern that the other lacks; for full sight, for the two common kinds of colour blindness, and
// printed in grey.
#pragma once

#include "pix.h"

#include <array>
#include <string>
#include <vector>

namespace art {

enum class Sight { full, deuteranopia, protanopia, grey };
inline constexpr std::array sights{Sight::full, Sight::deuteranopia, Sight::protanopia,
                                   Sight::grey};

/// What is asked of two tiles: a difference of mean lightness, in units of CIELAB's L*, or a
/// pattern on one of them: a share of its pixels that stand so far from its ground.
constexpr double lightnessFloor = 8;
constexpr double patternFloor = 1.0 / 8;
constexpr double patternContrast = 15;

/// A colour in CIELAB (D65).
struct Lab {
    double lightness = 0;
    double a = 0;
    double b = 0;
};

/// What a tile shows to one kind of sight.
struct TileLook {
    Lab mean;                   ///< over all its pixels
    double groundLightness = 0; ///< of its commonest colour
    double patternShare = 0;    ///< of its pixels, those that stand `patternContrast` from it

    bool hasPattern() const { return patternShare >= patternFloor; }
};

/// `pixels` are those inside the cell's shape, at least one.
TileLook lookAt(const std::vector<Rgb>& pixels, Sight sight);

double lightnessDifference(const TileLook& one, const TileLook& other);
/// The distance of the mean colours in CIELAB (ΔE 1976).
double colourDifference(const TileLook& one, const TileLook& other);
bool toldApart(const TileLook& one, const TileLook& other);

struct TilePair {
    std::string one;
    std::string other;
};

/// The pairs among these tiles that must be told apart: those of which worlds are generated, every
/// sea ("M" in its name) from every land, every forest from every other land, and a few that are
/// easily taken for each other. Each pair once.
std::vector<TilePair> pairsToTellApart(const std::vector<std::string>& tiles);

} // namespace art
