#pragma once

#include <QtGlobal>

class CatalogDocument;
class UserPrompts;

/// Sees to it that nothing is lost by the saving of catalogs: what another program wrote is replaced only when the user
/// says so, and kept then.
class SafeOverwrite
{
public:
    /// Both must outlive this object.
    SafeOverwrite(const CatalogDocument &document, UserPrompts &prompts);

    /// Before the document is saved. False when the user keeps what another program wrote. Throws ProgramError when
    /// that cannot be read, or not be kept.
    bool BeforeSave();

private:
    bool IsOnDisk(quint64 digest) const;
    bool MayOverwrite() const;
    quint64 KeepOther() const;

    const CatalogDocument &m_document;
    UserPrompts &m_prompts;
};
