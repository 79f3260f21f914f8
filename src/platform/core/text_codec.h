#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace platform {

/// Windows-1252, the code page of every data file. All 256 bytes decode to distinct characters
/// (the five that the code page leaves open stand for the control characters of the same number),
/// so decoding and encoding again always gives the same bytes.
QString fromWindows1252(QByteArrayView bytes);

/// The inverse. Throws Error (BadCharacter) that names the first character the code page lacks.
QByteArray toWindows1252(QStringView text);

/// The text of a data file, and what it was in.
struct DecodedText {
    QString text;
    bool isUtf8;
};

/// Decodes the bytes of a data file. They are taken as UTF-8 when they begin with its mark, which
/// is left out, or when they hold bytes above 127 and all of these form valid UTF-8, as modern text
/// editors write them; else as Windows-1252. Nothing for bytes that have the mark but aren't UTF-8.
std::optional<DecodedText> decodeText(QByteArrayView bytes);

/// The bytes of a data file with that text: Windows-1252, or UTF-8 with its mark where decodeText
/// would take those for another text ("Ã±" for "ñ"). Throws Error (BadCharacter), as toWindows1252
/// does.
QByteArray encodeText(QStringView text);

/// A text in UTF-8, with its mark.
QByteArray utf8Text(QStringView text);

/// The first character (a whole code point) of the text that the code page lacks, if there is one.
std::optional<QString> firstOutsideWindows1252(QStringView text);

/// The characters that separate fields: in the files of definitions and catalogues, and in maps.
inline const QString fieldSeparators = QStringLiteral(";");
inline const QString mapSeparators = QStringLiteral(";|");

/// What a character that separates fields is turned into: "," or "/"; any other stays.
QChar withoutSeparator(QChar c, const QString& separators);

/// The mark that stands for a line break of notes in a file.
inline constexpr QChar lineBreakMark = u'\u00B6';

/// Notes as a file holds them, on one line: line breaks become a mark. And back.
QString notesToFile(QString notes);
QString notesFromFile(QString line);

} // namespace platform
