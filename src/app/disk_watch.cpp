#include "app/disk_watch.h"

#include "platform/core/app_folder.h"
#include "platform/core/kept_versions.h"
#include "platform/core/text_file.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::KnownFile;
using platform::OtherVersion;

namespace {

/// What can be seen of a file without reading it.
struct Sight {
    bool exists = false;
    qint64 size = 0;
    QDateTime modified;
    QByteArray knownDigest; ///< that it was compared with
    bool operator==(const Sight&) const = default;
};

struct Finding {
    KnownFile known; ///< as the document knew it
    QString text;
    std::optional<QByteArray> bytes{}; ///< that the file holds, if it could be read
};

/// Keeps what was found, and returns what is to be told.
OtherVersion kept(const Finding& finding)
{
    OtherVersion other{{}, finding.text, finding.known.path};
    try {
        if (finding.bytes)
            other.path = platform::keepVersion(finding.known.path, *finding.bytes);
    } catch (const Error& error) {
        other.text += u' ' + error.description;
    }
    return other;
}

} // namespace

/// What was seen of each file; only the background uses it.
class DiskWatch::Looks
{
public:
    std::vector<Finding> look(const std::vector<KnownFile>& files)
    {
        std::vector<Finding> findings;
        for (const KnownFile& known : files) {
            if (std::optional<Finding> finding = changeOf(known))
                findings.push_back(*std::move(finding));
        }
        return findings;
    }

private:
    /// What is to be told of a file; nothing if it is as it was, or as it was last told.
    std::optional<Finding> changeOf(const KnownFile& known)
    {
        const QFileInfo info(known.path);
        const Sight now{info.isFile(), info.size(), info.lastModified(), known.digest};
        if (Sight& before = seen_[known.path]; before == now)
            return {};
        else
            before = now;
        const QString name = platform::displayPath(known.path);
        if (!info.exists())
            return toldOnce(known, "-",
                            u"«%1» ya no está en su carpeta; al guardar se escribirá de "
                            "nuevo."_s.arg(name));
        if (!info.isFile())
            return toldOnce(known, "/",
                            u"«%1» ya no es un archivo: no se podrá guardar en "
                            "él."_s.arg(name));
        try {
            const QByteArray bytes = platform::readFile(known.path, platform::maxTextFileBytes);
            const QByteArray digest = platform::contentDigest(bytes);
            if (digest == known.digest) {
                told_.remove(known.path);
                return {};
            }
            return toldOnce(known, digest,
                            u"Otro programa ha cambiado «%1» desde que se leyó o se guardó. Lo que "
                            "ha escrito queda entre sus versiones anteriores, aunque se guarde "
                            "encima."_s.arg(name),
                            bytes);
        } catch (const Error& error) {
            return toldOnce(
                known, error.description.toUtf8(),
                u"Otro programa ha cambiado «%1» desde que se leyó o se guardó. "_s.arg(name) +
                    error.description);
        }
    }

    std::optional<Finding> toldOnce(const KnownFile& known, const QByteArray& state,
                                    const QString& text,
                                    const std::optional<QByteArray>& bytes = {})
    {
        QByteArray& told = told_[known.path];
        if (told == state)
            return {};
        told = state;
        return Finding{known, text, bytes};
    }

    QHash<QString, Sight> seen_;
    QHash<QString, QByteArray> told_;
};

DiskWatch::DiskWatch(platform::Background& background)
    : background_(background),
      looks_(std::make_shared<Looks>())
{
    connect(&timer_, &QTimer::timeout, this, &DiskWatch::look);
}

DiskWatch::~DiskWatch() = default;

void DiskWatch::watch(const QObject& owner, std::function<KnownFile()> known)
{
    std::erase_if(files_,
                  [&](const Watched& other) { return !other.owner || other.owner == &owner; });
    files_.push_back({&owner, std::move(known)});
}

void DiskWatch::look()
{
    if (isLooking_) // the disk is slow
        return;
    std::vector<KnownFile> files;
    for (const Watched& watched : files_) {
        if (!watched.owner)
            continue;
        if (KnownFile known = watched.known(); !known.digest.isEmpty())
            files.push_back(std::move(known));
    }
    isLooking_ = true;
    background_.run(
        *this, [looks = looks_, files] { return looks->look(files); },
        [this](const std::vector<Finding>& findings) {
            isLooking_ = false;
            for (const Finding& finding : findings) {
                if (isCurrent(finding.known)) // it may have been saved meanwhile
                    background_.run(
                        *this, [finding] { return kept(finding); },
                        [this](const OtherVersion& other) { emit changed(other); });
            }
        },
        platform::Background::Urgency::WhenIdle);
}

/// Whether a document still knows its file so.
bool DiskWatch::isCurrent(const KnownFile& known) const
{
    return std::any_of(files_.begin(), files_.end(), [&](const Watched& watched) {
        if (!watched.owner)
            return false;
        const KnownFile now = watched.known();
        return now.path == known.path && now.digest == known.digest;
    });
}
