#include "restoring.h"

#include "catalogedits.h"
#include "catalogindex.h"
#include "fields.h"
#include "flatfile.h"
#include "modXMLSubs.h"
#include "xmlfile.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

bool IsNamed(pugi::xml_node element, const char *name)
{
    return std::strcmp(element.name(), name) == 0;
}

/// A catalog with nothing but the listing of an edit; nothing when that is not what the edit holds.
std::optional<XmlFile> ParseListing(const CatalogEdit &edit)
{
    auto file = ParseXml("<Catalog>" + edit.text + "</Catalog>");
    if (!file)
        return std::nullopt;
    const pugi::xml_node listing = file->document->document_element().first_child();
    const bool isAlone = IsNamed(listing, Element::kItem) && !listing.next_sibling();
    return isAlone && edit.id == listing.attribute(Field::kId).value() ? std::move(file) : std::nullopt;
}

/// The attribute of the ID stays, since the index refers to it.
void CopyAttributes(pugi::xml_node from, pugi::xml_node to)
{
    const pugi::xml_attribute id = to.attribute(Field::kId);
    for (pugi::xml_attribute attribute = to.first_attribute(); attribute;) {
        const pugi::xml_attribute next = attribute.next_attribute();
        if (attribute != id)
            to.remove_attribute(attribute);
        attribute = next;
    }
    bool isBeforeId = !id.empty();
    for (const pugi::xml_attribute attribute : from.attributes()) {
        if (!id.empty() && std::strcmp(attribute.name(), Field::kId) == 0)
            isBeforeId = false;
        else if (isBeforeId)
            to.insert_copy_before(attribute, id);
        else
            to.append_copy(attribute);
    }
}

/// False when the edit makes no sense, as below.
bool RestoreListing(pugi::xml_node catalog, CatalogIndex &index, const CatalogEdit &edit)
{
    const auto file = ParseListing(edit);
    if (!file)
        return false;
    const pugi::xml_node restored = file->document->document_element().first_child();
    pugi::xml_node listing = index.At(edit.id.constData(), edit.place);
    if (!listing) {
        index.Append(catalog.append_copy(restored));
        return true;
    }
    CopyAttributes(restored, listing);
    listing.remove_children();
    for (const pugi::xml_node child : restored.children())
        listing.append_copy(child);
    return true;
}

/// A listing that was added and removed again is not there.
bool RestoreRemoval(pugi::xml_node catalog, CatalogIndex &index, const CatalogEdit &edit)
{
    if (const pugi::xml_node listing = index.At(edit.id.constData(), edit.place)) {
        index.Remove(listing);
        catalog.remove_child(listing);
    }
    return true;
}

std::vector<QString> Texts(const CatalogEdit &edit)
{
    std::vector<QString> texts;
    for (qsizetype from = 0, end = 0; (end = edit.text.indexOf('\0', from)) >= 0; from = end + 1)
        texts.push_back(FromUtf8({edit.text.constData() + from, static_cast<size_t>(end - from)}));
    return texts;
}

/// Only what differs is touched: entries that are alike at both ends stay what they
/// are.
bool RestoreEntries(pugi::xml_node catalog, const CatalogEdit &edit)
{
    if (edit.id != Element::kType && edit.id != Element::kWebSource)
        return false;
    const std::vector<QString> texts = Texts(edit);
    const auto found = catalog.children(edit.id.constData());
    const std::vector<pugi::xml_node> entries(found.begin(), found.end());
    const auto isText = [](pugi::xml_node entry, const QString &text) { return ElementText(entry) == text; };

    const auto [from, fromText] = std::mismatch(entries.begin(), entries.end(), texts.begin(), texts.end(), isText);
    const auto [backTo, backToText] = std::mismatch(
        entries.rbegin(), std::make_reverse_iterator(from), texts.rbegin(), std::make_reverse_iterator(fromText),
        isText);
    auto entry = from;
    auto text = fromText;
    for (; entry != backTo.base() && text != backToText.base(); ++entry, ++text)
        SetElementText(*entry, *text);
    for (; entry != backTo.base(); ++entry)
        catalog.remove_child(*entry);
    for (; text != backToText.base(); ++text) {
        const bool isLast = entry == entries.end();
        const char *const name = edit.id.constData();
        SetElementText(isLast ? catalog.append_child(name) : catalog.insert_child_before(name, *entry), *text);
    }
    return true;
}

bool RestoreEdit(pugi::xml_node catalog, CatalogIndex &index, const CatalogEdit &edit)
{
    switch (edit.kind) {
    case CatalogEdit::Kind::Listing:
        return RestoreListing(catalog, index, edit);
    case CatalogEdit::Kind::Removal:
        return RestoreRemoval(catalog, index, edit);
    case CatalogEdit::Kind::Entries:
        return RestoreEntries(catalog, edit);
    }
    return false;
}

bool GatherListing(pugi::xml_node catalog, const CatalogEdit &edit)
{
    const auto file = ParseListing(edit);
    return file && catalog.append_copy(file->document->document_element().first_child());
}

} // namespace

bool RestoreEdits(pugi::xml_node catalog, CatalogIndex &index, const CatalogEdits &edits)
try {
    bool all = true;
    for (const CatalogEdit &edit : edits.All())
        all = RestoreEdit(catalog, index, edit) && all;
    index.Build(catalog);
    return all;
} catch (...) {
    // What is gone must not be found.
    index.Build(catalog);
    throw;
}

NotGathered GatherEdits(pugi::xml_document &document, const CatalogEdits &edits)
{
    NotGathered rest;
    const pugi::xml_node catalog = document.append_child(Element::kCatalog);
    for (const CatalogEdit &edit : edits.All()) {
        const bool isList = edit.kind == CatalogEdit::Kind::Entries;
        const bool isRemoval = edit.kind == CatalogEdit::Kind::Removal;
        if (!isRemoval && !(isList ? RestoreEntries(catalog, edit) : GatherListing(catalog, edit)))
            ++rest.senseless;
        else if (isRemoval || edit.text.isEmpty())
            ++rest.removals;
    }
    return rest;
}
