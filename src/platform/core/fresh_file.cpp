#include "platform/core/fresh_file.h"

#include "platform/core/new_file.h"
#include "platform/core/saving.h"

#include <QDir>
#include <QFileInfo>

namespace platform {

/// The device passes bytes on to a file beside the one that it will be or, where the folder takes
/// no new file, among the temporary ones.
struct FreshFile::Writing final : QIODevice {
    Writing(const QString& wantedPath, const QFileInfo& old)
        : path(wantedPath),
          target(old.filePath()),
          isNew(!old.exists()),
          beside(std::make_unique<NewFile>(old.path(), QIODevice::NotOpen))
    {
        if (!beside->isOpen() && !isNew) {
            isElsewhere = true;
            beside = std::make_unique<NewFile>(QDir::tempPath(), QIODevice::NotOpen);
        }
        if (!beside->isOpen())
            throw unwritable(path, openingReason());
        open(QIODevice::WriteOnly | QIODevice::Unbuffered); // the file behind it has a buffer
    }

    qint64 readData(char* /*data*/, qint64 /*most*/) override { return -1; }

    qint64 writeData(const char* data, qint64 length) override
    {
        hasFailed = hasFailed || beside->file().write(data, length) != length;
        return hasFailed ? -1 : length;
    }

    QString path;
    QString target; ///< the path with links followed
    bool isNew;
    std::unique_ptr<NewFile> beside;
    bool isElsewhere = false;
    bool hasFailed = false;
};

FreshFile::FreshFile(const QString& path)
{
    const QFileInfo old(replaceableFile(path));
    if (old.exists() && !old.isWritable()) // what the user protected stays protected
        throw unwritable(path, openingReason());
    writing_ = std::make_unique<Writing>(path, old);
}

FreshFile::~FreshFile() = default;
FreshFile::FreshFile(FreshFile&& other) noexcept = default;

const QString& FreshFile::path() const
{
    return writing_->path;
}

QIODevice& FreshFile::device()
{
    return *writing_;
}

void FreshFile::settle()
{
    QFile& file = writing_->beside->file();
    writing_->hasFailed = writing_->hasFailed || !file.flush();
    if (writing_->hasFailed)
        throw unwritable(writing_->path, writingReason());
    if (!syncFile(file))
        throw unwritable(writing_->path, diskReason());
}

bool FreshFile::isNew() const
{
    return writing_->isNew;
}

QStringList FreshFile::finish()
{
    const QString& path = writing_->path;
    QFile& file = writing_->beside->file();
    settle();
    const auto writeInPlace = [&] {
        if (!file.seek(0))
            throw unwritable(path, readingReason());
        return writeFileAtomically(path, file.readAll());
    };
    if (writing_->isElsewhere)
        return writeInPlace();
    if (const QFileInfo old(writing_->target); old.exists())
        file.setPermissions(old.permissions());
    if (const std::error_code error = writing_->beside->renameTo(writing_->target)) {
        if (isForbidden(error) && !writing_->isNew)
            return writeInPlace();
        throw unwritable(path, diskReason());
    }
    if (!syncFolder(QFileInfo(writing_->target).path()))
        throw unwritable(path, diskReason());
    return {};
}

} // namespace platform
