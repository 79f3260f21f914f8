#pragma once

#include "catalogue/catalogue_kind.h"
#include "platform/core/list_items.h"
#include "platform/core/text_file.h"
#include "platform/gdi/image_list.h"

#include <functional>

/// One catalogue in memory: the list is the catalogue, there is no other copy.
struct Catalogue {
    explicit Catalogue(const CatalogueKind& kind) : kind(kind) {}

    const CatalogueKind& kind;
    platform::ListItems items;
    platform::ImageList pictures;
    /// Loading stopped on an error, so the file may hold more records than the list.
    bool loadStopped = false;
};

/// Reads the kind's file below AppFolder into the catalogue, which is empty before. Throws Error at
/// the first fault (its text names file, line and reason); the records before it, and what was
/// added for the faulty one, stay in the list, and loadStopped is set.
void loadCatalogue(Catalogue& catalogue, const platform::OnFault& onFault = platform::giveUp);

/// A line that begins with this is a comment.
inline constexpr QChar commentMark = u'#';

/// Throws Error (TooLarge) when the catalogue can't take another record.
void checkRoom(const Catalogue& catalogue);

/// Writes the catalogue to its file, in the list's order; `advance` is called after each record.
/// Fields that a stopped load left out are written empty; if the load had stopped, the old file is
/// first copied beside itself with ".bak" added (".bak2" … where there is one already). Throws
/// Error, with the old file whole.
void saveCatalogue(Catalogue& catalogue, const std::function<void()>& advance = {});
