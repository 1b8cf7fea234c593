#include "browsetreemodel.h"

#include "fields.h"
#include "flatfile.h"
#include "formatregistry.h"
#include "labels.h"
#include "modXMLSubs.h"
#include "showntext.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The place of a listing among its siblings: by label, and equal labels in the order in which they came.
struct Place
{
    std::string sortKey;
    quint32 order;

    explicit Place(const BrowseTreeModel::Listing &listing)
        : sortKey(SortKey(ListingLabelUtf8(listing.element))),
          order(listing.order)
    {
    }
    bool operator<(const Place &other) const
    {
        const int compared = sortKey.compare(other.sortKey);
        return compared != 0 ? compared < 0 : order < other.order;
    }
};

/// Where a place stands, or would stand, in a part of a list that is in order.
template<class Iterator>
Iterator FindPlace(Iterator first, Iterator last, const Place &place)
{
    return std::lower_bound(
        first, last, place, [](const auto &listing, const Place &wanted) { return Place(*listing) < wanted; });
}

/// After this an insertion needs no memory: what fails for lack of it has changed nothing.
template<class List>
void MakeRoom(List &list)
{
    if (list.size() == list.capacity())
        list.reserve(2 * list.size() + 1);
}

const char *IdOf(pugi::xml_node listing)
{
    return listing.attribute(Field::kId).value();
}

QString ShownLabel(pugi::xml_node listing)
{
    constexpr qsizetype kLongestCharacter = 4; // bytes of UTF-8
    const std::string label = ListingLabelUtf8(listing);
    return ShownText(FromUtf8(std::string_view(label).substr(0, (kMostShown + 1) * kLongestCharacter)));
}

} // namespace

QString BrowseTreeModel::Listing::Id() const
{
    return ReadAttribute(element, Field::kId);
}

const BrowseTreeModel::Listings &BrowseTreeModel::Group::InOrder() const
{
    if (m_isInOrder)
        return m_listings;
    // Every label is made once.
    std::vector<std::pair<Place, std::unique_ptr<Listing> *>> placed;
    placed.reserve(m_listings.size());
    for (auto &listing : m_listings)
        placed.emplace_back(Place(*listing), &listing);
    std::sort(placed.begin(), placed.end());
    Listings ordered;
    ordered.reserve(placed.size());
    for (const auto &[place, listing] : placed)
        ordered.push_back(std::move(*listing));
    m_listings = std::move(ordered);
    m_isInOrder = true;
    return m_listings;
}

BrowseTreeModel::Listings &BrowseTreeModel::Group::Ordered()
{
    InOrder();
    return m_listings;
}

BrowseTreeModel::BrowseTreeModel(const FormatRegistry &formats) : m_formats(formats) {}

BrowseTreeModel::~BrowseTreeModel() = default;

void BrowseTreeModel::Clear()
{
    Reset(false);
}

void BrowseTreeModel::BeginLoad()
{
    Reset(true);
}

void BrowseTreeModel::Reset(bool loading)
{
    beginResetModel();
    m_nodes = {};
    m_nextOrder = 0;
    m_loading = loading;
    endResetModel();
}

void BrowseTreeModel::EndLoad()
{
    std::ranges::stable_sort(m_nodes.groups, ComesBefore);
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
    group.m_sortKey = SortKey(text.toStdString());
    MakeRoom(m_nodes.groups);
    m_nodes.groupsByKey.insert(key, &group);
    if (m_loading) {
        m_nodes.groups.push_back(std::move(added));
        return group;
    }
    const auto at = std::ranges::upper_bound(m_nodes.groups, added, ComesBefore);
    const auto row = static_cast<int>(at - m_nodes.groups.begin());
    beginInsertRows({}, row, row);
    m_nodes.groups.insert(at, std::move(added));
    RenumberGroups(static_cast<size_t>(row));
    endInsertRows();
    return group;
}

BrowseTreeModel::Listing &BrowseTreeModel::AddListing(Group &group, pugi::xml_node element, const QString &picture)
{
    if (Listing *existing = FindListing(element))
        return *existing;

    auto added = std::make_unique<Listing>();
    Listing &listing = *added;
    listing.element = element;
    listing.picture = picture;
    listing.group = &group;
    listing.order = m_nextOrder++;
    Listings &listings = m_loading ? group.m_listings : group.Ordered();
    MakeRoom(listings);
    if (m_loading) {
        m_nodes.listingsById.Insert(IdOf(element), &listing);
        listings.push_back(std::move(added));
        group.m_isInOrder = false;
        return listing;
    }
    const auto at = FindPlace(listings.begin(), listings.end(), Place(listing));
    const auto row = static_cast<int>(at - listings.begin());
    m_nodes.listingsById.Insert(IdOf(element), &listing);
    beginInsertRows(IndexOf(group), row, row);
    listings.insert(at, std::move(added));
    endInsertRows();
    return listing;
}

void BrowseTreeModel::PlaceListing(Listing &listing, Group &group)
{
    const int oldRow = RowOf(listing);
    if (&group != listing.group)
        MoveToGroup(listing, oldRow, group);
    else
        MoveWithinGroup(listing, oldRow);
    const QModelIndex index = IndexOf(listing);
    emit dataChanged(index, index);
}

void BrowseTreeModel::MoveToGroup(Listing &listing, int oldRow, Group &group)
{
    Group &oldGroup = *listing.group;
    Listings &from = oldGroup.Ordered();
    Listings &to = group.Ordered();
    MakeRoom(to);
    const auto at = FindPlace(to.begin(), to.end(), Place(listing));
    const auto newRow = static_cast<int>(at - to.begin());
    beginMoveRows(IndexOf(oldGroup), oldRow, oldRow, IndexOf(group), newRow);
    std::unique_ptr<Listing> held = std::move(from[static_cast<size_t>(oldRow)]);
    from.erase(from.begin() + oldRow);
    listing.group = &group;
    to.insert(at, std::move(held));
    endMoveRows();
}

void BrowseTreeModel::MoveWithinGroup(Listing &listing, int oldRow)
{
    Listings &listings = listing.group->Ordered();
    // All but the listing itself are still in order: its place is before it or behind.
    const auto at = listings.begin() + oldRow;
    const Place place(listing);
    const bool goesUp = at != listings.begin() && place < Place(**std::prev(at));
    const auto to = goesUp ? FindPlace(listings.begin(), at, place) : FindPlace(at + 1, listings.end(), place);
    if (to == at + 1)
        return;
    const QModelIndex parent = IndexOf(*listing.group);
    beginMoveRows(parent, oldRow, oldRow, parent, static_cast<int>(to - listings.begin()));
    if (goesUp)
        std::rotate(to, at, at + 1);
    else
        std::rotate(at, at + 1, to);
    endMoveRows();
}

void BrowseTreeModel::RemoveListing(Listing &listing)
{
    Group &group = *listing.group;
    const int row = RowOf(listing);
    beginRemoveRows(IndexOf(group), row, row);
    m_nodes.listingsById.Remove(IdOf(listing.element));
    group.m_listings.erase(group.m_listings.begin() + row);
    endRemoveRows();
}

void BrowseTreeModel::RemoveGroup(Group &group)
{
    const int row = group.m_row;
    beginRemoveRows({}, row, row);
    m_nodes.groupsByKey.remove(group.key);
    for (const auto &listing : group.InAnyOrder())
        m_nodes.listingsById.Remove(IdOf(listing->element));
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

void BrowseTreeModel::SetText(Group &group, const QString &text, const QString &spoken)
{
    group.text = text;
    group.spoken = spoken;
    if (m_loading)
        return;
    const QModelIndex index = IndexOf(group);
    emit dataChanged(index, index, {Qt::DisplayRole, Qt::AccessibleTextRole});
}

BrowseTreeModel::Group *BrowseTreeModel::FindGroup(const QString &key) const
{
    return m_nodes.groupsByKey.value(key);
}

BrowseTreeModel::Listing *BrowseTreeModel::FindListing(const QString &id) const
{
    return m_nodes.listingsById.Find(id.toUtf8().constData());
}

BrowseTreeModel::Listing *BrowseTreeModel::FindListing(pugi::xml_node element) const
{
    return m_nodes.listingsById.Find(IdOf(element));
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
    return group->InOrder()[static_cast<size_t>(index.row())].get();
}

QModelIndex BrowseTreeModel::IndexOf(const Group &group) const
{
    return createIndex(group.m_row, 0);
}

QModelIndex BrowseTreeModel::IndexOf(const Listing &listing) const
{
    return createIndex(RowOf(listing), 0, listing.group);
}

int BrowseTreeModel::RowOf(const Listing &listing) const
{
    const Listings &listings = listing.group->InOrder();
    const auto at = std::ranges::find(listings, &listing, &std::unique_ptr<Listing>::get);
    return static_cast<int>(at - listings.begin());
}

void BrowseTreeModel::RenumberGroups(size_t from)
{
    for (size_t row = from; row < m_nodes.groups.size(); ++row)
        m_nodes.groups[row]->m_row = static_cast<int>(row);
}

QString BrowseTreeModel::NodeKey(const QModelIndex &index) const
{
    if (const Listing *listing = ListingAt(index))
        return u's' + listing->Id();
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
    return group ? static_cast<int>(group->InAnyOrder().size()) : 0;
}

int BrowseTreeModel::columnCount(const QModelIndex & /*parent*/) const
{
    return 1;
}

/// The header is hidden; screen readers name the column by it.
QVariant BrowseTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isColumn = section == 0 && orientation == Qt::Horizontal;
    return isColumn && role == Qt::DisplayRole ? QVariant(u"Listings"_s) : QVariant();
}

/// What screen readers say for a listing: its picture in words after the label.
QString BrowseTreeModel::SpokenText(const Listing &listing) const
{
    return ShownLabel(listing.element) + u", "_s + m_formats.SpokenPicture(listing.picture);
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
            return ShownText(group->text);
        return ShownLabel(ListingAt(index)->element);
    }
    case Qt::AccessibleTextRole: {
        if (const Group *group = GroupAt(index))
            return ShownText(group->spoken);
        return SpokenText(*ListingAt(index));
    }
    case Qt::DecorationRole:
        return m_formats.Pictures().Picture(NodePicture(index));
    case PictureRole:
        return NodePicture(index);
    case KeyRole:
        return NodeKey(index);
    default:
        return {};
    }
}
