#pragma once

#include "catalogue/catalogue_kind.h"
#include "platform/core/list_items.h"
#include "platform/core/saving.h"
#include "platform/core/text_file.h"
#include "platform/gdi/image_list.h"

#include <QStringList>
#include <functional>
#include <optional>

/// What is left of a file whose reading stopped on an error.
struct UnreadLines {
    /// The lines from the faulty one on, as they stand in the file; nothing when not one was read.
    std::optional<QString> text;
    bool isUtf8 = false;
    QString halfRead; ///< key of the item that the faulty line left in the list, if any
    QString backup;   ///< where the file as it was has been copied, once it is replaced
};

/// One catalogue in memory: the list is the catalogue, there is no other copy.
struct Catalogue {
    explicit Catalogue(const CatalogueKind& kind) : kind(kind) {}

    const CatalogueKind& kind;
    platform::ListItems items;
    platform::ImageList pictures;
    platform::KnownFile file;
    std::optional<UnreadLines> unread; ///< loading stopped on an error
};

inline void passOver(const platform::Error& /*remark*/) {}

/// The path of a kind's file.
QString cataloguePath(const CatalogueKind& kind);

/// Reads the kind's file below AppFolder into the catalogue, which is empty before. Throws Error at
/// the first fault (its text names file, line and reason); the records before it, and what was
/// added for the faulty one, stay in the list, and what wasn't read is kept in `unread`. A remark
/// tells of fields beyond those of the kind, which the catalogue leaves out.
void loadCatalogue(Catalogue& catalogue, const platform::OnFault& onFault = platform::giveUp,
                   const platform::OnFault& onRemark = passOver);

/// A line that begins with this is a comment.
inline constexpr QChar commentMark = u'#';

/// The items of a text in the form of a kind's file, without their icons. Lines that begin as
/// comments do are items, too, but for the first; one whose key is taken gets another.
std::vector<platform::ListItem::Contents> draftItems(const CatalogueKind& kind,
                                                     const platform::TextFile& file);
/// The items of a kind's file, without their icons, by the rules of loadCatalogue. Throws Error at
/// the first fault; its text names file, line and reason.
std::vector<platform::ListItem::Contents> fileItems(const CatalogueKind& kind,
                                                    const platform::TextFile& file);
/// The text of a kind's file with these items, without the checks of saving; draftItems has them
/// back.
QString catalogueDraft(const CatalogueKind& kind,
                       const std::vector<platform::ListItem::Contents>& items);

/// What is thrown for a catalogue that has as many items as can be.
platform::Error tooManyItems();
/// Throws Error (TooLarge) when the catalogue can't take another record.
void checkRoom(const Catalogue& catalogue);

/// What came of a save.
struct SavedCatalogue : platform::Saved {
    int records = 0;
};

/// Writes the catalogue to its file, in the list's order; `advance` is called after each item.
/// Fields that an item lacks are written empty. If loading had stopped, the old file is first
/// copied beside itself with ".bak" added (".bak2" … where there is one already); then the lines
/// that weren't read follow the records as they were, and the item that the faulty one left is not
/// written. Throws Error, with the old file whole: DuplicateKey for two items that the reader would
/// take for one, BadCharacter, FileUnwritable.
SavedCatalogue saveCatalogue(Catalogue& catalogue, const std::function<void()>& advance = {});
