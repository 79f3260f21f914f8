#pragma once

#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

#include <QSet>
#include <QStringList>

/// What doesn't fit of a file that is imported: all of it, as it is refused whole.
class ImportFaults
{
public:
    explicit ImportFaults(const QString& path) : path_(path) {}

    /// A fault in a line, counted from 1.
    void add(qint64 line, const QString& reason);
    bool isEmpty() const { return faults_.isEmpty(); }
    /// Throws Error with all faults, if there are any.
    void check() const;

private:
    QString path_;
    QStringList faults_;
};

/// Collects imported places as a map can have them: each on a cell of its own inside the map, with
/// a defined pin, a name of its own and texts that a map's file can hold.
class ImportedPlaces
{
public:
    ImportedPlaces(QSize map, const MapPictures& pictures, ImportFaults& faults)
        : cells_({}, map),
          pictures_(&pictures),
          faults_(&faults)
    {
    }

    void add(qint64 line, QPoint cell, const Place& place);
    Places take() { return std::move(places_); }

private:
    QRect cells_;
    const MapPictures* pictures_;
    ImportFaults* faults_;
    Places places_;
    QSet<QString> names_;
};
