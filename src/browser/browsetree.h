#pragma once

#include "browsetreemodel.h"
#include "formatregistry.h"
#include "viewoptions.h"

#include <QHash>
#include <QObject>

#include <vector>

class CatalogDocument;
class ShownTypes;

/// Keeps the tree in step with the catalog: fills it, and follows what the document signals: listings added, edited and
/// removed. Writes the totals. Which listings are shown is read from the view options and the shown types each time.
class BrowseTree : public QObject
{
    Q_OBJECT

public:
    using Group = BrowseTreeModel::Group;
    using Listing = BrowseTreeModel::Listing;

    /// All must outlive the tree.
    BrowseTree(CatalogDocument &document, FormatRegistry &formats, ShownTypes &types, const ViewOptions &options);

    BrowseTreeModel &Model() { return m_model; }
    const BrowseTreeModel &Model() const { return m_model; }

    /// Reads the types anew of which listings are shown: the fixed ones and those of the catalog.
    void LoadTypeMenu();

    /// Rebuilds the whole tree from the document. False when that failed and was reported.
    bool LoadShows();
    /// Rebuilds the tree from these listings alone, and finishes it like a full load.
    bool LoadShowList(const std::vector<pugi::xml_node> &listings);

    /// Places one listing; null when it is not to be shown. Throws ReportedFailure.
    Listing *AddShowToTree(pugi::xml_node listing);

    /// Makes sure that a listing's group exists; null when its type is not to be shown. A type that is new to the
    /// catalog becomes a Type element and an item of the shown types. Throws ReportedFailure.
    Group *VerifyParentNode(pugi::xml_node listing);

    /// Writes a group's totals ("lossless / lossy / all") behind its name, while totals are shown.
    void AddYearCount(Group &group);
    /// Takes the totals off again: the text up to its first blank.
    void RemoveYearCount(Group &group);

    /// Brings a listing's label, place and group in line with its element after an edit.
    void UpdateListName(Listing &listing);
    /// Brings a listing's picture in line with its element.
    void UpdateShowImage(Listing &listing);

    /// The node of a listing; null when it is not shown, or another one has its ID.
    Listing *FindNode(pugi::xml_node listing) const;

    /// Whether the filter lets a listing without a format through, as a new one is.
    bool ShowsNewListings() const { return IsShownByFilter(FormatKind::Unknown); }

    qsizetype ShownCount() const { return m_model.NumberOfListings(); }

private:
    /// What decides on a listing's group, as it stands in the document.
    struct TypeAndYear
    {
        TextKey type;
        TextKey year;

        friend bool operator==(const TypeAndYear &, const TypeAndYear &) = default;
        friend size_t qHash(const TypeAndYear &key, size_t seed) { return qHash(key.type, qHash(key.year, seed)); }
    };

    template<class Listings>
    bool Load(const Listings &listings);
    Group *FindOrAddGroup(const TypeAndYear &place);
    Group *GroupOfOwnType(const QString &typeName);
    Group *AddNode(const QString &key, const QString &text, const QString &picture);
    bool IsShownByFilter(FormatKind kind) const;
    QString PictureOf(pugi::xml_node listing);
    void FollowAddition(pugi::xml_node listing);
    void FollowEdit(pugi::xml_node listing, const char *name);
    void Forget(pugi::xml_node listing);

    CatalogDocument &m_document;
    FormatRegistry &m_formats;
    ShownTypes &m_types;
    const ViewOptions &m_options;
    BrowseTreeModel m_model;
    /// The groups that a load has found so far; null where listings are not shown.
    QHash<TypeAndYear, Group *> m_knownGroups;
};
