#include "platform/core/text_codec.h"

#include "platform/core/error.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

// The characters of the bytes 0x80 to 0x9F; all other bytes are their own code point.
constexpr std::array<char16_t, 32> highControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr char16_t firstHigh = 0x80;
constexpr char16_t firstLatin = 0xA0;
constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");

std::optional<char> encode(char16_t character)
{
    if (character < firstHigh || (character >= firstLatin && character <= 0xFF))
        return static_cast<char>(character);
    const auto* const found = std::find(highControls.begin(), highControls.end(), character);
    if (found == highControls.end())
        return std::nullopt;
    return static_cast<char>(firstHigh + (found - highControls.begin()));
}

QString codePointAt(QStringView text, qsizetype index)
{
    const bool pair = text[index].isHighSurrogate() && index + 1 < text.size() &&
                      text[index + 1].isLowSurrogate();
    return text.sliced(index, pair ? 2 : 1).toString();
}

} // namespace

QString fromWindows1252(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        const bool high = code >= firstHigh && code < firstLatin;
        return QChar(high ? highControls[code - firstHigh] : char16_t{code});
    });
    return text;
}

QByteArray toWindows1252(QStringView text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const std::optional<char> byte = encode(text[i].unicode());
        if (!byte)
            throw Error(ErrorNumber::BadCharacter,
                        u"el carácter «%1» no se puede guardar en los archivos del "
                        "programa (página de códigos Windows-1252)"_s.arg(codePointAt(text, i)));
        bytes[i] = *byte;
    }
    return bytes;
}

std::optional<DecodedText> decodeText(QByteArrayView bytes)
{
    if (bytes.startsWith(utf8Mark)) {
        const QByteArrayView marked = bytes.sliced(utf8Mark.size());
        if (!marked.isValidUtf8())
            return std::nullopt;
        return DecodedText{QString::fromUtf8(marked), true};
    }
    const bool beyondAscii = std::any_of(bytes.begin(), bytes.end(), [](char byte) {
        return static_cast<unsigned char>(byte) >= firstHigh;
    });
    if (beyondAscii && bytes.isValidUtf8())
        return DecodedText{QString::fromUtf8(bytes), true};
    return DecodedText{fromWindows1252(bytes), false};
}

QByteArray encodeText(QStringView text)
{
    QByteArray bytes = toWindows1252(text);
    const std::optional<DecodedText> read = decodeText(bytes);
    return read && !read->isUtf8 ? bytes : utf8Text(text);
}

QByteArray utf8Text(QStringView text)
{
    return utf8Mark.toByteArray() + text.toUtf8();
}

std::optional<QString> firstOutsideWindows1252(QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!encode(text[i].unicode()))
            return codePointAt(text, i);
    }
    return std::nullopt;
}

QChar withoutSeparator(QChar c, const QString& separators)
{
    if (!separators.contains(c))
        return c;
    return c == u';' ? u',' : u'/';
}

QString notesToFile(QString notes)
{
    return notes.replace(u"\r\n"_s, QString(lineBreakMark))
        .replace(u'\r', lineBreakMark)
        .replace(u'\n', lineBreakMark);
}

QString notesFromFile(QString line)
{
    return line.replace(lineBreakMark, u'\n');
}

} // namespace platform
