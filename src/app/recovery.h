#pragma once

#include "app/history.h"
#include "app/recovery_copy.h"
#include "platform/core/background.h"

#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

/// Unsaved work that an earlier run of the program left.
struct LeftWork {
    QString folder; ///< of its copies
    std::vector<RecoveryCopy> copies;
    QStringList faults; ///< of copies that can't be read

    /// When the last change in it was made.
    QDateTime when() const;
};

/// Sees to it that no unsaved work is lost: some seconds after a change, and when the program ends,
/// a copy of each unsaved document is written below AppFolder\respaldo\recuperacion, in a folder of
/// this run. A saved document takes its copy away. All disks are used in the background.
class Recovery final : public QObject
{
    Q_OBJECT

public:
    /// Copies are written this long after a change, in milliseconds.
    static constexpr int interval = 4000;
    /// So many earlier runs' copies are kept; the oldest go first.
    static constexpr int maxRuns = 10;

    /// Makes the content of a copy, on another thread.
    using Content = std::function<QByteArray()>;
    /// A document to be watched. Its functions are called on the main thread.
    struct Work {
        QString name; ///< of its copy's file
        const History* history;
        std::function<Content()> snapshot;
        std::function<QString()> target; ///< the file that saving would write
        std::function<platform::KnownFile()> known;
    };

    explicit Recovery(platform::Background& background);
    ~Recovery() override;

    /// Watches a document from now on, once; it may go before this does.
    void watch(Work work);
    /// Begins to write copies, and looks for what earlier runs left.
    void begin();
    /// Writes copies of all that changed since the last ones, and waits until that is done.
    void keepNow();
    /// Keeps unsaved work that is about to be replaced among the unsaved versions of its file.
    /// Where that can't be, its copy is left for the next start.
    void keepReplaced(const QString& work, const QString& target, const Content& content);
    /// What an earlier run left was taken over, or isn't wanted: it goes, once the documents as
    /// they are now have copies. It stays among the unsaved versions of its files.
    void settle(const LeftWork& left);
    /// The same, but what couldn't be read goes, too, if all else could be kept.
    void discard(const LeftWork& left);

signals:
    /// An earlier run left unsaved work; the latest is told last.
    void found(const LeftWork& left);
    /// A copy couldn't be written; told once until one can.
    void failed(const QString& reason);

private:
    struct Watched {
        Work work;
        QPointer<const History> history;
        std::optional<int> revision; ///< of the last copy; nothing while there is none
    };
    class Folder;

    bool isUnsaved(const Watched& watched) const;
    void keepChanged();
    void dropSaved();
    void write(Watched& watched);
    void settle(const LeftWork& left, bool withFaulty);
    void tell(const QString& reason);

    platform::Background& background_;
    std::vector<Watched> works_;
    std::shared_ptr<Folder> folder_; ///< the background's
    QTimer timer_;
    QString told_;
};
