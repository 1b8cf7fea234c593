#pragma once

#include <QHash>
#include <QString>

#include <vector>

class UserPrompts;

/// Reader and writer of the program's INI files. One object holds one file in memory; every change made through a write
/// operation is written to disk at once, unless AllowSaveFile is off. Names are compared exactly, the first match
/// counts.
class clsINI
{
public:
    /// `prompts` shows the message of a file that cannot be saved; it must outlive this object.
    explicit clsINI(UserPrompts &prompts) : m_prompts(prompts) {}

    /// When off, SaveFile does nothing and changes stay in memory.
    bool AllowSaveFile() const { return m_allowSaveFile; }
    void SetAllowSaveFile(bool NewAllowSaveFile) { m_allowSaveFile = NewAllowSaveFile; }

    int NumberOfSections() const { return static_cast<int>(m_sections.size()); }
    /// 0 when there is no such section.
    int NumberOfKeys(const QString &SectionName) const;
    /// Throws ProgramError for an index outside the list.
    QString SectionName(int SectionNum) const;
    /// Empty when there is no such section. Throws ProgramError for an index outside the section.
    QString KeyName(const QString &SectionName, int KeyNum) const;
    /// Renames a key in place: not sorted anew, not saved. Nothing when there is no such section.
    void SetKeyName(const QString &SectionName, int KeyNum, const QString &NewName);
    /// The name given to the last LoadINI.
    const QString &FileName() const { return m_fileName; }

    /// Writes the whole model to FileName. A failure is shown to the user and not thrown.
    void SaveFile();
    /// Replaces the model by the file's contents; a missing file gives an empty model. Throws ProgramError for a key
    /// line before the first section and for a lone "["; what was read up to there stays, and SaveFile keeps a copy of
    /// the file beside it before it replaces it. Also throws when the file is there but cannot be read: the model is
    /// then empty, and SaveFile fails rather than put it in the place of a file nobody has seen.
    void LoadINI(const QString &FileName);

    /// Removes the first section of that name, then saves.
    void DeleteSection(const QString &SectionName);
    /// Removes the first such key of the first such section, then saves.
    void DeleteKey(const QString &SectionName, const QString &KeyName);

    QString
    ReadString(const QString &SectionName, const QString &KeyName, const QString &DefaultValue = QString()) const;
    /// The value as a whole number, halves to even; text that is no number reads as 0.
    qint32 ReadLong(const QString &SectionName, const QString &KeyName, qint32 DefaultValue) const;
    /// A value that WriteFlag wrote, in any case; any other text gives the default.
    bool ReadFlag(const QString &SectionName, const QString &KeyName, bool DefaultValue) const;

    /// Sets a value, making section and key when needed, then saves.
    void WriteValue(const QString &SectionName, const QString &KeyName, const QString &Value);
    /// Writes "True" or "False".
    void WriteFlag(const QString &SectionName, const QString &KeyName, bool Value);

private:
    /// The first place of each name in a list; empty when they have to be gathered anew.
    using Places = QHash<QString, int>;

    struct Key
    {
        QString name;
        QString value;
    };
    struct Section
    {
        QString name;
        std::vector<Key> keys;
        mutable Places places;
    };

    /// How much of the file the model holds.
    enum class Seen { Nothing, Part, All };

    QString FileText() const;
    void KeepUnseen();
    QString Damage(const QString &slip) const;
    QString TakeLine(const QString &line);
    void SortKeys();
    int FindSection(const QString &name) const;
    int FindKey(int section, const QString &name) const;
    int AddSection(const QString &name);
    int AddKey(int section, const QString &name, const QString &value);

    UserPrompts &m_prompts;
    QString m_fileName;
    bool m_allowSaveFile = true;
    Seen m_seen = Seen::All;
    std::vector<Section> m_sections;
    mutable Places m_places;
};

/// Writes what changes during its life with one save, at its end.
class OneSave
{
public:
    explicit OneSave(clsINI &file) : m_file(file), m_allowed(file.AllowSaveFile()) { m_file.SetAllowSaveFile(false); }
    ~OneSave()
    {
        m_file.SetAllowSaveFile(m_allowed);
        m_file.SaveFile();
    }
    OneSave(const OneSave &) = delete;
    OneSave &operator=(const OneSave &) = delete;

private:
    clsINI &m_file;
    bool m_allowed;
};
