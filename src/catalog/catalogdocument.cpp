#include "catalogdocument.h"

#include "catalogedits.h"
#include "failures.h"
#include "fields.h"
#include "modXMLSubs.h"
#include "numbers.h"
#include "restoring.h"

#include <algorithm>
#include <cstring>
#include <new>

using namespace Qt::StringLiterals;

namespace {

// A namespace makes it another element, whatever its name.
bool IsCatalog(const pugi::xml_document &document)
{
    const pugi::xml_node catalog = document.child(Element::kCatalog);
    return catalog && *catalog.attribute("xmlns").value() == '\0';
}

bool IsNamed(pugi::xml_node element, const char *name)
{
    return std::strcmp(element.name(), name) == 0;
}

const char *ElementOf(CatalogList list)
{
    return list == CatalogList::WebSources ? Element::kWebSource : Element::kType;
}

bool HasTextNode(pugi::xml_node element, const QByteArray &text)
{
    return std::ranges::any_of(element.children(), [&text](pugi::xml_node child) {
        const bool isText = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
        return isText && text == child.value();
    });
}

} // namespace

CatalogDocument::CatalogDocument() = default;

void CatalogDocument::SetModified(bool modified)
{
    if (m_modified == modified)
        return;
    m_modified = modified;
    emit modifiedChanged(modified);
}

CatalogDocument::LoadResult CatalogDocument::Load(const QString &path)
{
    auto file = LoadXml(path);
    if (!file)
        return LoadResult::Unreadable;
    if (!IsCatalog(*file->document))
        return LoadResult::NotACatalog;
    CatalogIndex index;
    try {
        index.Build(file->document->child(Element::kCatalog));
    } catch (const std::bad_alloc &) {
        return LoadResult::Unreadable;
    }
    emit aboutToBeReplaced();
    std::swap(m_file, *file);
    std::swap(m_index, index);
    return LoadResult::Loaded;
}

bool CatalogDocument::Restore(const CatalogEdits &edits)
{
    SetModified(true); // also by a part of them, when memory runs out
    return RestoreEdits(Catalog(), m_index, edits);
}

CatalogEdit CatalogDocument::EditOf(pugi::xml_node listing) const
{
    CatalogEdit edit = RemovalOf(listing);
    edit.kind = CatalogEdit::Kind::Listing;
    edit.text = XmlText(listing);
    return edit;
}

CatalogEdit CatalogDocument::RemovalOf(pugi::xml_node listing) const
{
    return {
        .kind = CatalogEdit::Kind::Removal,
        .id = listing.attribute(Field::kId).value(),
        .place = m_index.PlaceOf(listing),
        .text = {}};
}

CatalogEdit CatalogDocument::EditOf(CatalogList list) const
{
    CatalogEdit edit{.kind = CatalogEdit::Kind::Entries, .id = ElementOf(list), .place = 0, .text = {}};
    for (const QString &text : Entries(list))
        edit.text += text.toUtf8() + '\0';
    return edit;
}

void CatalogDocument::Clear()
{
    emit aboutToBeReplaced();
    m_index.Clear();
    m_file = XmlFile();
    SetModified(false);
}

SavedXml CatalogDocument::Save()
{
    CleanXML(*m_file.document, [this](pugi::xml_node element) {
        if (element.parent() != Catalog())
            return;
        if (!IsNamed(element, Element::kItem)) {
            m_index.RemoveEntry(element);
            return;
        }
        emit listingAboutToBeRemoved(element);
        m_index.Remove(element);
    });
    SavedXml saving = SaveXml(
        *m_file.document, m_file.encoding, m_path, {}, [this](quint64 digest) { emit aboutToReplaceFile(digest); });
    m_file.digest = saving.digest;
    SetModified(false);
    emit saved();
    return saving;
}

SavedXml CatalogDocument::WriteNewCatalog(const QString &path)
{
    pugi::xml_document document;
    document.append_child(Element::kCatalog);
    return SaveXml(document, XmlEncoding(), path);
}

pugi::xml_node CatalogDocument::Catalog() const
{
    return m_file.document->child(Element::kCatalog);
}

pugi::xml_node CatalogDocument::Listing(const QString &id) const
{
    return m_index.Find(id.toUtf8().constData());
}

qint32 CatalogDocument::GetNextID() const
{
    return WholeNumber(WholeNumber(m_index.HighestId()) + 1.0);
}

pugi::xml_node CatalogDocument::AppendListing(const QString &type)
{
    const QString id = QString::number(GetNextID());
    pugi::xml_node listing = AppendChild(Element::kItem);
    WriteAttribute(listing, Field::kId, id);
    WriteAttribute(listing, Field::kType, type);
    TakeInNew(listing);
    return listing;
}

pugi::xml_node CatalogDocument::AppendCopy(pugi::xml_node listing)
{
    const QString id = QString::number(GetNextID());
    pugi::xml_node copy = RequiredCatalog().append_copy(listing);
    WriteAttribute(copy, Field::kId, id);
    for (const char *const name : {Field::kWrongDate, Field::kFormat, Field::kDateAdded, Field::kSeeder})
        WriteAttribute(copy, name, {});
    TakeInNew(copy);
    return copy;
}

void CatalogDocument::TakeInNew(pugi::xml_node listing)
{
    m_index.Append(listing);
    SetModified(true);
    emit listingAdded(listing);
}

void CatalogDocument::RemoveListing(pugi::xml_node listing)
{
    emit listingAboutToBeRemoved(listing);
    m_index.Remove(listing);
    Catalog().remove_child(listing);
    SetModified(true);
    emit listingRemoved();
}

void CatalogDocument::SetField(pugi::xml_node listing, const char *field, const QString &value)
{
    WriteAttribute(listing, field, value);
    SignalEdited(listing, field);
}

void CatalogDocument::SetText(pugi::xml_node listing, const char *element, const QString &text)
{
    WriteTextElement(listing, element, text);
    SignalEdited(listing, element);
}

void CatalogDocument::SetFormat(pugi::xml_node listing, const QString &format, QDate today)
{
    if (format.isEmpty())
        SetField(listing, Field::kDateAdded, {});
    else if (ReadAttribute(listing, Field::kDateAdded).isEmpty())
        SetField(listing, Field::kDateAdded, today.toString(Qt::ISODate));
    SetField(listing, Field::kFormat, format);
}

void CatalogDocument::SignalEdited(pugi::xml_node listing, const char *name)
{
    SetModified(true);
    emit listingEdited(listing, name);
}

QStringList CatalogDocument::Entries(CatalogList list) const
{
    QStringList texts;
    for (const pugi::xml_node entry : m_index.Entries()) {
        if (IsNamed(entry, ElementOf(list)))
            texts += ElementText(entry);
    }
    return texts;
}

void CatalogDocument::AddEntry(CatalogList list, const QString &text)
{
    AppendEntry(ElementOf(list), text);
    SignalEntriesChanged(list);
}

void CatalogDocument::RenameEntry(CatalogList list, const QString &text, const QString &newText)
{
    SetElementText(FindEntry(list, text), newText);
    SignalEntriesChanged(list);
}

void CatalogDocument::RemoveEntry(CatalogList list, const QString &text)
{
    const pugi::xml_node entry = FindEntry(list, text);
    m_index.RemoveEntry(entry);
    Catalog().remove_child(entry);
    SignalEntriesChanged(list);
}

void CatalogDocument::SignalEntriesChanged(CatalogList list)
{
    SetModified(true);
    emit entriesChanged(list);
}

/// The first element that holds the text in one piece.
pugi::xml_node CatalogDocument::FindEntry(CatalogList list, const QString &text) const
{
    const auto name = QLatin1StringView(ElementOf(list));
    if (text.contains(u'\''))
        throw ProgramError(Failure::BadQuery, u"Not an expression: /Catalog/%1[text()='%2']"_s.arg(name, text));
    const QByteArray wanted = ToXml(text);
    for (const pugi::xml_node entry : m_index.Entries()) {
        if (IsNamed(entry, ElementOf(list)) && HasTextNode(entry, wanted))
            return entry;
    }
    throw ProgramError(Failure::Missing, u"No such %1: %2"_s.arg(name, text));
}

void CatalogDocument::CompleteListing(pugi::xml_node listing)
{
    if (!listing.attribute(Field::kType))
        WriteAttribute(listing, Field::kType, u"Concert"_s);
    for (const char *element : {Element::kSetList, Element::kNotes, Element::kComment}) {
        if (!listing.child(element))
            listing.append_child(element);
    }
}

void CatalogDocument::SupplyType(const QString &name)
{
    AppendEntry(Element::kType, name);
}

void CatalogDocument::AppendEntry(const char *name, const QString &text)
{
    const pugi::xml_node entry = AppendChild(name);
    m_index.AppendEntry(entry);
    SetElementText(entry, text);
}

pugi::xml_node CatalogDocument::RequiredCatalog() const
{
    const pugi::xml_node catalog = Catalog();
    if (!catalog)
        throw ProgramError(Failure::Missing, u"The document has no Catalog element"_s);
    return catalog;
}

pugi::xml_node CatalogDocument::AppendChild(const char *name)
{
    return RequiredCatalog().append_child(name);
}
