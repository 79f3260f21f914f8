#include "platform/core/text_file.h"

#include "platform/core/app_folder.h"
#include "platform/core/text_codec.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr qint64 bytesPerMegabyte = 1024 * 1024;

QString openingReason()
{
    return u"no se puede abrir; compruebe los permisos del archivo y de su carpeta"_s;
}

QString writingReason()
{
    return u"no se puede escribir; compruebe el espacio libre del disco"_s;
}

Error unwritable(const QString& path, const QString& reason)
{
    return Error(ErrorNumber::FileUnwritable,
                 u"No se puede guardar «%1»: %2."_s.arg(displayPath(path), reason));
}

/// Puts bytes into a file that is there, where its folder allows no new file beside it. The room
/// for them is taken before any old byte is touched, so that a full disk leaves the old file whole.
void overwrite(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered))
        throw unwritable(path, openingReason());
    const qint64 oldSize = file.size();
    if (bytes.size() > oldSize) {
        const QByteArray beyond = bytes.sliced(oldSize);
        if (!file.seek(oldSize) || file.write(beyond) != beyond.size()) {
            file.resize(oldSize);
            throw unwritable(path, writingReason());
        }
    }
    const qint64 within = std::min(qint64{bytes.size()}, oldSize);
    if (!file.seek(0) || file.write(bytes.constData(), within) != within ||
        !file.resize(bytes.size()))
        throw unwritable(path, writingReason());
}

} // namespace

Error TextFile::errorAt(std::size_t line, const QString& reason, ErrorNumber number) const
{
    QString text = u"%1, línea %2: %3"_s.arg(displayPath(path), QString::number(line + 1), reason);
    if (!text.endsWith(u'.'))
        text += u'.';
    return Error(number, text);
}

void giveUp(const Error& fault)
{
    throw Error(fault);
}

QByteArray readFile(const QString& path, qint64 maxBytes)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw Error(ErrorNumber::FileNotFound,
                    u"No se encuentra el archivo «%1»."_s.arg(displayPath(path)));
    const auto unreadable = [&](const QString& reason) {
        return Error(ErrorNumber::FileUnreadable,
                     u"No se puede leer «%1»: %2."_s.arg(displayPath(path), reason));
    };
    if (!info.isFile())
        throw unreadable(info.isDir() ? u"es una carpeta, no un archivo"_s : u"no es un archivo"_s);
    if (info.size() > maxBytes)
        throw Error(ErrorNumber::TooLarge,
                    u"No se puede leer «%1»: ocupa %2 MB y el máximo es %3 MB."_s.arg(
                        displayPath(path), QString::number(info.size() / bytesPerMegabyte),
                        QString::number(maxBytes / bytesPerMegabyte)));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw unreadable(openingReason());
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw unreadable(u"error de lectura"_s);
    return bytes;
}

std::vector<QString> splitLines(const QString& text)
{
    std::vector<QString> lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r' && text[i] != u'\n')
            continue;
        lines.push_back(text.sliced(start, i - start));
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            ++i;
        start = i + 1;
    }
    if (start < text.size())
        lines.push_back(text.sliced(start));
    return lines;
}

TextFile readTextFile(const QString& path)
{
    return {path, splitLines(fromWindows1252(readFile(path, maxTextFileBytes)))};
}

void writeFileAtomically(const QString& path, const QByteArray& bytes)
{
    if (const QFileInfo info(path); info.exists() && !info.isFile())
        throw unwritable(path, info.isDir() ? u"hay una carpeta con ese nombre"_s
                                            : u"no es un archivo corriente"_s);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        overwrite(path, bytes);
        return;
    }
    // Flushed by hand: commit() doesn't notice when the last of the bytes find no room.
    if (file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        throw unwritable(path, writingReason());
}

void copyFileAtomically(const QString& from, const QString& to)
{
    writeFileAtomically(to, readFile(from, std::numeric_limits<qint64>::max()));
}

} // namespace platform
