#pragma once

#include "catalogue/catalogue_kind.h"

#include <QImage>
#include <vector>

// What there is to see of a catalogue that isn't loaded. Made of values alone, so that any thread
// can make it.

using CatalogueItems = std::vector<platform::ListItem::Contents>;

/// By which names a catalogue's items differ from others, as a Spanish sentence.
QString differences(const CatalogueItems& items, const CatalogueItems& others);

/// The first pictures that the items name, three by three; null if there are none. Their files are
/// read.
QImage mosaic(const CatalogueKind& kind, const CatalogueItems& items);
