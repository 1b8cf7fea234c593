#include "recovery.h"

#include "catalogcopies.h"
#include "catalogdocument.h"
#include "contentdigest.h"
#include "failures.h"
#include "modXMLSubs.h"
#include "paths.h"
#include "prompts.h"
#include "restoring.h"
#include "xmlencoding.h"
#include "xmlwriter.h"

#include <QApplication>
#include <QWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmMain";
constexpr auto kTitle = "Recovery"_L1;

/// Returns where.
QString KeepCatalog(pugi::xml_document &edited, const QString &catalog)
{
    CleanXML(edited);
    QString path = NewCopyPath(kTitle, catalog, ContentDigest(XmlText(edited)));
    SaveXml(edited, XmlEncoding(), path, catalog);
    return path;
}

/// Under a name that is not looked for any more. Returns what to say of it.
QString PutAside(std::unique_ptr<BesideFile> journal)
{
    const QString from = journal->Target();
    QString to = from + u".kept"_s;
    journal.reset();
    RenameFile(from, to);
    return u"\r\nWhat could not be understood is kept in\r\n"_s + to;
}

} // namespace

Recovery::Recovery(CatalogDocument &document, UserPrompts &prompts)
    : m_document(document),
      m_prompts(prompts),
      m_journal(document)
{
    connect(qApp, &QApplication::focusChanged, this, &Recovery::Flush);
    // Told when the edit is done: a question in the middle of it would run an event loop.
    connect(&m_journal, &Journal::failed, this, &Recovery::TellOfFailure, Qt::QueuedConnection);
}

void Recovery::Offer()
{
    Guarded(kModule, "OfferRecovery", [this] {
        const QString catalog = CanonicalPath(m_document.Path());
        m_journal.Begin(catalog);
        for (FoundJournal &found : FindJournals(catalog, m_document.ContentDigest())) {
            if (found.contents.edits.IsEmpty())
                Guarded(kModule, "KeepApart", [&] { KeepRest(std::move(found.file)); });
            else if (found.contents.digest != m_document.ContentDigest())
                Guarded(kModule, "KeepApart", [&] { KeepApart(found); });
            else if (EndsTheOffer(found))
                return;
        }
    });
}

/// Asks for one journal's edits. Others wait for another opening when these are taken, or nothing is answered.
bool Recovery::EndsTheOffer(FoundJournal &found)
{
    const auto answer = m_prompts.Message(
        u"Unsaved changes to this catalog were found.  Restore them?"_s, kTitle, UserPrompts::Icon::Question,
        UserPrompts::Buttons::YesNoOrNeither);
    if (answer == UserPrompts::Answer::No)
        found.file->Remove();
    if (answer == UserPrompts::Answer::Yes) {
        const bool all = m_document.Restore(found.contents.edits) && !found.contents.isDamaged;
        auto damaged = all ? nullptr : std::move(found.file);
        m_journal.GoOnWith(std::move(found)); // they are not saved yet
        if (damaged)
            KeepRest(std::move(damaged));
    }
    return answer != UserPrompts::Answer::No;
}

void Recovery::KeepRest(std::unique_ptr<BesideFile> journal)
{
    const QString text = u"Not all unsaved changes to this catalog could be restored."_s;
    m_prompts.Message(text + PutAside(std::move(journal)), kTitle, UserPrompts::Icon::Information);
}

/// Edits of another content are not mixed into this one. The journal goes when all that it has is somewhere else, or
/// told.
void Recovery::KeepApart(FoundJournal &found)
{
    pugi::xml_document edited;
    const NotGathered rest = GatherEdits(edited, found.contents.edits);
    QString text = u"Unsaved changes to this catalog were found, but the catalog has changed since they were made."_s;
    if (edited.document_element().first_child())
        text += u"  They are kept as a catalog of their own:\r\n"_s + KeepCatalog(edited, m_document.Path());
    if (rest.removals > 0)
        text += u"\r\nDeletions that were not done again: %1"_s.arg(rest.removals);
    if (rest.senseless > 0 || !found.contents.isWhole)
        text += PutAside(std::move(found.file));
    else
        found.file->Remove();
    m_prompts.Message(text, kTitle, UserPrompts::Icon::Information);
}

void Recovery::TellOfFailure(const QString &reason)
{
    if (std::exchange(m_toldOfFailure, true))
        return;
    m_prompts.Message(
        u"Changes that are not saved yet could not be kept for a recovery.\r\n"_s + reason, kTitle,
        UserPrompts::Icon::Information);
}
