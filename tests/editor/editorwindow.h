#pragma once

#include "detailpanel.h"
#include "listingcommands.h"
#include "mainkeys.h"
#include "testworkspace.h"
#include "treemouse.h"
#include "treepane.h"

#include <QtWidgets>

#include <sstream>

/// A window with tree and panel over a small catalog; FLAC, FLV, MP3 and R&B are known formats. Today is 2024-02-29.
struct EditorWindow : TestWorkspace
{
    QWidget window;
    TreePane pane{tree, window};
    QTreeView &trv = pane.View();
    DetailPanel &fra =
        *new DetailPanel(document, tree, formats, types, trv, &window, [] { return QDate(2024, 2, 29); });
    ListingCommands commands{document, tree, types, fra, trv, prompts};
    QAction copyListing;
    QAction deleteListing;
    MainKeys keys{trv, tree.Model(), copyListing, deleteListing};
    TreeMouse mouse{trv, tree.Model(), formats, fra};

    explicit EditorWindow(const QByteArray &listings, const char *selected = nullptr)
    {
        // All warnings but those of the platform without a display.
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        QObject::connect(&copyListing, &QAction::triggered, &commands, &ListingCommands::mnuEditCopyListing_Click);
        QObject::connect(&deleteListing, &QAction::triggered, &commands, &ListingCommands::mnuEditDeleteListing_Click);
        QObject::connect(&fra, &DetailPanel::listingSelected, &copyListing, &QAction::setEnabled);
        Open(listings, "FLAC=Lossless\r\nFLV=Lossy\r\nMP3=Lossy\r\nR&B=Lossy\r\n");
        tree.LoadShows();
        auto *row = new QHBoxLayout(&window);
        row->addWidget(&trv);
        row->addWidget(&fra);
        fra.setFixedWidth(400);
        window.resize(900, 514);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        if (selected)
            Select(selected);
    }

    QWidget &Field(QAnyStringView name) const { return *window.findChild<QWidget *>(name.toString()); }
    template<class Control>
    Control &Find(QAnyStringView name) const
    {
        return dynamic_cast<Control &>(Field(name));
    }

    /// The node with that key.
    QModelIndex Index(QAnyStringView key) const
    {
        const BrowseTreeModel &model = tree.Model();
        const BrowseTree::Group *group = model.FindGroup(key.toString());
        return group ? model.IndexOf(*group) : model.IndexOf(*model.FindListing(key.toString().sliced(1)));
    }
    void Select(QAnyStringView key) const { trv.setCurrentIndex(Index(key)); }
    QString CurrentKey() const { return tree.Model().NodeKey(trv.currentIndex()); }

    /// The listing's element as it stands in the catalog, on one line, its values in single quotes.
    QByteArray Item(QAnyStringView id) const
    {
        std::ostringstream text;
        document.Listing(id.toString()).print(text, "", pugi::format_raw);
        return QByteArray::fromStdString(text.str()).replace('"', '\'');
    }

    /// "group > label [picture]" of a listing's node.
    QString Node(const QString &id) const
    {
        const BrowseTree::Listing *listing = tree.Model().FindListing(id);
        const QString label = tree.Model().IndexOf(*listing).data().toString();
        return u"%1 > %2 [%3]"_s.arg(listing->group->text.simplified(), label, listing->picture);
    }

    /// A point on the picture of a node, or further right.
    QPoint Point(QAnyStringView key, int x = 8) const
    {
        const QRect row = trv.visualRect(Index(key));
        return {row.left() + x, row.center().y()};
    }
    void Click(QAnyStringView key, int x = 8, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseClick(trv.viewport(), button, {}, Point(key, x));
    }
    void ClickBelowTheTree() const
    {
        QTest::mouseClick(trv.viewport(), Qt::LeftButton, {}, trv.viewport()->rect().bottomLeft());
    }
};
