#pragma once

#include "platform/core/list_items.h"

#include <QString>
#include <vector>

/// What tells the four catalogues apart; the code that reads, shows and writes them is the same.
struct CatalogueKind {
    QString file;          ///< name in the folder ini
    QString headerLine;    ///< first line of the file as written
    QString loadProcedure; ///< name in error reports
    QString oneItem;       ///< "arma"
    QString manyItems;     ///< "armas"
    bool keyHasType;       ///< the item key is name-type instead of the name alone
    /// The fields of a record in file order, from the name on; they are also the list's columns.
    std::vector<platform::ListColumn> fields;

    std::size_t imageField() const { return positionOf(QStringLiteral("imagen")); }
    /// The item key of a record with these field values, in file order.
    QString itemKey(const QString& name, const QString& secondField) const;
    /// "84 armas".
    QString counted(int items) const;

private:
    std::size_t positionOf(const QString& key) const;
};

/// The field whose text may have several lines.
inline const QString notesField = QStringLiteral("notas");

/// The most records that a catalogue file holds.
inline constexpr int maxCatalogueItems = 32767;

const CatalogueKind& armasKind();
const CatalogueKind& armadurasKind();
const CatalogueKind& equipoKind();
const CatalogueKind& conjurosKind();
