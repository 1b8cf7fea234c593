#pragma once

#include <pugixml.hpp>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

struct XmlEncoding;

/// What is to be known of a file that was saved.
struct SavedXml
{
    quint64 digest = 0; ///< of its bytes
    QStringList lost;   ///< what could not be kept of the old file, in the user's words
};

/// A node as UTF-8 text without layout.
QByteArray XmlText(pugi::xml_node node);

/// Writes a document in its encoding, one element a line, indented by tabs. Puts the file in its place in one step,
/// with the permissions of the old one (or of `like`, where that is named); throws ProgramError with the old file
/// untouched when that fails. Just before that step, `aboutToReplace` is told the digest.
SavedXml SaveXml(
    const pugi::xml_document &document, const XmlEncoding &encoding, const QString &path, const QString &like = {},
    const std::function<void(quint64)> &aboutToReplace = {});
