#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>
#include <memory>

namespace platform {

/// A file that is written bit by bit and takes the place of another one, or of none, once it is
/// whole. Until then, and if it goes before, that one stays as it is.
class FreshFile
{
public:
    /// Throws Error (FileUnwritable).
    explicit FreshFile(const QString& path);
    ~FreshFile();
    FreshFile(FreshFile&& other) noexcept;
    FreshFile& operator=(FreshFile&&) = delete;
    FreshFile(const FreshFile&) = delete;
    FreshFile& operator=(const FreshFile&) = delete;

    const QString& path() const;
    /// Takes the bytes. It refuses all further ones after a failure, which settle tells.
    QIODevice& device();
    /// Brings what was written to the disk. Throws Error (FileUnwritable).
    void settle();
    /// Does that and puts it in its place. Returns what the user is to be told, in
    /// Spanish; mostly nothing. Throws Error (FileUnwritable).
    QStringList finish();
    /// Whether there was no file in its place before.
    bool isNew() const;

private:
    struct Writing;
    std::unique_ptr<Writing> writing_;
};

} // namespace platform
