#pragma once

#include <QImage>
#include <QString>
#include <functional>

/// What there is to see of a file.
struct FileLook {
    QString text; ///< what it holds, or why it can't be read
    bool isReadable = false;
    QImage picture{}; ///< null if there is none
};

/// Looks at a file in the background, which takes no exception: one that says why the file can't be
/// read becomes the look.
FileLook lookOrReason(const std::function<FileLook()>& look);
