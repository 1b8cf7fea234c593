#include "recovery.h"

#include "catalogcopies.h"
#include "catalogdocument.h"
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

constexpr auto kTitle = "Recovery"_L1;

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
    Guarded("frmMain", "OfferRecovery", [this] {
        const QString catalog = CanonicalPath(m_document.Path());
        m_journal.Begin(catalog);
        for (FoundJournal &found : FindJournals(catalog)) {
            if (found.contents.digest != m_document.ContentDigest())
                KeepApart(found);
            else if (TakesBack(found))
                return;
        }
    });
}

/// Asks for one journal's edits. Older ones wait for another opening when these are taken.
bool Recovery::TakesBack(FoundJournal &found)
{
    const auto answer = m_prompts.Message(
        u"Unsaved changes to this catalog were found.  Restore them?"_s, kTitle, UserPrompts::Icon::Question,
        UserPrompts::Buttons::YesNo);
    const bool takes = answer == UserPrompts::Answer::Yes;
    if (takes)
        m_document.Restore(found.contents.edits);
    // They are not saved yet.
    if (!takes || m_journal.GoOnWith(std::move(found.contents.edits)))
        found.file->Remove();
    return takes;
}

/// Edits of another content are not mixed into this one.
void Recovery::KeepApart(FoundJournal &found)
{
    pugi::xml_document edited;
    GatherEdits(edited, found.contents.edits);
    CleanXML(edited);
    const QString path = NewCopyPath(kTitle, m_document.Path());
    SaveXml(edited, XmlEncoding(), path, m_document.Path());
    found.file->Remove();
    m_prompts.Message(
        u"Unsaved changes to this catalog were found, but the catalog has changed since they were made.  They are kept "
        u"as "
        u"a catalog of their own:\r\n"_s +
            path,
        kTitle, UserPrompts::Icon::Information);
}

void Recovery::TellOfFailure(const QString &reason)
{
    if (std::exchange(m_toldOfFailure, true))
        return;
    m_prompts.Message(
        u"Changes that are not saved yet could not be kept for a recovery.\r\n"_s + reason, kTitle,
        UserPrompts::Icon::Information);
}
