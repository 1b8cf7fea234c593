#include "walk.h"

void ForEachListing(const BrowseTreeModel &tree, const std::function<void(const BrowseTreeModel::Listing &)> &visit)
{
    for (const auto &group : tree.Groups()) {
        for (const auto &listing : group->InOrder())
            visit(*listing);
    }
}
