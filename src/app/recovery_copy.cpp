#include "app/recovery_copy.h"

#include "platform/core/app_folder.h"
#include "platform/core/text_codec.h"
#include "platform/core/text_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

namespace {

constexpr QByteArrayView firstLine("Kestrune, copia de recuperación 1");
constexpr qsizetype headLines = 7;

QByteArray checkSum(const QByteArray& content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
}

QByteArray relative(const QString& path)
{
    const QString root = platform::appFolder() + u'/';
    return (path.startsWith(root) ? path.sliced(root.size()) : path).toUtf8();
}

QString absolute(const QByteArray& path)
{
    return path.isEmpty() ? QString()
                          : QDir(platform::appFolder()).filePath(QString::fromUtf8(path));
}

} // namespace

QByteArray bytesOf(const RecoveryCopy& copy)
{
    const QByteArrayList head{firstLine.toByteArray(),   copy.work.toUtf8(),
                              relative(copy.target),     relative(copy.known.path),
                              copy.known.digest.toHex(), copy.when.toString(Qt::ISODate).toUtf8(),
                              checkSum(copy.content)};
    return head.join('\n') + '\n' + copy.content;
}

RecoveryCopy readRecoveryCopy(const QString& path)
{
    constexpr qint64 mostBytes = platform::maxTextFileBytes + 64 * 1024;
    const QByteArray bytes = platform::readFile(path, mostBytes);
    const auto fail = [&](const QString& reason) {
        return Error(ErrorNumber::BadFormat, u"La copia de recuperación «%1» %2."_s.arg(
                                                 platform::displayPath(path), reason));
    };
    QByteArrayList head;
    qsizetype start = 0;
    while (head.size() < headLines) {
        const qsizetype end = bytes.indexOf('\n', start);
        if (end < 0)
            throw fail(u"está incompleta"_s);
        head.append(bytes.sliced(start, end - start));
        start = end + 1;
        if (head.first() != firstLine)
            throw fail(u"es de otra versión del programa, o no es una copia"_s);
    }
    RecoveryCopy copy{QString::fromUtf8(head[1]),
                      absolute(head[2]),
                      {absolute(head[3]), QByteArray::fromHex(head[4])},
                      QDateTime::fromString(QString::fromUtf8(head[5]), Qt::ISODate),
                      bytes.sliced(start),
                      path};
    if (head[6] != checkSum(copy.content))
        throw fail(u"está dañada o incompleta"_s);
    if (!copy.when.isValid())
        copy.when = QFileInfo(path).lastModified();
    return copy;
}

QByteArray copyContent(const QString& text)
{
    try {
        return platform::encodeText(text);
    } catch (const Error&) {
        return platform::utf8Text(text);
    }
}
