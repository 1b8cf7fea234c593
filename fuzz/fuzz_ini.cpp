// The first part is a file, the others are sections, keys and values that are written to it. Each is read back, and all
// other keys are as they were.
#include "clsINI.h"
#include "kit.h"

#include <map>
#include <optional>
#include <set>

/// The values by section and key; nothing when two keys have one name: either may come first after a load.
static std::optional<std::map<QStringList, QString>> Values(const clsINI &file)
{
    std::set<QString> sections;
    for (int i = 0; i < file.NumberOfSections(); ++i)
        sections.insert(file.SectionName(i));
    std::map<QStringList, QString> values;
    for (const QString &section : sections) {
        for (int i = 0; i < file.NumberOfKeys(section); ++i) {
            const QString key = file.KeyName(section, i);
            if (!values.try_emplace({section, key}, file.ReadString(section, key)).second)
                return {};
        }
    }
    return values;
}

static QString NextLine(Parts &parts)
{
    return parts.NextText().remove(u'\n').remove(u'\r');
}

void Check(const QByteArray &input)
{
    Parts parts(input);
    const QByteArray bytes = parts.Next();
    const QString path = Write(u"Settings.ini"_s, bytes);
    QFile copy(path + u".damaged"_s);
    copy.remove();
    Yes prompts;
    clsINI file(prompts);
    const bool isWhole = Guarded("Check", "LoadINI", [&] { file.LoadINI(path); });
    file.SaveFile();
    assert(isWhole ? !copy.exists() : ReadWholeFile(copy.fileName()) == bytes);
    auto expected = Values(file);
    while (expected && !parts.all.isEmpty()) {
        const QString section = NextLine(parts);
        const QString key = NextLine(parts);
        const QString value = NextLine(parts);
        // Nobody writes names that make lines of another kind.
        if (key.contains(u'=') || key.startsWith(u';') || key.startsWith(u'['))
            continue;
        (*expected)[{section, key}] = value;
        file.WriteValue(section, key, value);
        clsINI again(prompts);
        again.LoadINI(path);
        assert(Values(file) == expected && Values(again) == expected);
    }
}
