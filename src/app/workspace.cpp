#include "app/workspace.h"

namespace {

Workspace* current = nullptr;

} // namespace

Workspace::Workspace() : before_(current)
{
    current = this;
}

Workspace::~Workspace()
{
    current = before_;
}

void Workspace::loadTiles()
{
    loadDefinitions(tiles, pictures.colTiles, pictures.colMascarasTiles);
}

void Workspace::loadPines()
{
    loadDefinitions(pins, pictures.colPines, pictures.colMascarasPines);
}

void Workspace::loadTilesLocales()
{
    loadDefinitions(localTiles, localPictures.colTilesLocales, localPictures.colMascarasLocales);
}

Workspace& workspace()
{
    Q_ASSERT(current);
    return *current;
}
