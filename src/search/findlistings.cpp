#include "findlistings.h"

#include "catalogdocument.h"
#include "failures.h"
#include "fields.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

using namespace Qt::StringLiterals;

namespace {

pugi::xpath_node_set Select(const pugi::xml_document &document, const QString &query)
{
    try {
        return pugi::xpath_query(query.toUtf8().constData()).evaluate_node_set(document);
    } catch (const pugi::xpath_exception &exception) {
        throw ProgramError(Failure::BadQuery, QString::fromUtf8(exception.what()) + u": "_s + query, u"pugixml"_s);
    }
}

bool IsListing(pugi::xml_node node)
{
    return node.type() == pugi::node_element && std::string_view(node.name()) == Element::kItem;
}

/// Brings listings into document order by one walk over the catalog; comparing two siblings of many is slow.
std::vector<pugi::xml_node> InDocumentOrder(pugi::xml_node catalog, const std::vector<pugi::xml_node> &listings)
{
    std::unordered_set<size_t> selected;
    for (const pugi::xml_node listing : listings)
        selected.insert(listing.hash_value());
    std::vector<pugi::xml_node> ordered;
    for (const pugi::xml_node child : catalog.children()) {
        if (selected.contains(child.hash_value()))
            ordered.push_back(child);
    }
    return ordered;
}

} // namespace

std::vector<pugi::xml_node> FindListings(const CatalogDocument &document, const QString &query)
{
    const pugi::xml_node catalog = document.Catalog();
    const pugi::xpath_node_set selected = Select(document.Document(), query);
    std::vector<pugi::xml_node> listings;
    for (const pugi::xpath_node &node : selected) {
        if (IsListing(node.node()) && node.node().parent() == catalog)
            listings.push_back(node.node());
    }
    if (selected.type() == pugi::xpath_node_set::type_sorted)
        return listings;
    return InDocumentOrder(catalog, listings);
}
