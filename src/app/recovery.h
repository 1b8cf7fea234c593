#pragma once

#include "journal.h"

#include <QObject>
#include <QString>

class CatalogDocument;
class UserPrompts;

/// Keeps what is edited and not saved, and offers it when the catalog is opened after the program or the machine died.
class Recovery : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this object.
    Recovery(CatalogDocument &document, UserPrompts &prompts);

    /// Offers what was left of edits of the catalog that has just been loaded, and keeps those that follow.
    void Offer();

    /// A field, a listing or the window is left.
    void Flush() { m_journal.Flush(); }

    /// Gives up what is not saved.
    void DropEdits() { m_journal.Discard(); }

private:
    bool EndsTheOffer(FoundJournal &found);
    void KeepRest(std::unique_ptr<BesideFile> journal);
    void KeepApart(FoundJournal &found);
    void TellOfFailure(const QString &reason);

    CatalogDocument &m_document;
    UserPrompts &m_prompts;
    Journal m_journal;
    bool m_toldOfFailure = false;
};
