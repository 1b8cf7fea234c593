#pragma once

#include <pugixml.hpp>

class CatalogEdits;
class CatalogIndex;

/// Does edits again to the catalog on which they were made. What they say is checked like a file: an edit that makes no
/// sense is left out.
void RestoreEdits(pugi::xml_node catalog, CatalogIndex &index, const CatalogEdits &edits);

/// Gathers what edits have made of listings and lists, as a catalog of its own.
void GatherEdits(pugi::xml_document &document, const CatalogEdits &edits);
