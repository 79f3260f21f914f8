#pragma once

#include <QString>
#include <exception>

namespace platform {

/// What kind of thing went wrong. The numbers are shown to users in error reports, so they never
/// change meaning.
enum class ErrorNumber {
    BadFormat = 1,      ///< a file's text breaks the rules of its format
    FileNotFound = 2,   ///< the file or folder isn't there
    FileUnreadable = 3, ///< it is there, but can't be read
    FileUnwritable = 4, ///< it can't be created, replaced or filled
    BadPicture = 5,     ///< the file isn't a readable GIF picture
    DuplicateKey = 6,   ///< a keyed list already holds that key
    NoSuchKey = 7,      ///< a keyed list doesn't hold that key or field
    BadCharacter = 8,   ///< a character has no place in the data files' code page
    BadName = 9,        ///< a text can't be used as the name it was given for
    TooLarge = 10,      ///< more than the program is ready to hold
};

/// The one exception of the program: a number and a Spanish text that names the file, the line and
/// the reason, ready to be shown to the user.
class Error : public std::exception
{
public:
    Error(ErrorNumber number, const QString& description)
        : number(number),
          description(description),
          utf8_(description.toUtf8())
    {
    }

    const char* what() const noexcept override { return utf8_.constData(); }

    ErrorNumber number;
    QString description;

private:
    QByteArray utf8_;
};

} // namespace platform
