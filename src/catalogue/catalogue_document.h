#pragma once

#include "app/history.h"
#include "catalogue/catalogue_file.h"

#include <QObject>

/// A catalogue being edited: its list, its pictures, and the history of its items. The only way to
/// add, change and delete an item, each being one step that can be undone. What changes nothing is
/// no step; nor are sorting and saving.
class CatalogueDocument final : public QObject
{
    Q_OBJECT

public:
    explicit CatalogueDocument(const CatalogueKind& kind);

    const CatalogueKind& kind() const { return catalogue_.kind; }
    const platform::ListItems& items() const { return catalogue_.items; }
    const platform::ImageList& pictures() const { return catalogue_.pictures; }
    /// The list for the view that shows and sorts it.
    platform::ListItems& model() { return catalogue_.items; }

    /// Reads the catalogue from its file, as loadCatalogue does, in the place of what it holds.
    void load(const platform::OnFault& onFault = platform::giveUp,
              const platform::OnFault& onRemark = passOver);
    /// Writes the catalogue to its file, as saveCatalogue does.
    SavedCatalogue save(const std::function<void()>& advance = {});
    /// What is known of the file.
    const platform::KnownFile& file() const { return catalogue_.file; }
    /// Takes other items in the place of those that there are, as a step of that name; their icons
    /// are looked up. Throws Error (TooLarge), with the list as it was.
    void replaceItems(std::vector<platform::ListItem::Contents> items, const QString& text);

    // An item's fields stand in the order of the file, the name first.

    /// Adds an item. Throws Error: TooLarge and DuplicateKey, with the list as it was; when the
    /// picture can't be read, the item is there without it and without sub-items.
    void add(const QStringList& fields);
    /// Changes the item of that key; its icon stays. Throws Error: NoSuchKey, with the list as it
    /// was; DuplicateKey, when another item has the new key, with all changed but the key.
    void change(const QString& key, const QStringList& fields);
    /// Takes the item of that key out, if there is one. Its picture stays.
    void remove(const QString& key);

    /// The steps so far.
    const History& history() const { return history_; }
    void undo() { history_.undo(); }
    void redo() { history_.redo(); }

signals:
    /// All items are about to be replaced, with changes that aren't in the file.
    void unsavedReplaced();
    /// An item was added, changed or brought back.
    void itemEdited(const platform::ListItem& item);

private:
    class Step;
    class ReplaceStep;
    QString keyOf(const QStringList& fields) const;
    void setSubItems(platform::ListItem::Contents& contents, const QStringList& fields) const;
    int iconFor(const platform::ListItem::Contents& contents);
    int loadPicture(const QString& key, const QString& image);

    Catalogue catalogue_;
    History history_;
};
