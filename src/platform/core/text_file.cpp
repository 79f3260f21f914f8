#include "platform/core/text_file.h"

#include "platform/core/app_folder.h"
#include "platform/core/text_codec.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr qint64 bytesPerMegabyte = 1024 * 1024;

/// Why a file can't be found: it may be its folder that is missing.
QString missingReason(const QString& path)
{
    const QFileInfo folder(QFileInfo(path).path());
    if (folder.isDir())
        return u"No se encuentra el archivo «%1»."_s.arg(displayPath(path));
    return u"No se encuentra el archivo «%1»: falta la carpeta «%2»."_s.arg(
        displayPath(path), displayPath(folder.filePath()));
}

} // namespace

Error TextFile::errorAt(std::size_t line, const QString& reason, ErrorNumber number) const
{
    QString description =
        u"%1, línea %2: %3"_s.arg(displayPath(path), QString::number(line + 1), reason);
    if (!description.endsWith(u'.'))
        description += u'.';
    return Error(number, description);
}

void giveUp(const Error& fault)
{
    throw Error(fault);
}

QByteArray readFile(const QString& path, qint64 maxBytes)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw Error(ErrorNumber::FileNotFound, missingReason(path));
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
        throw unreadable(u"no se puede abrir; compruebe los permisos del archivo"_s);
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

DecodedText decodeFile(const QString& path, const QByteArray& bytes)
{
    std::optional<DecodedText> decoded = decodeText(bytes);
    if (!decoded)
        throw TextFile{path, {}}.errorAt(
            0, u"el archivo lleva la marca de UTF-8, pero no está en UTF-8"_s);
    return *std::move(decoded);
}

TextFile readTextFile(const QString& path)
{
    return textFileOf(path, readFile(path, maxTextFileBytes));
}

TextFile textFileOf(const QString& path, const QByteArray& bytes)
{
    DecodedText decoded = decodeFile(path, bytes);
    std::vector<QString> lines = splitLines(decoded.text);
    return {path,
            std::move(lines),
            std::move(decoded.text),
            {path, contentDigest(bytes)},
            decoded.isUtf8};
}

QString TextFile::textFrom(std::size_t line) const
{
    qsizetype start = 0;
    for (std::size_t i = 0; i < line && i < lines.size(); ++i) {
        start += lines[i].size();
        start += QStringView(text).sliced(start).startsWith(u"\r\n") ? 2 : 1;
    }
    return text.sliced(std::min(start, text.size()));
}

} // namespace platform
