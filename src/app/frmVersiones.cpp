#include "app/frmVersiones.h"

#include "app/workspace.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QLocale>
#include <QScrollBar>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

using platform::Background;

namespace {

constexpr int iconSide = 48;
constexpr int looksKept = 64 * 1024; ///< about, in kilobytes

const std::vector<platform::ListColumn>& columns()
{
    static const std::vector<platform::ListColumn> all{
        {u"fecha"_s, u"Fecha"_s, 2850},
        {u"clase"_s, u"Clase"_s, 1950},
        {u"tamano"_s, u"Tamaño"_s, 900, Qt::AlignRight}};
    return all;
}

QString sizeText(qint64 bytes)
{
    constexpr qint64 megabyte = 1'000'000;
    return QLocale(QLocale::Spanish)
        .formattedDataSize(bytes, bytes < megabyte ? 0 : 1, QLocale::DataSizeSIFormat);
}

VersionLook lookAt(const VersionedFile& file, const platform::KeptVersion& version, QSize iconRoom)
{
    QImage icon;
    const FileLook look = lookOrReason([&] {
        FileLook seen = file.look(version);
        if (!seen.picture.isNull())
            icon = file.fitted(seen.picture, iconRoom);
        return seen;
    });
    return {look, icon};
}

} // namespace

FrmVersiones& frmVersiones()
{
    return platform::FormRegistry::shared<FrmVersiones>();
}

void tellOfOther(platform::NoticeBar& bar, const platform::OtherVersion& other)
{
    platform::NoticeBar::Notice notice{other.text};
    if (!other.path.isEmpty())
        notice.buttons.push_back({u"cmdVerOtraVersion"_s, u"Ver la otra versión"_s,
                                  [other] { frmVersiones().showFor(other.file, other.path); }});
    bar.tell(notice);
}

void FrmVersiones::Form_Load()
{
    Ui::FrmVersiones& controls = ui();
    looks_.setMaxCost(looksKept);
    items_.setColumns(columns());
    platform::ListView& list = *controls.lvVersiones;
    list.setIconSize({iconSide, iconSide});
    list.setItems(items_, icons_);
    list.header()->setSectionsClickable(false); // by age is the only order that makes sense
    QObject::connect(controls.cmbArchivo, &QComboBox::currentIndexChanged, &window(),
                     [this] { platform::runCommand([&] { chooseFile(); }); });
    QObject::connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, &window(),
                     [this] {
                         showSelected();
                         lookNext();
                     });
    QObject::connect(list.verticalScrollBar(), &QScrollBar::valueChanged, &window(),
                     [this] { lookNext(); });
    QObject::connect(&list, &platform::ListView::dblClick, &window(), [this] { bringBack(); });
    QObject::connect(controls.cmdTraer, &QPushButton::clicked, &window(), [this] { bringBack(); });
    QObject::connect(controls.cmdCerrar, &QPushButton::clicked, &dialog(), &QDialog::reject);
}

void FrmVersiones::Form_Resize()
{
    showPicture();
    lookNext();
}

void FrmVersiones::showFor(const QString& file, const QString& version)
{
    QComboBox& box = *ui().cmbArchivo;
    {
        const QSignalBlocker quiet(box);
        box.clear();
        box.addItem(versionedTitle(file), file);
    }
    wanted_ = version;
    chooseFile();
    workspace().background.run(
        window(), [] { return platform::filesWithVersions(); },
        [this, opened = opened_](const QStringList& files) {
            if (opened == opened_)
                addFiles(files);
        },
        Background::Urgency::WhenIdle);
    ui().lvVersiones->setFocus();
    showModal();
    const auto showWindow = file_->showWindow;
    ++opened_;
    forget();
    if (dialog().result() == QDialog::Accepted)
        showWindow();
}

/// Offers the files that have versions below the one that the window was opened for.
void FrmVersiones::addFiles(const QStringList& files)
{
    QComboBox& box = *ui().cmbArchivo;
    for (const QString& file : files) {
        if (const QString title = versionedTitle(file);
            !title.isEmpty() && file != box.itemData(0).toString())
            box.addItem(title, file);
    }
}

/// Lets go of the versions that are listed, and of what is still being found out about them.
void FrmVersiones::forget()
{
    ++request_;
    isLooking_ = false;
    versions_.clear();
    items_.clear();
    icons_ = platform::ImageList(iconSide);
    looks_.clear();
    showSelected();
}

void FrmVersiones::chooseFile()
{
    forget();
    file_ = versionedFile(ui().cmbArchivo->currentData().toString());
    ui().lblVersion->setText(u"Buscando versiones…"_s);
    workspace().background.run(
        window(), [path = file_->path] { return listed(path); },
        [this, request = request_](std::vector<Listed> versions) {
            if (request == request_)
                list(std::move(versions));
        },
        Background::Urgency::WhenIdle);
}

std::vector<FrmVersiones::Listed> FrmVersiones::listed(const QString& file)
{
    std::vector<Listed> versions;
    for (const platform::KeptVersion& version : platform::keptVersions(file))
        versions.push_back({version, version.when.toString(u"dd/MM/yyyy HH:mm:ss"_s),
                            sizeText(QFileInfo(version.path).size())});
    return versions;
}

void FrmVersiones::list(std::vector<Listed> versions)
{
    versions_ = std::move(versions);
    platform::ListItems all; // the view takes one list sooner than many rows
    for (const Listed& one : versions_) {
        platform::ListItem& item = all.add(one.version.path, one.when);
        item.setSubItem(u"tamano"_s, one.size);
        item.setSubItem(u"clase"_s, one.version.isUnsaved ? u"Sin guardar"_s : u"Guardada"_s);
    }
    items_.swapItems(all);
    if (versions_.empty())
        ui().lblVersion->setText(u"De este archivo aún no hay versiones anteriores. El programa "
                                 "guarda una en «respaldo» cuando se guarda encima de lo que "
                                 "había."_s);
    else
        select(wanted_);
    wanted_.clear();
    lookNext();
}

/// Selects a version, or the newest one if that isn't listed.
void FrmVersiones::select(const QString& version)
{
    const platform::ListItem* const item = items_.find(version);
    ui().lvVersiones->select(item ? *item : items_.at(0));
}

int FrmVersiones::selected()
{
    const platform::ListItem* const item = ui().lvVersiones->selectedItem();
    return item ? items_.positionOf(*item) : -1;
}

void FrmVersiones::showSelected()
{
    const int position = selected();
    const VersionLook* const look =
        position < 0 ? nullptr : looks_.object(items_.at(position).key());
    ui().cmdTraer->setEnabled(look && look->isReadable);
    ui().lblVersion->setText(look ? look->text : position < 0 ? QString() : u"Leyendo…"_s);
    picture_ = look ? look->picture : QImage();
    showPicture();
}

void FrmVersiones::showPicture()
{
    platform::PreviewBox& box = *ui().imgVersion;
    box.setPicture(picture_.isNull() ? picture_ : file_->fitted(picture_, box.room()));
}

/// Looks at the next version that is worth it, unless one is being looked at.
void FrmVersiones::lookNext()
{
    const int position = isLooking_ ? -1 : nextToLookAt();
    if (position < 0)
        return;
    isLooking_ = true;
    workspace().background.run(
        window(),
        [file = *file_, version = versions_[static_cast<std::size_t>(position)].version,
         room = icons_.largest()] { return lookAt(file, version, room); },
        [this, position, request = request_](const VersionLook& look) {
            if (request != request_)
                return;
            isLooking_ = false;
            take(position, look);
            lookNext();
        },
        Background::Urgency::WhenIdle);
}

/// The position of the selected version, if there is no look of it, or of the first one on the
/// screen that hasn't been looked at; else -1.
int FrmVersiones::nextToLookAt()
{
    const int chosen = selected();
    if (chosen >= 0 && !looks_.contains(items_.at(chosen).key()))
        return chosen;
    const platform::ListView& view = *ui().lvVersiones;
    for (QModelIndex row = view.indexAt({0, 0});
         row.isValid() && view.visualRect(row).top() < view.viewport()->height();
         row = view.indexBelow(row)) {
        if (!versions_[static_cast<std::size_t>(row.row())].isSeen)
            return row.row();
    }
    return -1;
}

void FrmVersiones::take(int position, const VersionLook& look)
{
    platform::ListItem& item = items_.at(position);
    Listed& listed = versions_[static_cast<std::size_t>(position)];
    if (!std::exchange(listed.isSeen, true)) {
        if (!look.icon.isNull())
            item.setIcon(icons_.append(item.key(), look.icon));
        if (!look.isReadable)
            item.setSubItem(u"clase"_s, item.subItem(u"clase"_s) + u" (ilegible)"_s);
    }
    const qint64 kilobytes = 1 + look.picture.sizeInBytes() / 1024;
    looks_.insert(item.key(), new VersionLook(look),
                  static_cast<int>(std::min<qint64>(kilobytes, looksKept)));
    if (position == selected())
        showSelected();
}

void FrmVersiones::bringBack()
{
    const int position = selected();
    if (position < 0 || !ui().cmdTraer->isEnabled())
        return;
    platform::runCommand([&] {
        const auto& version = versions_[static_cast<std::size_t>(position)].version;
        if (file_->bringBack(version))
            dialog().accept();
        else
            platform::MsgBox::show(u"Esa versión es igual que lo que hay ahora."_s,
                                   u"Versiones anteriores"_s, platform::MsgBox::Icon::Information);
    });
}
