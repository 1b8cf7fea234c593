#pragma once

#include "browsetreemodel.h"

#include <functional>

class CatalogDocument;
class FormatRegistry;

/// What the reports are made from: the listings that the tree shows, their elements and the classes of their formats.
struct ReportSource
{
    const BrowseTreeModel &tree;
    const CatalogDocument &document;
    FormatRegistry &formats;
};

/// Visits every listing of the tree, group by group in tree order.
void ForEachListing(const BrowseTreeModel &tree, const std::function<void(const BrowseTreeModel::Listing &)> &visit);
