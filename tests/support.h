#pragma once

#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/gdi/memory_dc.h"

#include <QByteArray>
#include <QFile>
#include <QSize>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <random>

// Permissions of a folder that everybody can look into, and that its owner can or can't change.
inline constexpr QFile::Permissions readOnlyFolder = QFile::ReadOwner | QFile::ExeOwner |
                                                     QFile::ReadGroup | QFile::ExeGroup |
                                                     QFile::ReadOther | QFile::ExeOther;
inline constexpr QFile::Permissions openFolder = readOnlyFolder | QFile::WriteOwner;
// A file that everybody can read, and that everybody or nobody can change.
inline constexpr QFile::Permissions readOnlyFile =
    QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
inline constexpr QFile::Permissions openFile =
    readOnlyFile | QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;

/// A new, empty folder that is AppFolder while the object lives.
class TempAppFolder
{
public:
    TempAppFolder();
    QString path(const QString& relative = {}) const;
    /// Writes a file, making its folders.
    void write(const QString& relative, const QByteArray& bytes) const;
    QByteArray read(const QString& relative) const;
    /// Copies the files that ship with the program into the folder.
    void addShippedData() const;

private:
    QTemporaryDir folder_;
    platform::ScopedAppFolder scope_;
};

/// The folder of the files that ship with the program.
QString shippedDataFolder();

/// A GIF picture of one black pixel.
QByteArray onePixelGif();

/// A picture of pixels of any colours; one seed gives one picture.
platform::MemoryDC noise(int width, int height, std::mt19937::result_type seed);

/// A GIF picture of that size in one colour, not compressed.
QByteArray plainGif(QSize size);

/// Runs the call and expects a platform::Error of that number whose description holds every one of
/// the fragments.
void expectError(const std::function<void()>& call, platform::ErrorNumber number,
                 const QStringList& fragments);

/// While it lives, the process can't write to folders and files that forbid it, even if it was
/// started by the superuser.
class WithoutPrivileges
{
public:
    WithoutPrivileges();
    ~WithoutPrivileges();
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
};

/// While it lives, no file can grow beyond that many bytes, as on a disk that is full.
class FullDisk
{
public:
    explicit FullDisk(unsigned long bytes);
    ~FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    unsigned long previous_;
};

/// googletest prints texts of Qt readably.
void PrintTo(const QString& text, std::ostream* out);
