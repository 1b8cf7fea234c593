#pragma once

#include "catalogedits.h"

#include <QByteArray>
#include <QString>

#include <optional>

// A journal is a head and records behind it, each with its digest, so that a damaged one tells what is whole before the
// damage.

/// What a journal tells.
struct JournalContents
{
    QString catalog;    ///< the canonical path of its file
    quint64 digest = 0; ///< of the content on which the edits were made
    CatalogEdits edits;
};

/// The bytes with which a journal begins.
QByteArray JournalHead(const QString &catalog, quint64 digest);

/// The bytes of an edit. Of a text that makes up for an earlier one only what differs is in them.
QByteArray JournalRecord(const CatalogEdit &edit, const QByteArray &earlier);

/// Reads a journal up to its end or its first damage. Nothing when there is no whole head.
std::optional<JournalContents> ReadJournal(const QByteArray &bytes);
