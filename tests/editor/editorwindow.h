#pragma once

#include "detailpanel.h"
#include "listingcommands.h"
#include "mainkeys.h"
#include "testworkspace.h"
#include "treemouse.h"
#include "treepane.h"
#include "typist.h"

#include <QAction>
#include <QRegularExpression>
#include <QTest>
#include <QTreeView>

/// Warnings that are no fault of the program's: those of the platform without a display.
inline const QRegularExpression kAnyWarning(QStringLiteral("^(?!This plugin does not support)"));

/// A window with tree and panel over a small catalog; FLAC, FLV, MP3 and R&B are known formats. Today is 2024-02-29.
struct EditorWindow : TestWorkspace
{
    QWidget window;
    TreePane pane{tree, window};
    QTreeView &trv = pane.View();
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
