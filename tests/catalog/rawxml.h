#pragma once

#include <pugixml.hpp>

#include <QByteArray>

#include <sstream>

/// A document in one line, with apostrophes around its values.
inline QByteArray RawXml(const pugi::xml_node &node)
{
    std::ostringstream stream;
    node.print(stream, "", pugi::format_raw | pugi::format_no_declaration | pugi::format_attribute_single_quote);
    return QByteArray::fromStdString(stream.str());
}
