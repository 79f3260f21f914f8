#include "platform/core/console.h"

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

bool platform::isTerminal(std::FILE* stream)
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

void platform::passBytes([[maybe_unused]] std::FILE* stream)
{
#ifdef Q_OS_WIN
    _setmode(_fileno(stream), _O_BINARY);
#endif
}
