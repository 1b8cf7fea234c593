#pragma once

#include <pugixml.hpp>

#include <QtGlobal>

class CatalogEdits;
class CatalogIndex;

/// Does edits again to the catalog on which they were made. What they say is checked like a file: an edit that makes no
/// sense is left out. False when there was one.
bool RestoreEdits(pugi::xml_node catalog, CatalogIndex &index, const CatalogEdits &edits);

/// What a catalog that was made of edits alone does not have.
struct NotGathered
{
    qsizetype removals = 0;  ///< of listings, and of all that a list had
    qsizetype senseless = 0; ///< edits that make no sense
};

/// Gathers what edits have made of listings and lists, as a catalog of its own.
NotGathered GatherEdits(pugi::xml_document &document, const CatalogEdits &edits);
