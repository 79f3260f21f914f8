#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// A row of a table in a text of comma-separated values (RFC 4180).
struct CsvRow {
    int line = 0; ///< of the text where it begins, counted from 1
    QStringList fields;
    bool isClosed = true; ///< false for the last one, if its quotes never end
};

/// A row as a line of such a text, with its end.
QString csvLine(const QStringList& fields);

/// Takes a text apart. Its fields are separated by whichever of comma, semicolon and tab the first
/// line has most of. Empty lines are left out.
std::vector<CsvRow> csvRows(const QString& text);

/// A text as a cell that no spreadsheet takes for a formula: with an apostrophe before it, if it
/// begins with =, +, - or @, or with apostrophes before one of them. And back.
QString guardedCell(const QString& text);
QString unguardedCell(const QString& cell);
