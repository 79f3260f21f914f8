#pragma once

#include "app/workspace.h"
#include "exchange/export_options.h"
#include "mapview/overlay.h"
#include "platform/core/list_items.h"
#include "platform/forms/commands.h"
#include "platform/forms/form.h"
#include "ui_frmMapa.h"
#include "worldmap/frmMapa_capas.h"
#include "worldmap/map_canvas.h"
#include "worldmap/map_document.h"
#include "worldmap/map_tools.h"
#include "worldmap/map_window.h"

#include <QTimer>
#include <array>
#include <optional>

/// The editing modes of the map window, as its `accion` holds them.
enum Accion { PaintTiles = 0, SetPlaces = 1, DrawRoads = 2, NoEditing = 4 };

/// The world map window, the program's main window. It shows a document and follows its
/// announcements; the state of the view and of the tools is its own. Closing it ends the program.
class FrmMapa final : public platform::Form<Ui::FrmMapa>, public MapCanvas
{
public:
    FrmMapa();

    MapDocument documento;
    const WorldMap& mapa() const { return documento.map(); }

    int currX = 0; ///< first visible column, always even
    int currY = 0; ///< first visible row
    int accion = NoEditing;

    /// The ends of the road being marked, in cells; -1 while unset.
    int inicioX = -1;
    int inicioY = -1;
    int finX = -1;
    int finY = -1;

    /// Replaces the document with a map of that size (columns and rows), painted with the tile
    /// selected in the tile palette. Throws Error, with the document as it was.
    void newMapa(const MapProperties& properties, QSize size);
    /// Lets the user choose a map file and replaces the document with it. Throws Error, with the
    /// document as it was.
    void openMapa();
    /// Writes the document to its file, or tells the user that it needs a name. Throws Error.
    void saveMapa();

    /// Replaces the document with what a file holds, as a step of that name, and returns whether
    /// that changed anything. The document's own file stays. Throws Error, with the document as it
    /// was.
    bool bringBack(const QString& version, const QString& step);

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

    /// The places as lvLugares shows them, in row-major order of their cells.
    platform::ListItems lugares;
    /// The cell under the mouse, relative to the view.
    QPoint mouseCell{-1, -1};

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Resize() override;
    void Form_Unload() override;
    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    const MapWindow forMinimap_{[this] { return QSize(mapa().ancho(), mapa().alto()); },
                                currX,
                                currY,
                                [this] { scrollMapa(); },
                                [this] { drawMinimap(); },
                                [this]() -> const QWidget& { return *ui().imgMapa; },
                                [this] { ui().minimapa->setChecked(false); },
                                [this] { return actionsElsewhere(); },
                                [this](const QKeyEvent& key) { return useKeyFromElsewhere(key); }};
    std::optional<platform::CommandSet> commands_;
    MapTools tools_;
    MapaCapas capas_{documento.map()};
    std::vector<Overlay> mapOverlays_; ///< those of the menu Ver, as they were last found
    QTimer overlayTimer_;
    QPoint located_{-1, -1}; ///< the cell of the place that the small banner names
    /// The places of the map that the document is about to get.
    std::unique_ptr<platform::ListItems> prepared_;

    void loadTiles();
    void loadPines();
    void loadBanner();
    void layOutBanner();
    void askToSave();
    void newFromProperties();
    void editProperties();
    void changeSize();
    void scrollTo(QPoint first);
    void saveAs();
    std::vector<platform::Command> commands();
    std::vector<platform::Command> documentCommands();
    std::vector<platform::Command> modeCommands();
    std::vector<platform::Command> toolCommands();
    std::vector<platform::Command> placeCommands();
    std::vector<platform::Command> overlayCommands();
    std::vector<platform::Command> exchangeCommands();
    void loadCommands();

    // What is unsaved, and what an earlier run left unsaved.
    void watchUnsavedWork();
    void offer(const LeftWork& left);
    void recover(LeftWork left);
    void recover(const RecoveryCopy& copy);

    // What follows the document's announcements.
    void followDocument();
    void showReplaced();
    void showTiles(const std::vector<MapChange::Tile>& before);
    void showPlaces(const std::vector<MapDocument::PlaceChange>& changes, bool isNews);
    void showProperties();
    static std::unique_ptr<platform::ListItems> prepare(const WorldMap& map);

    // What the pointer does.
    void connectView();
    void imgMapa_MouseMove(QPoint pixel, Qt::MouseButtons held, Qt::KeyboardModifiers keys);
    void viewMoved();
    void imgMapa_Click();
    void imgMapa_MouseUp(Qt::MouseButton button);
    void imgMapa_MouseLeave();
    void beginGesture(Qt::KeyboardModifiers keys);
    void continueGesture(QPoint pixel);
    /// The cell under the mouse, in map coordinates.
    QPoint mapCell() const { return mouseCell + QPoint(currX, currY); }
    /// Whether the mouse is over a cell of the map that can be seen.
    bool mouseOnMap() const { return isShown(mouseCell); }
    /// Whether a cell, relative to the view, isn't above or left of it and lies on the map.
    bool isShown(QPoint viewCell) const;
    /// The cell that can be seen next to a cell, which may lie outside the map.
    QPoint nearestShown(QPoint mapCell) const;
    void takeBackClick();
    void dragPaint(QPoint from, QPoint to);
    void paintTile(QPoint cell);
    void fillArea(QPoint cell);
    void setPlace(QPoint cell);
    void editPlace(QPoint cell, QPoint dialogPosition);
    void markRoadEnd(Qt::MouseButton button);

    // Tools, beside the modes.
    void setAccion(Accion mode);
    bool leaveTool();
    void goToNextPane();
    void goToMap();
    void changeBrush(int by);
    void pickUp();
    void pickUp(QPoint cell);
    void setSelecting(bool on);
    void stopSelecting();
    void select(const std::optional<QRect>& cells);
    void copySelection();
    void cutSelection();
    void pasteClipboard();
    std::vector<Overlay> overlays();
    /// Brings status line, tool tip, pointer and overlays up to what the tools and the map are now.
    void showTools();
    void loadOverlays();
    void turnOverlay(const QString& key, bool on);
    void followOverlays();
    void showOverlays();
    void loadStart();
    void showStart();
    QString clickText();
    QString cellText() const;
    QString described(QPoint cell) const;
    QString spokenCell(QPoint cell) const;
    const ToolPointer& toolPointer() const;

    // What leaves the window, and comes back.
    QRect seenCells();
    ExportOptions layersNow() const;
    void exportMapa();
    void importMapa();
    void copyPicture();

    // Places.
    std::optional<QPoint> placeInHand();
    void goToPlace(int way);
    void editInHand();
    void removeInHand();
    void moveInHand();
    void repinInHand();
    void movePlace(QPoint from, QPoint to);
    void showPlaceMenu(QPoint cell);
    void loadPlaceMenus();
    QList<QAction*> actionsElsewhere();
    bool useKeyFromElsewhere(const QKeyEvent& key);

    void showEdits(const std::vector<QPoint>& cells);

    static void list(const WorldMap& map, platform::ListItems& places);
    void showLugares(platform::ListItems& places);
    static QPoint cellOf(const platform::ListItem& place);
    void lvLugares_DblClick();
    void showCentred(QPoint cell);
    void showLocation(const QString& name, QPoint cell);
    void hideLocation();
    bool isLocationStale();
    std::array<QWidget*, 4> locationPieces();
};

FrmMapa& frmMapa();
