#include "safeoverwrite.h"

#include "catalogcopies.h"
#include "catalogdocument.h"
#include "filecopy.h"
#include "paths.h"
#include "prompts.h"
#include "waitcursor.h"

using namespace Qt::StringLiterals;

SafeOverwrite::SafeOverwrite(const CatalogDocument &document, UserPrompts &prompts)
    : m_document(document),
      m_prompts(prompts)
{
}

/// What was kept is as good as known, but the file may have changed again while the user was asked and told.
bool SafeOverwrite::BeforeSave()
{
    if (!m_backedUp.contains(CanonicalPath(m_document.Path())))
        BackUp(m_document.Path(), m_document.ContentDigest());
    quint64 known = m_document.ContentDigest();
    while (!IsOnDisk(known)) {
        if (!MayOverwrite())
            return false;
        known = KeepOther();
    }
    return true;
}

void SafeOverwrite::Written(const QString &path)
{
    m_backedUp += CanonicalPath(path);
}

void SafeOverwrite::BackUp(const QString &path, std::optional<quint64> digest)
{
    try {
        const WaitCursor wait;
        if (BackUpCatalog(path, digest))
            m_backedUp += CanonicalPath(path);
    } catch (const std::exception &reason) {
        TellOfNoBackup(reason);
    }
}

void SafeOverwrite::TellOfNoBackup(const std::exception &reason)
{
    if (m_toldOfNoBackup)
        return;
    m_toldOfNoBackup = true;
    const QString text = u"The catalog is saved without a backup of how it was.\r\n%1"_s;
    m_prompts.Message(text.arg(QString::fromUtf8(reason.what())), u"Backup"_s, UserPrompts::Icon::Information);
}

/// Also true when there is no file: nothing is overwritten then.
bool SafeOverwrite::IsOnDisk(quint64 digest) const
{
    const WaitCursor wait;
    return FileDigest(m_document.Path()).value_or(digest) == digest;
}

bool SafeOverwrite::MayOverwrite() const
{
    return m_prompts.Message(
               u"This catalog was changed by another program since it was opened.  Overwrite it?"_s,
               u"Save Confirmation"_s, UserPrompts::Icon::Question,
               UserPrompts::Buttons::YesNoDefaultNo) == UserPrompts::Answer::Yes;
}

quint64 SafeOverwrite::KeepOther() const
{
    const auto copy = [this] {
        const WaitCursor wait;
        return CopyToRecovery(m_document.Path());
    }();
    m_prompts.Message(
        u"What the other program wrote was copied to\r\n%1"_s.arg(copy.path), u"Save"_s,
        UserPrompts::Icon::Information);
    return copy.digest;
}
