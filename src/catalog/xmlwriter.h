#pragma once

#include <pugixml.hpp>

#include <QString>

struct XmlEncoding;

/// Writes a document in its encoding, one element a line, indented by tabs. Puts the file in its place in one step;
/// throws ProgramError with the old file untouched when that fails.
void SaveXml(const pugi::xml_document &document, const XmlEncoding &encoding, const QString &path);
