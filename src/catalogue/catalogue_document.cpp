#include "catalogue/catalogue_document.h"

#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/gdi/picture.h"

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;
using platform::ListItem;
using platform::ListItems;

namespace {

qint64 bytesOf(const ListItem::Contents& contents)
{
    qsizetype characters = contents.key.size() + contents.text.size();
    for (const ListItem::SubItem& subItem : contents.subItems)
        characters += subItem.text.size();
    return qint64{sizeof(QChar)} * characters + qint64{sizeof(contents)} +
           static_cast<qint64>(contents.subItems.size() * sizeof(ListItem::SubItem));
}

} // namespace

/// An item that comes or leaves, or other contents of an item that is there. It goes back to where
/// it stood; if the list was sorted since, to where it belongs.
class CatalogueDocument::Step final : public History::Step
{
public:
    /// Of an item to come.
    Step(CatalogueDocument& document, const QString& text, std::unique_ptr<ListItem> item)
        : History::Step(document.history_, text),
          document_(&document),
          item_(std::move(item))
    {
    }
    /// Of an item of the list: to change, or without contents to leave.
    Step(CatalogueDocument& document, const QString& text, const QString& key,
         std::optional<ListItem::Contents> contents = {})
        : History::Step(document.history_, text),
          document_(&document),
          key_(key),
          contents_(std::move(contents))
    {
    }

protected:
    void exchange() override
    {
        if (item_)
            come();
        else if (contents_)
            change();
        else
            leave();
    }

    void forget() override
    {
        item_.reset();
        contents_.reset();
        setObsolete(true);
    }

    qint64 bytes() const override
    {
        return qint64{sizeof(*this)} + (item_ ? bytesOf(item_->contents()) : 0) +
               (contents_ ? bytesOf(*contents_) : 0);
    }

private:
    ListItems& items() { return document_->catalogue_.items; }
    bool knowsPlace() { return place_ >= 0 && sortings_ == items().sortings(); }
    void remember(int place)
    {
        place_ = place;
        sortings_ = items().sortings();
    }

    void come()
    {
        ListItem& item = items().insert(knowsPlace() ? place_ : items().count(), std::move(item_));
        key_ = item.key();
        settle(item);
    }

    void change()
    {
        ListItem& item = *items().find(key_);
        const int place = items().positionOf(item);
        item.exchange(*contents_);
        key_ = item.key();
        settle(item);
        remember(place);
    }

    void leave()
    {
        const ListItem& item = *items().find(key_);
        remember(items().positionOf(item));
        item_ = items().take(item);
    }

    void settle(ListItem& item)
    {
        if (knowsPlace())
            items().move(item, place_);
        else
            items().sortAgain();
        emit document_->itemEdited(item);
    }

    CatalogueDocument* document_;
    QString key_;                    ///< of the item, while it is in the list
    std::unique_ptr<ListItem> item_; ///< while it isn't
    std::optional<ListItem::Contents> contents_;
    int place_ = -1;   ///< in the list, before the last exchange
    int sortings_ = 0; ///< then
};

/// All items exchanged for others.
class CatalogueDocument::ReplaceStep final : public History::Step
{
public:
    ReplaceStep(CatalogueDocument& document, const QString& text,
                std::vector<ListItem::Contents> items)
        : History::Step(document.history_, text),
          document_(&document),
          items_(std::make_unique<platform::ListItems>())
    {
        for (ListItem::Contents& contents : items) {
            bytes_ += bytesOf(contents);
            items_->insert(items_->count(), items_->make(std::move(contents)));
        }
    }

protected:
    void exchange() override { document_->catalogue_.items.swapItems(*items_); }
    void forget() override
    {
        items_ = std::make_unique<platform::ListItems>();
        bytes_ = 0;
        setObsolete(true);
    }
    qint64 bytes() const override { return qint64{sizeof(*this)} + bytes_; }

private:
    CatalogueDocument* document_;
    std::unique_ptr<platform::ListItems> items_;
    qint64 bytes_ = 0; ///< of the newer items; the others take about as much
};

CatalogueDocument::CatalogueDocument(const CatalogueKind& kind) : catalogue_(kind)
{
    catalogue_.items.setColumns(kind.fields);
}

void CatalogueDocument::load(const platform::OnFault& onFault, const platform::OnFault& onRemark)
{
    history_.clear();
    catalogue_.items.clear();
    catalogue_.pictures = {};
    loadCatalogue(catalogue_, onFault, onRemark);
}

SavedCatalogue CatalogueDocument::save(const std::function<void()>& advance)
{
    SavedCatalogue saved = saveCatalogue(catalogue_, advance);
    history_.setClean();
    return saved;
}

void CatalogueDocument::replaceItems(std::vector<ListItem::Contents> items, const QString& text)
{
    if (items.size() > static_cast<std::size_t>(maxCatalogueItems))
        throw tooManyItems();
    for (ListItem::Contents& contents : items)
        contents.icon = iconFor(contents);
    if (items == this->items().contents())
        return;
    if (!history_.isClean())
        emit unsavedReplaced();
    history_.push(std::make_unique<ReplaceStep>(*this, text, std::move(items)));
}

/// The position of the picture that an item names: the one that an item of the list has, or one
/// that is loaded. An item whose picture can't be read has none.
int CatalogueDocument::iconFor(const ListItem::Contents& contents)
{
    const QString& field = kind().fields[kind().imageField()].key;
    const auto image =
        std::find_if(contents.subItems.begin(), contents.subItems.end(),
                     [&](const ListItem::SubItem& subItem) { return subItem.key == field; });
    if (image == contents.subItems.end() || image->text.isEmpty())
        return 0;
    const ListItem* const there = items().find(contents.key);
    if (there && there->hasSubItem(field) && there->subItem(field) == image->text)
        return there->icon();
    try {
        return loadPicture(contents.key, image->text);
    } catch (const Error&) {
        return 0;
    }
}

QString CatalogueDocument::keyOf(const QStringList& fields) const
{
    return kind().itemKey(fields.at(0), fields.at(1));
}

void CatalogueDocument::setSubItems(ListItem::Contents& contents, const QStringList& fields) const
{
    contents.subItems.clear();
    for (std::size_t i = 1; i < kind().fields.size(); ++i)
        contents.subItems.push_back({kind().fields[i].key, fields.at(static_cast<qsizetype>(i))});
}

/// Adds an item's picture, if it names one, and returns its position. The picture of an item that
/// was deleted may still have the key.
int CatalogueDocument::loadPicture(const QString& key, const QString& image)
{
    if (image.isEmpty())
        return 0;
    platform::ImageList& pictures = catalogue_.pictures;
    const QString path = platform::inAppFolder(image);
    return pictures.append(key, platform::loadPicture(path, pictures.largest()), path);
}

void CatalogueDocument::add(const QStringList& fields)
{
    checkRoom(catalogue_);
    ListItem::Contents contents{keyOf(fields), fields.at(0), 0, {}};
    if (items().find(contents.key))
        throw platform::duplicateKey(contents.key);
    const auto push = [&] {
        history_.push(std::make_unique<Step>(*this, u"añadir «%1»"_s.arg(contents.text),
                                             catalogue_.items.make(contents)));
    };
    try {
        contents.icon =
            loadPicture(contents.key, fields.at(static_cast<qsizetype>(kind().imageField())));
    } catch (const Error&) {
        push();
        throw;
    }
    setSubItems(contents, fields);
    push();
}

void CatalogueDocument::change(const QString& key, const QStringList& fields)
{
    const ListItem* const item = items().find(key);
    if (!item)
        throw Error(ErrorNumber::NoSuchKey, u"«%1» ya no está en la lista"_s.arg(key));
    ListItem::Contents contents = item->contents();
    contents.text = fields.at(0);
    setSubItems(contents, fields);
    const QString newKey = keyOf(fields);
    const bool isTaken = newKey != key && items().find(newKey);
    if (!isTaken)
        contents.key = newKey;
    if (contents != item->contents())
        history_.push(std::make_unique<Step>(*this, u"editar «%1»"_s.arg(contents.text), key,
                                             std::move(contents)));
    if (isTaken)
        throw platform::duplicateKey(newKey);
}

void CatalogueDocument::remove(const QString& key)
{
    if (const ListItem* const item = items().find(key))
        history_.push(
            std::make_unique<Step>(*this, u"eliminar «%1»"_s.arg(item->text()), item->key()));
}
