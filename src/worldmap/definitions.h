#pragma once

#include "platform/core/list_items.h"
#include "platform/core/text_file.h"
#include "platform/gdi/image_list.h"
#include "platform/gdi/memory_dc.h"

#include <QHash>
#include <QString>
#include <memory>
#include <optional>

/// Pictures kept ready to draw, by definition name.
using PictureCollection = QHash<QString, std::shared_ptr<const platform::MemoryDC>>;

/// In a collection of masks: the picture is drawn opaque.
inline const std::shared_ptr<const platform::MemoryDC> SIN_MASCARA = nullptr;

/// What tells the three definition files apart.
struct DefinitionKind {
    QString file;     ///< name in the folder ini
    bool hasTerrain;  ///< its lines go on with "habitantes", "costo" and "temperatura"
    bool marksPlaces; ///< its names stand in the places of map files
    /// The palette's columns: "notas" as the items' text, then sub-items.
    std::vector<platform::ListColumn> columns;
};

const DefinitionKind& tilesKind();
const DefinitionKind& pinesKind();
const DefinitionKind& tilesLocalesKind();

/// A palette: the definitions of one file as its list shows them, which is also where the rest of
/// the program looks up a definition's fields by its name.
struct Palette {
    explicit Palette(const DefinitionKind& kind) : kind(kind) {}

    const DefinitionKind& kind;
    platform::ListItems items;
    platform::ImageList images;
};

/// A definition's field as a whole number of 16 bits, rounded to the nearest, halves to the even
/// one. Nothing when there is no such definition or field or its text isn't such a number.
std::optional<int> numberField(const Palette& palette, const QString& name, const QString& field);

/// The pictures that a world map is drawn from, by definition name, and their masks.
struct MapPictures {
    PictureCollection colTiles;
    PictureCollection colMascarasTiles;
    PictureCollection colPines;
    PictureCollection colMascarasPines;
};

/// Reads the palette's definition file below AppFolder and replaces the contents of the palette and
/// of both collections. A definition without a picture has no entry in either collection, one
/// without a mask has SIN_MASCARA. Throws Error at the first fault, with everything as it was; its
/// text names file, line and reason.
void loadDefinitions(Palette& palette, PictureCollection& pictures, PictureCollection& masks,
                     const platform::OnFault& onFault = platform::giveUp);
