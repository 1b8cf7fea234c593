#pragma once

#include "conversionfiles.h"

#include <pugixml.hpp>

#include <QString>

#include <functional>

class UserPrompts;

/// Who wants to know how a conversion goes on.
struct ConversionObserver
{
    std::function<void(bool)> working;            ///< true when the work starts, false when it ends, in every case
    std::function<void(ConversionStep)> stepDone; ///< after each step on disk
    /// At the end, with what could not be kept of the old catalog's file, in the user's words.
    std::function<void(const QStringList &)> converted = {};
};

/// Where the user's data of an older catalog lies: "Shows User.xml" beside "Shows.xml".
QString UserFilePath(const QString &catalogPath);

/// Merges the user file of an older catalog into it, after asking: both are backed up and removed, and the merged
/// catalog takes the catalog's place. False when the user declined, when a file cannot be used (which was said) or when
/// a step failed (which was reported).
bool ConvertFileTo12(
    const QString &catalogPath, const QString &userPath, UserPrompts &prompts, const ConversionObserver &observer = {});

/// Completes a conversion that was cut off after it had begun to delete: the merged file is then whole, and so
/// are both backups. In every other state nothing is touched. True when the catalog has come into being.
bool FinishInterruptedConversion(const QString &catalogPath);

/// The same for every catalog of a folder.
void FinishInterruptedConversions(const QString &folder);

/// The format that an old format code stands for. A code that is none of the known numbers is a format's name itself;
/// "0" is no format.
QString FormatNameFromCode(const QString &code);

/// The catalog item's value of an attribute, or the user item's when that has the attribute. Either may be null.
QString MergedAttribute(const char *name, pugi::xml_node catalogItem, pugi::xml_node userItem);

/// Moves the user item's child of that name, where it has one, into the catalog item, in the place of the one there.
void MergeChild(const char *name, pugi::xml_node catalogItem, pugi::xml_node userItem);
