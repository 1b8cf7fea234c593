#pragma once

#include "idmap.h"

#include <pugixml.hpp>

#include <QAbstractItemModel>
#include <QHash>
#include <QString>

#include <memory>
#include <string>
#include <vector>

class FormatRegistry;

/// The tree of groups and listings as a model: two levels, every node found by its key, groups and listings in text
/// order.
///
/// Keys of groups and keys of listings ("s" + ID) are two spaces, so a type called "s5" is never taken for a listing.
/// The label of a listing is read from its element whenever it is shown or compared; the model keeps none. Whoever
/// edits an element tells the model before it is asked for anything else (PlaceListing).
///
/// A bulk load builds aside (BeginLoad, EndLoad) and shows the result in one reset. A group is put in order when its
/// listings are first asked for, most of them never; from then on, every operation is one row's worth of work.
class BrowseTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    class Group;

    struct Listing
    {
        pugi::xml_node element;
        QString picture; ///< picture key
        Group *group = nullptr;
        quint32 order = 0; ///< equal labels stand in the order in which they came

        QString Id() const;
    };
    using Listings = std::vector<std::unique_ptr<Listing>>;

    class Group
    {
    public:
        QString key;
        QString text; ///< with its totals, once they are written
        QString spoken;
        QString picture;

        /// In tree order.
        const Listings &InOrder() const;
        /// For whoever only counts.
        const Listings &InAnyOrder() const { return m_listings; }

    private:
        friend class BrowseTreeModel;

        Listings &Ordered();

        std::string m_sortKey;
        int m_row = 0;
        mutable Listings m_listings;
        mutable bool m_isInOrder = true;
    };

    enum Role {
        PictureRole = Qt::UserRole, ///< picture key
        KeyRole,                    ///< node key
    };

    /// `formats` must outlive the model.
    explicit BrowseTreeModel(const FormatRegistry &formats);
    ~BrowseTreeModel() override;

    /// Removes all nodes.
    void Clear();

    /// From here to EndLoad, nodes are added aside and the tree is empty.
    void BeginLoad();
    /// Shows what was added.
    void EndLoad();
    bool IsLoading() const { return m_loading; }

    /// The group with that key, added with text and picture when there is none.
    Group &AddGroup(const QString &key, const QString &text, const QString &picture);
    /// Adds a listing under a group. Gives the existing node when its ID is in the tree already.
    Listing &AddListing(Group &group, pugi::xml_node element, const QString &picture);

    /// Puts a listing where its label now belongs, in its own group or another.
    void PlaceListing(Listing &listing, Group &group);
    void RemoveListing(Listing &listing);
    void RemoveGroup(Group &group);
    void SetPicture(Listing &listing, const QString &picture);
    void SetPicture(Group &group, const QString &picture);
    /// `spoken`: what a screen reader says in its place, "" for the text itself.
    void SetText(Group &group, const QString &text, const QString &spoken = {});

    Group *FindGroup(const QString &key) const;
    Listing *FindListing(const QString &id) const;
    /// The node of a listing, or the one that stands there for its ID.
    Listing *FindListing(pugi::xml_node element) const;
    /// Groups in tree order; during a load, those added so far.
    const std::vector<std::unique_ptr<Group>> &Groups() const { return m_nodes.groups; }
    qsizetype NumberOfListings() const { return m_nodes.listingsById.size(); }

    /// The group or listing behind an index; null for the other kind.
    Group *GroupAt(const QModelIndex &index) const;
    Listing *ListingAt(const QModelIndex &index) const;
    QModelIndex IndexOf(const Group &group) const;
    QModelIndex IndexOf(const Listing &listing) const;

    /// "s" + ID for a listing, the group's key for a group, "" for no node.
    QString NodeKey(const QModelIndex &index) const;
    /// The picture key of a node.
    QString NodePicture(const QModelIndex &index) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override { return rowCount(parent) > 0; }
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    struct Nodes
    {
        std::vector<std::unique_ptr<Group>> groups;
        QHash<QString, Group *> groupsByKey;
        IdMap<Listing *> listingsById;
    };

    static bool ComesBefore(const std::unique_ptr<Group> &group, const std::unique_ptr<Group> &other)
    {
        return group->m_sortKey < other->m_sortKey;
    }
    int RowOf(const Listing &listing) const;
    void MoveToGroup(Listing &listing, int oldRow, Group &group);
    void MoveWithinGroup(Listing &listing, int oldRow);
    void RenumberGroups(size_t from);

    void Reset(bool loading);
    QString SpokenText(const Listing &listing) const;

    const FormatRegistry &m_formats;
    Nodes m_nodes;
    bool m_loading = false;
    quint32 m_nextOrder = 0;
};
