#include "app/recovery.h"

#include "platform/core/file_replacement.h"
#include "platform/core/kept_versions.h"
#include "platform/core/text_file.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;

using platform::Error;

namespace {

QString copiesRoot()
{
    return platform::versionsRoot() + u"/recuperacion"_s;
}

QString copyName(const QString& work)
{
    return work + u".copia"_s;
}

QStringList copiesIn(const QDir& folder)
{
    return folder.entryList({copyName(u"*"_s)}, QDir::Files);
}

/// Whether a file holds just what a copy of it does: it was saved, and only the copy is left over.
bool isSaved(const RecoveryCopy& copy)
{
    const QFileInfo file(copy.target);
    try {
        return file.size() == copy.content.size() &&
               platform::readFile(copy.target, platform::maxTextFileBytes) == copy.content;
    } catch (const Error&) {
        return false;
    }
}

LeftWork readLeftWork(const QString& folder)
{
    LeftWork left{folder, {}, {}};
    for (const QString& name : copiesIn(folder)) {
        try {
            RecoveryCopy copy = readRecoveryCopy(folder + u'/' + name);
            if (isSaved(copy))
                QFile::remove(copy.file);
            else
                left.copies.push_back(std::move(copy));
        } catch (const Error& error) {
            left.faults.append(error.description);
        }
    }
    return left;
}

/// Takes copies away, once they are among the unsaved versions of their files. Throws Error.
void putAmongVersions(const LeftWork& left)
{
    for (const RecoveryCopy& copy : left.copies) {
        platform::keepVersion(copy.target, copy.content, true);
        QFile::remove(copy.file);
    }
    QDir().rmdir(left.folder); // if it is empty
}

/// Reads what earlier runs left, the latest first, and takes away what is left of it for nothing.
std::vector<LeftWork> readAllLeft(const QString& ownFolder)
{
    std::vector<LeftWork> all;
    const QDir root(copiesRoot());
    for (const QString& name : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        if (root.filePath(name) == ownFolder)
            continue;
        LeftWork left = readLeftWork(root.filePath(name));
        if (!left.copies.empty() || !left.faults.isEmpty())
            all.push_back(std::move(left));
        else
            root.rmdir(name); // if it is empty
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const LeftWork& a, const LeftWork& b) { return a.when() > b.when(); });
    while (all.size() > Recovery::maxRuns) {
        try {
            putAmongVersions(all.back());
        } catch (const Error&) { // they stay where they are
            break;
        }
        all.pop_back();
    }
    return all;
}

/// Runs work of the background that may throw; returns what went wrong, or nothing.
template <typename Work>
QString problemOf(const Work& work)
{
    try {
        work();
        return {};
    } catch (const Error& error) {
        return error.description;
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    }
}

} // namespace

QDateTime LeftWork::when() const
{
    QDateTime latest;
    for (const RecoveryCopy& copy : copies)
        latest = latest.isValid() ? std::max(latest, copy.when) : copy.when;
    return latest;
}

/// The folder of this run's copies, made when the first one is written. Only the background uses
/// it.
class Recovery::Folder
{
public:
    QString path()
    {
        if (path_.isEmpty()) {
            const QString name = copiesRoot() + u'/' +
                                 QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH.mm.ss"_s);
            path_ = name;
            for (int i = 2; QFileInfo::exists(path_); ++i) // a clock that was set back
                path_ = name + u" (%1)"_s.arg(i);
        }
        QDir().mkpath(path_);
        return path_;
    }
    void write(const RecoveryCopy& copy)
    {
        const QString file = path() + u'/' + copyName(copy.work);
        if (!platform::replaceFile(file, bytesOf(copy)))
            throw platform::unwritable(file, u"la carpeta no admite archivos nuevos"_s);
    }
    /// Leaves the copy that there is for the next start, under another name.
    void setAside(const QString& work)
    {
        if (path_.isEmpty())
            return;
        const QString file = path_ + u'/' + copyName(work);
        int number = 2;
        const auto aside = [&] { return path_ + u'/' + copyName(work + u" (%1)"_s.arg(number)); };
        while (QFileInfo::exists(aside()))
            ++number;
        QFile::rename(file, aside());
    }
    void remove(const QString& work)
    {
        if (path_.isEmpty())
            return;
        QFile::remove(path_ + u'/' + copyName(work));
        QDir().rmdir(path_); // if it is empty
    }
    QString current() const { return path_; }

private:
    QString path_;
};

Recovery::Recovery(platform::Background& background)
    : background_(background),
      folder_(std::make_shared<Folder>())
{
    connect(&timer_, &QTimer::timeout, this, &Recovery::keepChanged);
}

Recovery::~Recovery() = default;

void Recovery::watch(Work work)
{
    std::erase_if(works_, [&](const Watched& other) {
        return !other.history || other.history == work.history;
    });
    disconnect(work.history, nullptr, this, nullptr);
    connect(work.history, &History::changed, this, &Recovery::dropSaved);
    QPointer<const History> history(work.history);
    works_.push_back({std::move(work), history, {}});
}

void Recovery::begin()
{
    timer_.start(interval);
    background_.run(
        *this, [folder = folder_] { return readAllLeft(folder->current()); },
        [this](const std::vector<LeftWork>& all) {
            for (auto left = all.rbegin(); left != all.rend(); ++left)
                emit found(*left);
        });
}

bool Recovery::isUnsaved(const Watched& watched) const
{
    return watched.history && !watched.history->isClean();
}

void Recovery::keepChanged()
{
    for (Watched& watched : works_) {
        if (isUnsaved(watched) && watched.revision != watched.history->revision())
            write(watched);
    }
}

/// What is as its file is needs no copy.
void Recovery::dropSaved()
{
    for (Watched& watched : works_) {
        if (!watched.revision || !watched.history || isUnsaved(watched))
            continue;
        watched.revision.reset();
        background_.run([folder = folder_, name = watched.work.name] { folder->remove(name); });
    }
}

void Recovery::write(Watched& watched)
{
    watched.revision = watched.history->revision();
    RecoveryCopy copy{watched.work.name,
                      watched.work.target(),
                      watched.work.known(),
                      QDateTime::currentDateTime(),
                      {}};
    background_.run(
        *this,
        [folder = folder_, copy, content = watched.work.snapshot()] {
            return problemOf([&] {
                RecoveryCopy filled = copy;
                filled.content = content();
                folder->write(filled);
            });
        },
        [this, name = watched.work.name](const QString& problem) {
            tell(problem);
            for (Watched& other : works_) {
                if (other.work.name == name && !problem.isEmpty())
                    other.revision = -1; // there may be an older one; it is tried again
            }
        });
}

void Recovery::tell(const QString& reason)
{
    if (reason == told_)
        return;
    told_ = reason;
    if (!reason.isEmpty())
        emit failed(reason);
}

void Recovery::keepNow()
{
    keepChanged();
    background_.finish();
}

void Recovery::keepReplaced(const QString& work, const QString& target, const Content& content)
{
    background_.run(
        *this,
        [folder = folder_, work, target, content] {
            QString problem = problemOf([&] { platform::keepVersion(target, content(), true); });
            if (!problem.isEmpty())
                folder->setAside(work);
            return problem;
        },
        [this](const QString& problem) { tell(problem); });
}

void Recovery::settle(const LeftWork& left)
{
    settle(left, false);
}

void Recovery::discard(const LeftWork& left)
{
    settle(left, true);
}

void Recovery::settle(const LeftWork& left, bool withFaulty)
{
    keepChanged();
    background_.run(
        *this,
        [left, withFaulty] {
            return problemOf([&] {
                putAmongVersions(left);
                QDir folder(left.folder);
                if (withFaulty) {
                    for (const QString& faulty : copiesIn(folder))
                        folder.remove(faulty);
                }
                folder.rmdir(left.folder); // if it is empty
            });
        },
        [this](const QString& problem) { tell(problem); });
}
