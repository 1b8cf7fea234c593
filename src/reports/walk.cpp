#include "walk.h"

#include "catalogdocument.h"
#include "failures.h"

using namespace Qt::StringLiterals;

void ForEachListing(const BrowseTreeModel &tree, const std::function<void(const BrowseTreeModel::Listing &)> &visit)
{
    for (const auto &group : tree.Groups()) {
        for (const auto &listing : group->listings)
            visit(*listing);
    }
}

pugi::xml_node ElementOf(const BrowseTreeModel::Listing &listing, const CatalogDocument &document)
{
    const pugi::xml_node element = document.Listing(listing.id);
    if (!element)
        throw ProgramError(Failure::Missing, u"The catalog has no listing with the ID "_s + listing.id);
    return element;
}
