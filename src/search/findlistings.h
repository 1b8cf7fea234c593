#pragma once

#include <pugixml.hpp>

#include <QString>

#include <vector>

class CatalogDocument;

/// The listings that an XPath expression selects, in document order. Whatever else it selects is left out. Throws
/// ProgramError when the expression does not parse or selects no nodes at all, being a number, say.
std::vector<pugi::xml_node> FindListings(const CatalogDocument &document, const QString &query);
