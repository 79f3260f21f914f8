#pragma once

#include "app/file_look.h"
#include "platform/core/kept_versions.h"
#include "platform/core/list_items.h"
#include "platform/core/saving.h"
#include "platform/forms/form.h"
#include "platform/forms/notice_bar.h"
#include "platform/gdi/image_list.h"
#include "ui_frmVersiones.h"

#include <QCache>
#include <QImage>
#include <functional>
#include <optional>
#include <vector>

/// What there is to see of a kept version.
struct VersionLook : FileLook {
    QImage icon{};
};

/// A map's or a catalogue's file, and what its kept versions are good for.
struct VersionedFile {
    QString path;
    QString title;
    /// Looks at a version as it is to others of now, on another thread. Throws Error for one that
    /// can't be read whole.
    std::function<FileLook(const platform::KeptVersion& version)> look;
    /// A look's picture for that many pixels.
    QImage (*fitted)(const QImage& picture, QSize room);
    /// Puts a version in the place of what is being edited; returns whether that is a change.
    /// Throws Error, with everything as it was.
    std::function<bool(const platform::KeptVersion& version)> bringBack;
    /// Brings up the window where it is being edited.
    std::function<void()> showWindow;
};

/// What the versions of a file are listed under; nothing if the program makes no such versions.
QString versionedTitle(const QString& path);
/// The file at a path that has such a title.
VersionedFile versionedFile(const QString& path);

/// The dialog that shows the kept versions of a file and brings one back. All files are read in the
/// background, one version at a time: the selected one, then those that can be seen.
class FrmVersiones final : public platform::Dialog<Ui::FrmVersiones>
{
public:
    /// Shows the versions of a file, and of others on demand; first that version, else the newest.
    void showFor(const QString& file, const QString& version = {});

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void closeBox() override { dialog().reject(); }

private:
    struct Listed {
        platform::KeptVersion version;
        QString when; ///< as the list shows it
        QString size;
        bool isSeen = false; ///< looked at once
    };
    static std::vector<Listed> listed(const QString& file);

    void chooseFile();
    void addFiles(const QStringList& files);
    void list(std::vector<Listed> versions);
    void select(const QString& version);
    /// The position of the version selected, or -1.
    int selected();
    void showSelected();
    void showPicture();
    void lookNext();
    int nextToLookAt();
    void take(int position, const VersionLook& look);
    void bringBack();
    void forget();

    std::optional<VersionedFile> file_;
    std::vector<Listed> versions_;
    platform::ListItems items_; ///< of the versions, in their order
    platform::ImageList icons_;
    QCache<QString, VersionLook> looks_; ///< by the versions' paths, bounded in memory
    QImage picture_;                     ///< of the selected version
    QString wanted_;                     ///< the version to be selected once it is listed
    bool isLooking_ = false;
    int request_ = 0; ///< what was begun under another number isn't wanted any more
    int opened_ = 0;  ///< the same of what was begun when the window came up
};

FrmVersiones& frmVersiones();

/// Tells of a version of a file that was another's, with a button that shows it.
void tellOfOther(platform::NoticeBar& bar, const platform::OtherVersion& other);
