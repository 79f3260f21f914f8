#pragma once

#include <QFile>
#include <QString>
#include <system_error>

namespace platform {

// Why a file can't be written, in Spanish, to stand behind a colon.
QString openingReason();
QString writingReason();
QString readingReason();
QString diskReason();

/// What the names of files that are being written look like, as a pattern with "*".
QString temporaryPattern();

/// A new file in a folder, under a name of its own, which goes with the object unless it was
/// renamed.
class NewFile
{
public:
    explicit NewFile(const QString& folder, QIODevice::OpenMode mode = QIODevice::Unbuffered);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// False where the folder takes no new file.
    bool isOpen() const { return file_.isOpen(); }
    QFile& file() { return file_; }

    std::error_code renameTo(const QString& path);
    /// Exchanges its name with a file's: that one is then under the new file's name, and goes with
    /// the object. Returns false, with nothing done, where the system can't.
    bool exchangeWith(const QString& path) const;

private:
    QFile file_;
    bool renamed_ = false;
};

/// Brings what was written to an open file to the disk. Returns whether that is done.
bool syncFile(const QFile& file);
/// Brings a folder's names to the disk, so that a renamed file is found after a loss of power.
bool syncFolder(const QString& path);

/// Marks an open file as in use until it is closed, even by a killed program. Returns false when
/// another program has marked it.
bool claim(const QFile& file);

/// Whether an error says that this folder, or this user, may not do what was tried.
bool isForbidden(const std::error_code& error);

} // namespace platform
