// The parts are what the records of a journal hold. Whatever they say, a catalog to which they are restored is whole,
// and a journal that is written anew says the same.
#include "catalogdocument.h"
#include "contentdigest.h"
#include "fields.h"
#include "journalformat.h"
#include "kit.h"
#include "rawxml.h"
#include "xmlfile.h"
#include "xmlwriter.h"

#include <QDataStream>

static QByteArray Written(const JournalContents &journal)
{
    QByteArray bytes = JournalHead(journal.catalog, journal.digest);
    for (const CatalogEdit &edit : journal.edits.All())
        bytes += JournalRecord(edit, {});
    return bytes;
}

void Check(const QByteArray &input)
{
    static const QString path = Write(
        u"Catalog.xml"_s,
        "<Catalog><Type>a</Type><Item Year='1' ID='1'/><Item ID='2'/><Type/><Item ID='1'/><Item/></Catalog>");
    ReadJournal(input);
    QByteArray bytes = JournalHead(path, 1);
    QDataStream stream(&bytes, QIODevice::Append);
    for (const QByteArray &record : input.split('\f'))
        stream << ContentDigest(record) << record;
    const JournalContents journal = ReadJournal(bytes);
    assert(journal.catalog == path && Written(journal) == Written(ReadJournal(Written(journal))));

    CatalogDocument document;
    document.Load(path);
    document.Restore(journal.edits);
    const auto listings = document.Catalog().children(Element::kItem);
    assert(document.NumberOfListings() == std::distance(listings.begin(), listings.end()));
    SaveXml(document.Document(), {}, Write(u"Restored.xml"_s, {}));
    const auto saved = LoadXml(InFolder(ProgramFolder(), u"Restored.xml"_s));
    assert(saved && RawXml(*saved->document) == RawXml(document.Document()));
}
