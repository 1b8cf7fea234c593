#include "catalogdocument.h"

#include "failures.h"
#include "modXMLSubs.h"
#include "numbers.h"

#include <cstring>
#include <new>

using namespace Qt::StringLiterals;

namespace {

// A namespace makes it another element, whatever its name.
bool IsCatalog(const pugi::xml_document &document)
{
    const pugi::xml_node catalog = document.child("Catalog");
    return catalog && *catalog.attribute("xmlns").value() == '\0';
}

bool IsListingOf(pugi::xml_node catalog, pugi::xml_node element)
{
    return element.parent() == catalog && std::strcmp(element.name(), "Item") == 0;
}

} // namespace

CatalogDocument::CatalogDocument() = default;

void CatalogDocument::SetChanged(bool changed)
{
    if (m_changed == changed)
        return;
    m_changed = changed;
    emit changedChanged(changed);
}

CatalogDocument::LoadResult CatalogDocument::Load(const QString &path)
{
    auto file = LoadXml(path);
    if (!file)
        return LoadResult::Unreadable;
    if (!IsCatalog(*file->document))
        return LoadResult::NotACatalog;
    ListingIndex index;
    try {
        index.Build(file->document->child("Catalog"));
    } catch (const std::bad_alloc &) {
        return LoadResult::Unreadable;
    }
    emit aboutToBeReplaced();
    std::swap(m_file, *file);
    std::swap(m_index, index);
    return LoadResult::Loaded;
}

void CatalogDocument::Clear()
{
    emit aboutToBeReplaced();
    m_index.Clear();
    m_file = XmlFile();
    SetChanged(false);
}

bool CatalogDocument::Save()
{
    const bool isClean = CleanXML(*m_file.document, [this](pugi::xml_node element) {
        if (!IsListingOf(Catalog(), element))
            return;
        emit listingAboutToBeRemoved(element);
        m_index.Remove(element);
    });
    if (!isClean)
        return false;
    SaveXml(*m_file.document, m_file.encoding, m_path);
    SetChanged(false);
    return true;
}

void CatalogDocument::WriteNewCatalog(const QString &path)
{
    pugi::xml_document document;
    document.append_child("Catalog");
    SaveXml(document, XmlEncoding(), path);
}

pugi::xml_node CatalogDocument::Catalog() const
{
    return m_file.document->child("Catalog");
}

pugi::xml_node CatalogDocument::Listing(const QString &id) const
{
    return m_index.Find(id.toUtf8());
}

qint32 CatalogDocument::GetNextID() const
{
    return WholeNumber(WholeNumber(m_index.HighestId()) + 1.0);
}

pugi::xml_node CatalogDocument::AppendListing(const QString &type)
{
    const QString id = QString::number(GetNextID());
    pugi::xml_node listing = AppendChild("Item");
    WriteAttribute(listing, "ID", id);
    WriteAttribute(listing, "Type", type);
    m_index.Append(listing);
    return listing;
}

pugi::xml_node CatalogDocument::AppendCopy(pugi::xml_node listing)
{
    const QString id = QString::number(GetNextID());
    pugi::xml_node copy = RequiredCatalog().append_copy(listing);
    WriteAttribute(copy, "ID", id);
    for (const char *const name : {"WrongDate", "Format", "DateAdded", "Seeder"})
        WriteAttribute(copy, name, {});
    m_index.Append(copy);
    return copy;
}

void CatalogDocument::RemoveListing(pugi::xml_node listing)
{
    emit listingAboutToBeRemoved(listing);
    m_index.Remove(listing);
    Catalog().remove_child(listing);
}

QStringList CatalogDocument::Types() const
{
    return ChildTexts("Type");
}

QStringList CatalogDocument::WebSources() const
{
    return ChildTexts("WebSource");
}

void CatalogDocument::AppendType(const QString &name)
{
    SetElementText(AppendChild("Type"), name);
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

QStringList CatalogDocument::ChildTexts(const char *name) const
{
    QStringList texts;
    for (const pugi::xml_node child : Catalog().children(name))
        texts += ElementText(child);
    return texts;
}
