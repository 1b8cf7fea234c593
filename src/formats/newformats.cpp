#include "newformats.h"

#include "clsINI.h"
#include "failures.h"
#include "flatfile.h"
#include "paths.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kSection = "Formats"_L1;

// One that is damaged is told of when the formats are loaded.
bool CanBeRead(clsINI &file, const QString &path)
{
    try {
        file.LoadINI(path);
        return true;
    } catch (const ProgramError &) {
        return false;
    }
}

QStringList KeysMissingIn(const clsINI &file, const clsINI &all)
{
    QStringList missing;
    for (int i = 0; i < all.NumberOfKeys(kSection); ++i) {
        const QString name = all.KeyName(kSection, i);
        if (file.ReadString(kSection, name).isEmpty())
            missing.append(name);
    }
    return missing;
}

void CopyClasses(const QStringList &formats, const clsINI &from, clsINI &to)
{
    if (formats.isEmpty())
        return;
    const OneSave save(to);
    for (const QString &format : formats)
        to.WriteValue(kSection, format, from.ReadString(kSection, format));
}

void CopyMissingPicture(const QString &format, const QString &fromFolder, const QString &toFolder)
{
    const QString name = InFolder(u"Formats"_s, format + u".bmp"_s);
    const QString picture = InFolder(fromFolder, name);
    if (IsMissing(picture) || !IsMissing(InFolder(toFolder, name)))
        return;
    MakeFolder(InFolder(toFolder, u"Formats"_s));
    WriteFileAtomically(InFolder(toFolder, name), ReadWholeFile(picture));
}

} // namespace

void BringNewFormats(const QString &sharedFolder, const QString &programFolder, UserPrompts &prompts)
{
    clsINI own(prompts);
    if (sharedFolder == programFolder || !CanBeRead(own, InFolder(programFolder, u"formats.ini"_s)))
        return;
    clsINI shipped(prompts);
    shipped.LoadINI(InFolder(sharedFolder, u"formats.ini"_s));
    clsINI brought(prompts);
    brought.LoadINI(InFolder(programFolder, u"formats.shipped"_s));

    QStringList classless;
    const QStringList formats = KeysMissingIn(brought, shipped);
    for (const QString &format : formats) {
        CopyMissingPicture(format, sharedFolder, programFolder);
        if (own.ReadString(kSection, format).isEmpty())
            classless.append(format);
    }
    CopyClasses(classless, shipped, own);
    CopyClasses(formats, shipped, brought);
}
