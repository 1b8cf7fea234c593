#pragma once

#include "browsetree.h"
#include "catalogdocument.h"
#include "clsINI.h"
#include "formatregistry.h"
#include "showntypes.h"
#include "viewoptions.h"

class UserPrompts;

/// What the program works on, for the whole run: made before the window and outliving it. Making it loads, asks and
/// reports nothing. Only who puts the program together knows it; the rooms take what they need of it by reference.
struct Workspace
{
    /// `prompts` must outlive the workspace.
    explicit Workspace(UserPrompts &prompts) : settings(prompts), formats(prompts) {}

    clsINI settings;
    FormatRegistry formats;
    CatalogDocument document;
    ShownTypes types{settings};
    ViewOptions options;
    BrowseTree tree{document, formats, types, options};
};
