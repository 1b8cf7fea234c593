// What loads is XML, and saved it loads again as the same tree; a second save writes the same bytes.
#include "kit.h"
#include "rawxml.h"
#include "xmlcheck.h"
#include "xmlfile.h"
#include "xmlwriter.h"

#include <expat.h>

static bool IsXml(const QByteArray &utf8)
{
    const XML_Parser parser = XML_ParserCreate("UTF-8");
    const auto status = XML_Parse(parser, utf8.constData(), static_cast<int>(utf8.size()), XML_TRUE);
    XML_ParserFree(parser);
    return status == XML_STATUS_OK;
}

static QByteArray Tree(const QString &path)
{
    const auto file = LoadXml(path);
    assert(file);
    return RawXml(*file->document);
}

static void CheckSave(const XmlFile &file)
{
    const QString once = Write(u"Once.xml"_s, {});
    const QString twice = Write(u"Twice.xml"_s, {});
    SaveXml(*file.document, file.encoding, once);
    assert(Tree(once) == RawXml(*file.document));
    SaveXml(*LoadXml(once)->document, file.encoding, twice);
    assert(ReadWholeFile(once) == ReadWholeFile(twice));
}

void Check(const QByteArray &input)
{
    const auto file = LoadXml(Write(u"Catalog.xml"_s, input));
    // Expat looks up entities, takes any version and knows fewer letters of names; Discbook bounds how deep elements
    // lie.
    if (!input.contains("<!DOCTYPE") && input.count('<') < kMaxXmlDepth) {
        QString ofKnownLetters = QString::fromUtf8(input);
        for (QChar &c : ofKnownLetters)
            c = c < u'\x80' ? c : u'é';
        assert(!file || !file->encoding.isUtf8() || IsXml(ofKnownLetters.toUtf8()));
        assert(file || input.contains("<?xml") || !input.isValidUtf8() || !IsXml(input));
    }
    if (!file)
        return;
    CheckSave(*file);
    CleanXML(*file->document);
    CheckSave(*file);
}
