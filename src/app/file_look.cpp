#include "app/file_look.h"

#include "platform/core/error.h"

using namespace Qt::StringLiterals;

FileLook lookOrReason(const std::function<FileLook()>& look)
{
    try {
        return look();
    } catch (const platform::Error& error) {
        return {error.description};
    } catch (const std::exception& error) {
        return {u"No se puede leer: %1."_s.arg(QString::fromUtf8(error.what()))};
    }
}
