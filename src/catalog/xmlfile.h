#pragma once

#include "xmlencoding.h"

#include <pugixml.hpp>

#include <QString>

#include <memory>
#include <optional>

/// A parsed XML file: its tree and the encoding in which it goes back to disk.
struct XmlFile
{
    std::unique_ptr<pugi::xml_document> document = std::make_unique<pugi::xml_document>();
    XmlEncoding encoding;
    quint64 digest = 0; ///< of the bytes that are on the disk
};

/// Reads a file into a new tree that keeps everything but layout: declaration, comments, instructions, document type,
/// CDATA sections, and text of blanks inside a field. Nothing when the file cannot be read or is not well-formed XML;
/// then there is no half tree either.
std::optional<XmlFile> LoadXml(const QString &path);

/// The same for UTF-8 text.
std::optional<XmlFile> ParseXml(QByteArrayView utf8);
