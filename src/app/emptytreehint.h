#pragma once

#include <QString>

struct Workspace;

/// What stands in the tree while it shows no listing: how to come by a catalog, or by a listing, or which options hide
/// all of them. "" while there is something to see, and while the tree is being filled.
QString EmptyTreeHint(const Workspace &workspace, bool isOpen, const QString &filterName);
