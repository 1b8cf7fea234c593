#include "clsINI.h"

#include "failures.h"
#include "flatfile.h"
#include "keyorder.h"
#include "numbers.h"
#include "prompts.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

template<class List>
QHash<QString, int> FirstPlaces(const List &list)
{
    QHash<QString, int> places;
    places.reserve(static_cast<qsizetype>(list.size()));
    for (int i = static_cast<int>(list.size()) - 1; i >= 0; --i)
        places.insert(list[static_cast<size_t>(i)].name, i);
    return places;
}

template<class List>
int FindName(const List &list, QHash<QString, int> &places, const QString &name)
{
    if (places.isEmpty())
        places = FirstPlaces(list);
    return places.value(name, -1);
}

template<class List>
auto &At(List &list, int index)
{
    if (index < 0 || index >= static_cast<int>(list.size()))
        throw ProgramError(Failure::OutOfRange, u"Subscript out of range"_s);
    return list[static_cast<size_t>(index)];
}

// A line break inside a name or a value would make lines of its own when the file is read again: keys that nobody
// wrote.
QString OneLine(QString text)
{
    return text.remove(u'\r').remove(u'\n');
}

QString FlagText(bool value)
{
    return value ? u"True"_s : u"False"_s;
}

// The first free name of these: the file's own with ".damaged", ".damaged-2", ".damaged-3" ...
QString CopyName(const QString &fileName)
{
    QString name = fileName + u".damaged"_s;
    for (int i = 2; QFileInfo::exists(name); ++i)
        name = u"%1.damaged-%2"_s.arg(fileName).arg(i);
    return name;
}

} // namespace

int clsINI::NumberOfKeys(const QString &SectionName) const
{
    const int section = FindSection(SectionName);
    return section < 0 ? 0 : static_cast<int>(At(m_sections, section).keys.size());
}

QString clsINI::SectionName(int SectionNum) const
{
    return At(m_sections, SectionNum).name;
}

QString clsINI::KeyName(const QString &SectionName, int KeyNum) const
{
    const int section = FindSection(SectionName);
    return section < 0 ? QString() : At(At(m_sections, section).keys, KeyNum).name;
}

void clsINI::SetKeyName(const QString &SectionName, int KeyNum, const QString &NewName)
{
    const int section = FindSection(SectionName);
    if (section < 0)
        return;
    At(At(m_sections, section).keys, KeyNum).name = NewName;
    At(m_sections, section).places.clear();
}

void clsINI::SaveFile()
{
    if (!m_allowSaveFile)
        return;
    const auto tell = [this](const QString &reason) {
        m_prompts.Message(u"Could not save INI file."_s, u"clsINI.SaveFile: "_s + reason, UserPrompts::Icon::Critical);
    };
    try {
        KeepUnseen();
        WriteFlatFile(m_fileName, FileText());
    } catch (const ProgramError &error) {
        tell(error.description());
    } catch (const std::exception &error) {
        tell(QString::fromUtf8(error.what()));
    }
}

// What the model does not hold of a file would be lost when the model replaces it.
void clsINI::KeepUnseen()
{
    if (m_seen != Seen::All && !IsMissing(m_fileName)) {
        if (m_seen == Seen::Nothing)
            throw ProgramError(Failure::Write, u"The file could not be read and is not replaced"_s);
        WriteFileAtomically(CopyName(m_fileName), ReadWholeFile(m_fileName), m_fileName);
    }
    m_seen = Seen::All;
}

QString clsINI::FileText() const
{
    QString text;
    for (const Section &section : m_sections) {
        if (!text.isEmpty())
            text += u"\r\n"_s;
        text += u'[' + OneLine(section.name) + u"]\r\n"_s;
        for (const Key &key : section.keys)
            text += OneLine(key.name) + u'=' + OneLine(key.value) + u"\r\n"_s;
    }
    return text;
}

void clsINI::LoadINI(const QString &FileName)
{
    m_sections.clear();
    m_places.clear();
    m_fileName = FileName;
    m_seen = Seen::All;
    if (FileName.isEmpty() || IsMissing(FileName))
        return;
    m_seen = Seen::Nothing;
    QString text = DecodeFlatText(ReadWholeFile(FileName));
    m_seen = Seen::Part;
    const QStringList lines = text.replace(u'\r', u'\n').split(u'\n', Qt::SkipEmptyParts);
    QString slip;
    for (auto line = lines.begin(); slip.isEmpty() && line != lines.end(); ++line)
        slip = TakeLine(*line);
    SortKeys();
    if (!slip.isEmpty())
        throw ProgramError(Failure::BadFile, Damage(slip));
    m_seen = Seen::All;
}

// A search for the place of each of very many keys would take minutes.
void clsINI::SortKeys()
{
    for (Section &section : m_sections) {
        std::vector<const QString *> names;
        for (const Key &key : section.keys)
            names.push_back(&key.name);
        std::vector<Key> sorted;
        for (const int place : KeyOrder(names))
            sorted.push_back(std::move(At(section.keys, place)));
        section.keys = std::move(sorted);
    }
}

// What the report of a load that ended at a slip tells.
QString clsINI::Damage(const QString &slip) const
{
    return u"%1: %2\r\nWhat follows was not read. Before the program writes this file, it keeps a copy of it as %3."_s
        .arg(slip, QDir::toNativeSeparators(m_fileName), QFileInfo(CopyName(m_fileName)).fileName());
}

// Returns the slip that ends the reading there, if it is one. Keys stay in the file's order.
QString clsINI::TakeLine(const QString &line)
{
    if (line.startsWith(u'[')) {
        if (line.size() == 1)
            return u"A section without a name"_s;
        AddSection(line.sliced(1, line.size() - 2));
        return {};
    }
    const qsizetype equals = line.indexOf(u'=');
    if (line.startsWith(u';') || equals < 0)
        return {};
    if (m_sections.empty())
        return u"A key before the first section"_s;
    m_sections.back().keys.push_back({line.first(equals), line.sliced(equals + 1)});
    return {};
}

void clsINI::DeleteSection(const QString &SectionName)
{
    const int section = FindSection(SectionName);
    if (section >= 0) {
        m_sections.erase(m_sections.begin() + section);
        m_places.clear();
    }
    SaveFile();
}

void clsINI::DeleteKey(const QString &SectionName, const QString &KeyName)
{
    const int section = FindSection(SectionName);
    const int key = FindKey(section, KeyName);
    if (key >= 0) {
        auto &[name, keys, places] = At(m_sections, section);
        keys.erase(keys.begin() + key);
        places.clear();
    }
    SaveFile();
}

QString clsINI::ReadString(const QString &SectionName, const QString &KeyName, const QString &DefaultValue) const
{
    const int section = FindSection(SectionName);
    const int key = FindKey(section, KeyName);
    return key < 0 ? DefaultValue : At(At(m_sections, section).keys, key).value;
}

qint32 clsINI::ReadLong(const QString &SectionName, const QString &KeyName, qint32 DefaultValue) const
{
    return WholeNumber(LeadingNumber(ReadString(SectionName, KeyName, QString::number(DefaultValue))));
}

bool clsINI::ReadFlag(const QString &SectionName, const QString &KeyName, bool DefaultValue) const
{
    const QString text = ReadString(SectionName, KeyName);
    return text.compare(FlagText(!DefaultValue), Qt::CaseInsensitive) == 0 ? !DefaultValue : DefaultValue;
}

void clsINI::WriteValue(const QString &SectionName, const QString &KeyName, const QString &Value)
{
    int section = FindSection(SectionName);
    if (section < 0)
        section = AddSection(SectionName);
    const int key = FindKey(section, KeyName);
    if (key < 0)
        AddKey(section, KeyName, Value);
    else
        At(At(m_sections, section).keys, key).value = Value;
    SaveFile();
}

void clsINI::WriteFlag(const QString &SectionName, const QString &KeyName, bool Value)
{
    WriteValue(SectionName, KeyName, FlagText(Value));
}

int clsINI::FindSection(const QString &name) const
{
    return FindName(m_sections, m_places, name);
}

int clsINI::FindKey(int section, const QString &name) const
{
    return section < 0 ? -1 : FindName(At(m_sections, section).keys, At(m_sections, section).places, name);
}

int clsINI::AddSection(const QString &name)
{
    m_sections.push_back({name, {}, {}});
    m_places.clear();
    return NumberOfSections() - 1;
}

int clsINI::AddKey(int section, const QString &name, const QString &value)
{
    auto &[sectionName, keys, places] = At(m_sections, section);
    places.clear();
    const auto behind =
        std::find_if(keys.begin(), keys.end(), [&](const Key &key) { return ComesBefore(name, key.name); });
    return static_cast<int>(keys.insert(behind, {name, value}) - keys.begin());
}
