// The parts are an older catalog and its user file. Either they are converted, every listing kept and both backed up,
// or nothing has changed.
#include "fields.h"
#include "kit.h"
#include "modConvertTo12.h"
#include "xmlfile.h"

#include <algorithm>

/// How many listings of a file have content, and an ID with that text in it.
static qsizetype Listings(const QString &path, const QString &idPart)
{
    const auto file = LoadXml(path);
    if (!file)
        return 0;
    CleanXML(*file->document);
    return std::ranges::count_if(
        file->document->document_element().children(Element::kItem),
        [&](pugi::xml_node listing) { return ReadAttribute(listing, Field::kId).contains(idPart); });
}

void Check(const QByteArray &input)
{
    Parts parts(input);
    const QByteArray bytes = parts.Next();
    const QByteArray userBytes = parts.Next();
    const ConversionFiles files(Write(u"Old.xml"_s, bytes), Write(u"Old User.xml"_s, userBytes));
    const qsizetype listings = Listings(files.catalog, {}) + Listings(files.user, u"u"_s);
    Yes prompts;
    const bool isDone = ConvertFileTo12(files.catalog, files.user, prompts);
    assert(!isDone || (Listings(files.catalog, {}) >= listings && !QFile::exists(files.user)));
    assert(ReadWholeFile(isDone ? files.catalogBackup : files.catalog) == bytes);
    assert(ReadWholeFile(isDone ? files.userBackup : files.user) == userBytes);
    assert(!QFile::exists(files.merged));
}
