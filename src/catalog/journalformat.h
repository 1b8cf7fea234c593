#pragma once

#include "catalogedits.h"

#include <QByteArray>
#include <QString>

// A journal is a head and records behind it, each with its digest, so that a damaged one tells what is whole before the
// damage.

/// What a journal tells.
struct JournalContents
{
    QString catalog;    ///< the canonical path of its file
    quint64 digest = 0; ///< of the content on which the edits were made
    CatalogEdits edits;
    quint64 savedAs = 0;     ///< of the content that the last save was about to put in the catalog's place; 0: none was
    CatalogEdits laterEdits; ///< those that were made behind that save
    bool isWhole = false;    ///< all was read
    bool isDamaged = false;  ///< more is lost than a record that was cut off at the end
};

/// The bytes with which a journal begins.
QByteArray JournalHead(const QString &catalog, quint64 digest);

/// The bytes of an edit. Of a text that makes up for an earlier one only what differs is in them.
QByteArray JournalRecord(const CatalogEdit &edit, const QByteArray &earlier);

/// The bytes which tell that a save is about to put this content in the catalog's place. Whether it did is told by the
/// catalog.
QByteArray SavingRecord(quint64 digest);

/// Whether a later program wrote it, in a way of its own.
bool IsOfLaterFormat(const QByteArray &bytes);

/// Reads a journal up to its end or its first damage. Without a whole head it tells nothing, not even a catalog.
JournalContents ReadJournal(const QByteArray &bytes);
