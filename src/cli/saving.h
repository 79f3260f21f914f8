#pragma once

#include <QByteArray>
#include <QString>

/// The name that a map has by its file; empty if that can't be a map's name.
QString nameByFile(const QString& path);

/// Saves a map's file as platform::saveFile does, and tells on standard error what the user is to
/// know of that. Throws Error.
void saveMapBytes(const QString& path, const QByteArray& bytes);
