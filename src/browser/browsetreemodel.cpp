#include "browsetreemodel.h"

#include "labels.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The place of a node among its siblings: by text, and equal texts in the order in which they came.
struct Place
{
    const std::string &sortKey;
    quint32 order;

    template<class Node>
    explicit Place(const std::unique_ptr<Node> &node) : sortKey(node->sortKey),
                                                        order(node->order)
    {
    }
    Place(const std::string &key, quint32 number) : sortKey(key), order(number) {}

    bool operator<(const Place &other) const
    {
        const int compared = sortKey.compare(other.sortKey);
        return compared != 0 ? compared < 0 : order < other.order;
    }
};

constexpr auto kInTextOrder = [](const auto &a, const auto &b) { return Place(a) < Place(b); };

/// The row at which a place stands, or would stand, in a sorted list.
template<class Node>
int RowFor(const std::vector<std::unique_ptr<Node>> &nodes, const Place &place)
{
    const auto before = [](const std::unique_ptr<Node> &node, const Place &wanted) { return Place(node) < wanted; };
    return static_cast<int>(std::lower_bound(nodes.begin(), nodes.end(), place, before) - nodes.begin());
}

/// A listing's label, cut where it is far too long for any line.
QString ShownLabel(pugi::xml_node listing)
{
    constexpr qsizetype kLongestCharacter = 4; // bytes of UTF-8
    constexpr qsizetype kShown = BrowseTreeModel::kShownLabelLength;
    const std::string label = ListingLabelUtf8(listing);
    const auto size = static_cast<qsizetype>(label.size());
    const QString shown = QString::fromUtf8(label.data(), qMin(size, (kShown + 1) * kLongestCharacter));
    return shown.size() <= kShown ? shown : QString(shown.first(kShown) + u'…');
}

} // namespace

BrowseTreeModel::BrowseTreeModel(const PictureList &pictures) : m_pictures(pictures) {}

BrowseTreeModel::~BrowseTreeModel() = default;

void BrowseTreeModel::Clear()
{
    beginResetModel();
    m_nodes = {};
    m_nextOrder = 0;
    endResetModel();
}

void BrowseTreeModel::BeginLoad()
{
    Clear();
    m_loading = true;
}

void BrowseTreeModel::EndLoad()
{
    for (const auto &group : m_nodes.groups)
        std::ranges::sort(group->listings, kInTextOrder);
    std::ranges::sort(m_nodes.groups, kInTextOrder);
    RenumberGroups(0);
    beginResetModel();
    m_loading = false;
    endResetModel();
}

BrowseTreeModel::Group &BrowseTreeModel::AddGroup(const QString &key, const QString &text, const QString &picture)
{
    if (Group *existing = FindGroup(key))
        return *existing;

    auto added = std::make_unique<Group>();
    Group &group = *added;
    group.key = key;
    group.text = text;
    group.picture = picture;
    group.sortKey = SortKey(text.toStdString());
    group.order = m_nextOrder++;
    m_nodes.groupsByKey.insert(key, &group);
    if (m_loading) {
        m_nodes.groups.push_back(std::move(added));
        return group;
    }
    const int row = RowFor(m_nodes.groups, {group.sortKey, group.order});
    beginInsertRows({}, row, row);
    m_nodes.groups.insert(m_nodes.groups.begin() + row, std::move(added));
    RenumberGroups(static_cast<size_t>(row));
    endInsertRows();
    return group;
}

BrowseTreeModel::Listing &
BrowseTreeModel::AddListing(Group &group, pugi::xml_node element, const QString &id, const QString &picture)
{
    Listing *&entry = m_nodes.listingsById[id];
    if (entry)
        return *entry;

    auto added = std::make_unique<Listing>();
    Listing &listing = *added;
    entry = &listing;
    listing.element = element;
    listing.id = id;
    listing.picture = picture;
    listing.sortKey = SortKey(ListingLabelUtf8(element));
    listing.group = &group;
    listing.order = m_nextOrder++;
    if (m_loading) {
        group.listings.push_back(std::move(added));
        return listing;
    }
    const int row = RowFor(group.listings, {listing.sortKey, listing.order});
    beginInsertRows(IndexOf(group), row, row);
    group.listings.insert(group.listings.begin() + row, std::move(added));
    endInsertRows();
    return listing;
}

void BrowseTreeModel::PlaceListing(Listing &listing, Group &group)
{
    const int oldRow = RowOf(listing);
    std::string sortKey = SortKey(ListingLabelUtf8(listing.element));
    if (&group != listing.group)
        MoveToGroup(listing, oldRow, group, std::move(sortKey));
    else if (sortKey != listing.sortKey)
        MoveWithinGroup(listing, oldRow, std::move(sortKey));
    const QModelIndex index = IndexOf(listing);
    emit dataChanged(index, index);
}

void BrowseTreeModel::MoveToGroup(Listing &listing, int oldRow, Group &group, std::string sortKey)
{
    Group &oldGroup = *listing.group;
    const int newRow = RowFor(group.listings, {sortKey, listing.order});
    beginMoveRows(IndexOf(oldGroup), oldRow, oldRow, IndexOf(group), newRow);
    std::unique_ptr<Listing> held = std::move(oldGroup.listings[static_cast<size_t>(oldRow)]);
    oldGroup.listings.erase(oldGroup.listings.begin() + oldRow);
    listing.sortKey = std::move(sortKey);
    listing.group = &group;
    group.listings.insert(group.listings.begin() + newRow, std::move(held));
    endMoveRows();
}

void BrowseTreeModel::MoveWithinGroup(Listing &listing, int oldRow, std::string sortKey)
{
    auto &listings = listing.group->listings;
    // Found in the list that still holds the listing under its old key, which is how a move names its destination too.
    const int destination = RowFor(listings, {sortKey, listing.order});
    const bool staysPut = destination == oldRow || destination == oldRow + 1;
    const QModelIndex parent = IndexOf(*listing.group);
    if (!staysPut)
        beginMoveRows(parent, oldRow, oldRow, parent, destination);
    listing.sortKey = std::move(sortKey);
    const auto at = listings.begin() + oldRow;
    if (destination > oldRow)
        std::rotate(at, at + 1, listings.begin() + destination);
    else
        std::rotate(listings.begin() + destination, at, at + 1);
    if (!staysPut)
        endMoveRows();
}

void BrowseTreeModel::RemoveListing(Listing &listing)
{
    Group &group = *listing.group;
    const int row = RowOf(listing);
    beginRemoveRows(IndexOf(group), row, row);
    m_nodes.listingsById.remove(listing.id);
    group.listings.erase(group.listings.begin() + row);
    endRemoveRows();
}

void BrowseTreeModel::RemoveGroup(Group &group)
{
    const int row = group.row;
    beginRemoveRows({}, row, row);
    m_nodes.groupsByKey.remove(group.key);
    for (const auto &listing : group.listings)
        m_nodes.listingsById.remove(listing->id);
    m_nodes.groups.erase(m_nodes.groups.begin() + row);
    RenumberGroups(static_cast<size_t>(row));
    endRemoveRows();
}

void BrowseTreeModel::SetPicture(Listing &listing, const QString &picture)
{
    listing.picture = picture;
    const QModelIndex index = IndexOf(listing);
    emit dataChanged(index, index, {Qt::DecorationRole, PictureRole});
}

void BrowseTreeModel::SetPicture(Group &group, const QString &picture)
{
    group.picture = picture;
    const QModelIndex index = IndexOf(group);
    emit dataChanged(index, index, {Qt::DecorationRole, PictureRole});
}

void BrowseTreeModel::SetText(Group &group, const QString &text)
{
    group.text = text;
    if (m_loading)
        return;
    const QModelIndex index = IndexOf(group);
    emit dataChanged(index, index, {Qt::DisplayRole});
}

BrowseTreeModel::Group *BrowseTreeModel::FindGroup(const QString &key) const
{
    return m_nodes.groupsByKey.value(key);
}

BrowseTreeModel::Listing *BrowseTreeModel::FindListing(const QString &id) const
{
    return m_nodes.listingsById.value(id);
}

BrowseTreeModel::Group *BrowseTreeModel::GroupAt(const QModelIndex &index) const
{
    if (!index.isValid() || index.internalPointer())
        return nullptr;
    return m_nodes.groups[static_cast<size_t>(index.row())].get();
}

BrowseTreeModel::Listing *BrowseTreeModel::ListingAt(const QModelIndex &index) const
{
    if (!index.isValid() || !index.internalPointer())
        return nullptr;
    const auto *group = static_cast<const Group *>(index.constInternalPointer());
    return group->listings[static_cast<size_t>(index.row())].get();
}

QModelIndex BrowseTreeModel::IndexOf(const Group &group) const
{
    return createIndex(group.row, 0);
}

QModelIndex BrowseTreeModel::IndexOf(const Listing &listing) const
{
    return createIndex(RowOf(listing), 0, listing.group);
}

int BrowseTreeModel::RowOf(const Listing &listing) const
{
    return RowFor(listing.group->listings, {listing.sortKey, listing.order});
}

void BrowseTreeModel::RenumberGroups(size_t from)
{
    for (size_t row = from; row < m_nodes.groups.size(); ++row)
        m_nodes.groups[row]->row = static_cast<int>(row);
}

QString BrowseTreeModel::NodeKey(const QModelIndex &index) const
{
    if (const Listing *listing = ListingAt(index))
        return u's' + listing->id;
    const Group *group = GroupAt(index);
    return group ? group->key : QString();
}

QString BrowseTreeModel::NodePicture(const QModelIndex &index) const
{
    if (const Listing *listing = ListingAt(index))
        return listing->picture;
    const Group *group = GroupAt(index);
    return group ? group->picture : QString();
}

QModelIndex BrowseTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || column != 0 || row >= rowCount(parent))
        return {};
    return createIndex(row, column, GroupAt(parent));
}

QModelIndex BrowseTreeModel::parent(const QModelIndex &index) const
{
    const auto *group = static_cast<const Group *>(index.constInternalPointer());
    return group ? IndexOf(*group) : QModelIndex();
}

int BrowseTreeModel::rowCount(const QModelIndex &parent) const
{
    if (m_loading)
        return 0;
    if (!parent.isValid())
        return static_cast<int>(m_nodes.groups.size());
    const Group *group = GroupAt(parent);
    return group ? static_cast<int>(group->listings.size()) : 0;
}

int BrowseTreeModel::columnCount(const QModelIndex & /*parent*/) const
{
    return 1;
}

Qt::ItemFlags BrowseTreeModel::flags(const QModelIndex &index) const
{
    constexpr Qt::ItemFlags kNode = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!index.isValid())
        return Qt::NoItemFlags;
    return index.internalPointer() ? kNode | Qt::ItemNeverHasChildren : kNode;
}

QVariant BrowseTreeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole: {
        if (const Group *group = GroupAt(index))
            return group->text;
        return ShownLabel(ListingAt(index)->element);
    }
    case Qt::DecorationRole:
        return m_pictures.Picture(NodePicture(index));
    case PictureRole:
        return NodePicture(index);
    case KeyRole:
        return NodeKey(index);
    default:
        return {};
    }
}
