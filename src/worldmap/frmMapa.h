#pragma once

#include "platform/core/list_items.h"
#include "platform/core/saving.h"
#include "platform/forms/form.h"
#include "ui_frmMapa.h"
#include "worldmap/map_canvas.h"
#include "worldmap/map_window.h"
#include "worldmap/world_map.h"

/// The world map window, the program's main window. It is the map document and the canvas that
/// draws it; closing it ends the program.
class FrmMapa final : public platform::Form<Ui::FrmMapa>, public WorldMap, public MapCanvas
{
public:
    /// Replaces the document with a map of the current size, painted with the tile selected in the
    /// tile palette. Throws Error, with the document as it was.
    void newMapa();
    void newMapa(WorldMap empty);
    /// Lets the user choose a map file and replaces the document with it. Throws Error, with the
    /// document as it was.
    void openMapa();
    /// Writes the document to its file, or tells the user that it needs a name. Throws Error.
    void saveMapa();

    /// Makes a black back buffer for the current size and clears the map's picture.
    void crearBuffer();
    /// Draws the whole document into the back buffer.
    void renderMapa();
    /// Replaces the document with a random world of its size. Throws Error, with the document as it
    /// was.
    void generarMapa();
    /// Draws a road, given as a route text, over the map until it is next drawn whole.
    void drawCamino(const QString& route);
    /// Shows the climate report. Throws Error when there is none to be had.
    void showClima();

    /// Copies the visible part of the back buffer to the screen.
    void scrollMapa();
    /// Lists the document's places.
    void loadLugares();

    /// Draws the minimap anew from the back buffer.
    void drawMinimap();

    /// Names the document: the name banner and the window's title follow.
    void setNombre(const QString& name);

    /// The places as lvLugares shows them, in row-major order of their cells.
    platform::ListItems lugares;
    /// The cell under the mouse, relative to the view.
    QPoint mouseCell{-1, -1};

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Resize() override;
    void Form_Unload() override;

private:
    const MapWindow forMinimap_{ancho,
                                alto,
                                currX,
                                currY,
                                [this] { scrollMapa(); },
                                [this] { drawMinimap(); },
                                [this]() -> const QWidget& { return *ui().imgMapa; },
                                [this] { ui().minimapa->setChecked(false); }};
    std::optional<QPoint> dragPosition_; ///< where the pointer last was with the left button held

    platform::KnownFile archivo_; ///< the document's file, as last read or written

    void loadTiles();
    void loadPines();
    void loadBanner();
    void layOutBanner();
    void showDocument(WorldMap document, const platform::KnownFile& file);
    void askToSave();
    void newFromProperties();
    void editProperties();
    void Toolbar_ButtonClick(const QString& key, bool pressed);

    void imgMapa_MouseMove(QPoint position, Qt::MouseButtons held);
    void imgMapa_Click();
    void imgMapa_MouseUp(Qt::MouseButton button);
    /// The cell under the mouse, in map coordinates.
    QPoint mapCell() const { return mouseCell + QPoint(currX, currY); }
    /// Whether the mouse is over a cell of the map that can be seen.
    bool mouseOnMap() const { return isShown(mouseCell); }
    /// Whether a cell, relative to the view, isn't above or left of it and lies on the map.
    bool isShown(QPoint viewCell) const;
    void dragPaint(QPoint from, QPoint to);
    void paintTile(QPoint cell);
    void setPlace(QPoint cell);
    bool nameIsTaken(const QString& name, QPoint exceptAt) const;
    void showEdit(QPoint cell);

    static void list(const WorldMap& map, platform::ListItems& places);
    void showLugares(platform::ListItems& places);
    static QPoint cellOf(const platform::ListItem& place);
    void lvLugares_DblClick();
    void centreOn(QPoint cell);
    void showLocation(const QString& name, QPoint cell);
    void hideLocation();
    std::array<QWidget*, 4> locationPieces();
};

FrmMapa& frmMapa();
