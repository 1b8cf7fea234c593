#include "editorwindow.h"

#include <QHBoxLayout>

#include <sstream>

using namespace Qt::StringLiterals;

EditorWindow::EditorWindow(const QByteArray &listings)
    : fra(*new DetailPanel(document, tree, formats, types, trv, &window, [] { return QDate(2024, 2, 29); })),
      commands(document, tree, types, fra, trv, prompts),
      keys(trv, tree.Model(), copyListing, deleteListing),
      mouse(trv, tree.Model(), formats, fra)
{
    QObject::connect(&copyListing, &QAction::triggered, &commands, &ListingCommands::mnuEditCopyListing_Click);
    QObject::connect(&deleteListing, &QAction::triggered, &commands, &ListingCommands::mnuEditDeleteListing_Click);
    QObject::connect(&fra, &DetailPanel::listingSelected, &copyListing, &QAction::setEnabled);
    QObject::connect(&fra, &DetailPanel::listingSelected, &deleteListing, &QAction::setEnabled);
    Open(listings, "FLAC=Lossless\r\nFLV=Lossy\r\nMP3=Lossy\r\nR&B=Lossy\r\n");
    tree.LoadShows();
    auto *row = new QHBoxLayout(&window);
    row->addWidget(&trv);
    row->addWidget(&fra);
    fra.setFixedWidth(400);
    window.resize(900, 620);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

void EditorWindow::Select(const QString &id)
{
    SelectKey(u's' + id);
}

void EditorWindow::SelectKey(const QString &key)
{
    const BrowseTreeModel &model = tree.Model();
    const BrowseTree::Group *group = model.FindGroup(key);
    trv.setCurrentIndex(group ? model.IndexOf(*group) : model.IndexOf(*model.FindListing(key.sliced(1))));
}

QString EditorWindow::Item(const QString &id) const
{
    std::ostringstream text;
    document.Listing(id).print(text, "", pugi::format_raw);
    return QString::fromStdString(text.str());
}

QString EditorWindow::Node(const QString &id) const
{
    const BrowseTreeModel &model = tree.Model();
    const BrowseTree::Listing *listing = model.FindListing(id);
    if (!listing)
        return {};
    const QString label = model.data(model.IndexOf(*listing), Qt::DisplayRole).toString();
    return u"%1 > %2 [%3]"_s.arg(listing->group->text.simplified(), label, listing->picture);
}

QPoint EditorWindow::PicturePoint() const
{
    const QRect row = trv.visualRect(trv.currentIndex());
    return {row.left() + 8, row.center().y()};
}
