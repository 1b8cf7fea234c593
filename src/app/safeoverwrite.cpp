#include "safeoverwrite.h"

#include "catalogcopies.h"
#include "catalogdocument.h"
#include "filecopy.h"
#include "flatfile.h"
#include "paths.h"
#include "prompts.h"
#include "waitcursor.h"

#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

SafeOverwrite::SafeOverwrite(const CatalogDocument &document, UserPrompts &prompts)
    : m_document(document),
      m_prompts(prompts)
{
}

/// What was kept is as good as known, but the file may have changed again while it was copied, or the user was asked
/// and told.
bool SafeOverwrite::BeforeSave()
{
    m_noBackup.clear();
    quint64 known = m_document.ContentDigest();
    while (!IsOnDisk(known) || !IsKept(known)) {
        if (!MayOverwrite())
            return false;
        known = KeepOther();
    }
    return true;
}

void SafeOverwrite::Written(const QString &path, const SavedXml &saved)
{
    m_kept[CanonicalPath(path)] = saved.digest;
    TellOfNoBackup();
    TellOfLost(path, saved.lost);
}

void SafeOverwrite::TellOfLost(const QString &path, const QStringList &lost)
{
    const QString catalog = CanonicalPath(path);
    if (lost.isEmpty() || m_toldOfLost.contains(catalog))
        return;
    m_toldOfLost += catalog;
    const QString text = u"%1 was saved, but the system did not let these be kept of the file as it was: %2."_s;
    m_prompts.Message(text.arg(FileTitle(path, true), lost.join(u", "_s)), u"Save"_s, UserPrompts::Icon::Information);
}

/// Also true when there is no file, which may come back with the content that it had. What another program wrote and
/// this one opened is not of this run.
bool SafeOverwrite::IsKept(quint64 digest)
{
    const QString &path = m_document.Path();
    return IsMissing(path) || m_kept.value(CanonicalPath(path)) == digest || BackUp(path, digest);
}

/// False when the file has another content. A failure hinders no save; it is told after that.
bool SafeOverwrite::BackUp(const QString &path, std::optional<quint64> digest)
{
    m_noBackup.clear();
    try {
        const WaitCursor wait;
        if (!BackUpCatalog(path, digest))
            return false;
        if (digest)
            m_kept[CanonicalPath(path)] = *digest;
    } catch (const std::exception &reason) {
        m_noBackup = QString::fromUtf8(reason.what());
    }
    return true;
}

void SafeOverwrite::TellOfNoBackup()
{
    if (m_noBackup.isEmpty() || std::exchange(m_toldOfNoBackup, true))
        return;
    const QString text = u"The catalog is saved without a backup of how it was.\r\n%1"_s;
    m_prompts.Message(text.arg(m_noBackup), u"Backup"_s, UserPrompts::Icon::Information);
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

quint64 SafeOverwrite::KeepOther()
{
    const auto copy = [this] {
        const WaitCursor wait;
        return CopyToRecovery(m_document.Path());
    }();
    m_kept[CanonicalPath(m_document.Path())] = copy.digest;
    m_prompts.Message(
        u"What the other program wrote was copied to\r\n%1"_s.arg(copy.path), u"Save"_s,
        UserPrompts::Icon::Information);
    return copy.digest;
}
