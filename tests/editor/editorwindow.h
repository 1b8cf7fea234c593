#pragma once

#include "browsetree.h"
#include "catalogdocument.h"
#include "detailpanel.h"
#include "listingcommands.h"
#include "mainkeys.h"
#include "programfolder.h"
#include "scriptedprompts.h"
#include "showntypes.h"
#include "treemouse.h"

#include <QAction>
#include <QTest>
#include <QTreeView>

/// A window with tree and panel over a small catalog; FLAC, FLV, MP3 and R&B are known formats. Today is 2024-02-29.
struct EditorWindow
{
    TestProgramFolder folder;
    ScriptedPrompts prompts;
    clsINI settings{prompts};
    CatalogDocument document;
    FormatRegistry formats{prompts};
    ShownTypes types{settings};
    ViewOptions options;
    BrowseTree tree{document, formats, types, options};
    QWidget window;
    QTreeView &trv;
    DetailPanel &fra;
    ListingCommands commands;
    QAction copyListing;
    QAction deleteListing;
    MainKeys keys;
    TreeMouse mouse;

    explicit EditorWindow(const QByteArray &listings);

    template<class Control>
    Control &Find(const char *name) const
    {
        auto *control = fra.findChild<Control *>(QLatin1StringView(name));
        Q_ASSERT(control);
        return *control;
    }
    QWidget &Field(const QString &name) const { return *fra.findChild<QWidget *>(name); }

    /// Makes a listing, or the node with that key, the current one.
    void Select(const QString &id);
    void SelectKey(const QString &key);
    QString CurrentKey() const { return tree.Model().NodeKey(trv.currentIndex()); }

    /// The listing's element as it stands in the catalog, on one line.
    QString Item(const QString &id) const;
    /// "group > label [picture]" of a listing's node.
    QString Node(const QString &id) const;

    /// A point on the picture of the current node.
    QPoint PicturePoint() const;
};

/// Presses keys on a widget that gets the focus first. "\b" is Backspace, "\t" is typed with Ctrl, "\r" is Enter, "^z"
/// is Ctrl+Z.
void Type(QWidget &widget, const QString &keys);
