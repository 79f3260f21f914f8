#pragma once

#include <QRect>
#include <optional>

/// The paper of a poster. One is a page as large as the map.
enum class Paper { A4, A3, Letter, One };

/// The largest scale of a picture.
inline constexpr int maxScale = 16;

// The height of a cell on paper, in millimetres.
inline constexpr double leastRowMillimetres = 0.5;
inline constexpr double mostRowMillimetres = 200;

/// What the user can choose of an export. A format heeds those that its entry in mapFormats()
/// names.
struct ExportOptions {
    int scale = 1;             ///< pixels of a picture to a pixel of the map's, at most maxScale
    std::optional<QRect> zone; ///< the cells that are shown; without it, all

    bool hasGrid = false;
    bool hasNumbers = false;
    bool hasNames = false;
    bool hasClimate = false;
    bool hasInhabitants = false;
    bool hasScaleBar = false;
    bool hasKey = false; ///< of the terrains and pins that occur

    Paper paper = Paper::A4;
    bool isLandscape = false;
    double rowMillimetres = 10; ///< height of a cell on paper

    bool isForPlayers = false; ///< without notes and hidden places
    bool isFolder = false;     ///< a file for each place
};
