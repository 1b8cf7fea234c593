#include "browsetree.h"

#include "catalogdocument.h"
#include "failures.h"
#include "fields.h"
#include "modXMLSubs.h"
#include "numbers.h"
#include "paths.h"
#include "recordingtypes.h"
#include "showntypes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmMain";
constexpr auto kTotalsGap = "       "_L1;

/// What of a listing neither its label nor its place nor its picture shows.
constexpr std::array kNotInTheTree{
    Field::kStored, Field::kDateAdded, Element::kSetList, Element::kNotes, Element::kComment};

/// How many listings of a group have each picture.
std::map<QString, int> CountPictures(const BrowseTreeModel::Group &group)
{
    std::map<QString, int> counts;
    for (const auto &listing : group.InAnyOrder())
        ++counts[listing->picture];
    return counts;
}

QString ToText(std::string_view ascii)
{
    return QString::fromLatin1(ascii.data(), static_cast<qsizetype>(ascii.size()));
}

} // namespace

BrowseTree::BrowseTree(
    CatalogDocument &document, FormatRegistry &formats, ShownTypes &types, const ViewOptions &options)
    : m_document(document),
      m_formats(formats),
      m_types(types),
      m_options(options),
      m_model(formats)
{
    connect(&document, &CatalogDocument::aboutToBeReplaced, &m_model, &BrowseTreeModel::Clear);
    connect(&document, &CatalogDocument::listingAdded, this, &BrowseTree::FollowAddition);
    connect(&document, &CatalogDocument::listingEdited, this, &BrowseTree::FollowEdit);
    connect(&document, &CatalogDocument::listingAboutToBeRemoved, this, &BrowseTree::Forget);
}

void BrowseTree::LoadTypeMenu()
{
    m_types.LoadTypeMenu(FileTitle(m_document.Path()), m_document.Entries(CatalogList::RecordingTypes));
}

bool BrowseTree::LoadShows()
{
    return Guarded(kModule, "LoadShows", [this] { Load(m_document.Catalog().children(Element::kItem)); });
}

bool BrowseTree::LoadShowList(const std::vector<pugi::xml_node> &listings)
{
    return Load(listings);
}

template<class Listings>
bool BrowseTree::Load(const Listings &listings)
{
    // A load that broke off has left groups that are gone.
    m_knownGroups.clear();
    m_model.BeginLoad();
    // What was added is shown even when a later listing failed, and before anybody hears of new types.
    const bool added = m_types.ChangeTogether([&] {
        const bool all = Guarded(kModule, "LoadShowList", [&] {
            for (const pugi::xml_node listing : listings)
                AddShowToTree(listing);
        });
        for (const auto &group : m_model.Groups())
            AddYearCount(*group);
        m_model.EndLoad();
        return all;
    });
    m_knownGroups.clear();
    return added;
}

BrowseTree::Listing *BrowseTree::AddShowToTree(pugi::xml_node listing)
{
    return Reported(kModule, "AddShowToTree", [&]() -> Listing * {
        Group *group = VerifyParentNode(listing);
        const bool isWrongDate = IsWrongDate(listing);
        if (!group || (!m_options.showWrongDate && isWrongDate))
            return nullptr;
        const int format = m_formats.FindOrAddFormat({listing.attribute(Field::kFormat).value()});
        if (!IsShownByFilter(m_formats.ClassAt(format)))
            return nullptr;
        return &m_model.AddListing(*group, listing, m_formats.ShowImageKeyAt(format, isWrongDate));
    });
}

void BrowseTree::FollowAddition(pugi::xml_node listing)
{
    Guarded(kModule, "FollowAddition", [&] { AddShowToTree(listing); });
}

bool BrowseTree::IsShownByFilter(FormatKind kind) const
{
    switch (m_options.filter) {
    case ViewFilter::All:
        return true;
    case ViewFilter::LosslessOnly:
        return kind == FormatKind::Lossless;
    case ViewFilter::LossyOnly:
        return kind == FormatKind::Lossy;
    case ViewFilter::NeedLossless:
        return kind != FormatKind::Lossless;
    case ViewFilter::DoNotHave:
        return kind == FormatKind::Unknown;
    }
    return true;
}

BrowseTree::Group *BrowseTree::VerifyParentNode(pugi::xml_node listing)
{
    const TypeAndYear place{{listing.attribute(Field::kType).value()}, {listing.attribute(Field::kYear).value()}};
    return Reported(kModule, "VerifyParentNode", [&] {
        if (!m_model.IsLoading())
            return FindOrAddGroup(place);
        if (const auto known = m_knownGroups.constFind(place); known != m_knownGroups.cend())
            return *known;
        return *m_knownGroups.insert(place, FindOrAddGroup(place));
    });
}

BrowseTree::Group *BrowseTree::FindOrAddGroup(const TypeAndYear &place)
{
    const int builtIn = FindBuiltInType(place.type.text);
    if (builtIn < 0)
        return GroupOfOwnType(FromXml(place.type.text));
    if (!m_types.IsShown(builtIn))
        return nullptr;
    const RecordingType &type = kBuiltInTypes[static_cast<size_t>(builtIn)];
    if (type.group.empty()) {
        const QString year = NumberText(LeadingNumber(std::string_view(place.year.text)));
        return AddNode(u'y' + year, year, u"Closed"_s);
    }
    const QString group = ToText(type.group);
    return AddNode(group, group, ToText(type.picture));
}

BrowseTree::Group *BrowseTree::GroupOfOwnType(const QString &typeName)
{
    int type = m_types.Find(typeName);
    if (type < 0) {
        m_document.SupplyType(typeName);
        type = m_types.AddTypeMenuItem(typeName);
    }
    if (!m_types.IsShown(type))
        return nullptr;
    return AddNode(typeName, typeName, u"Closed"_s);
}

BrowseTree::Group *BrowseTree::AddNode(const QString &key, const QString &text, const QString &picture)
{
    return Reported(kModule, "AddNode", [&] { return &m_model.AddGroup(key, text, picture); });
}

void BrowseTree::AddYearCount(Group &group)
{
    if (!m_options.showYearTotals)
        return;
    Guarded(kModule, "AddYearCount", [&] {
        int lossless = 0;
        int lossy = 0;
        int all = 0;
        for (const auto &[picture, count] : CountPictures(group)) {
            if (picture == kWrongDatePicture)
                continue;
            all += count;
            if (picture == kUncheckedPicture)
                continue;
            const FormatKind kind = m_formats.FormatClass(FormatNameFromKey(picture));
            (kind == FormatKind::Lossless ? lossless : lossy) += count;
        }
        const QString name = group.text.section(kTotalsGap, 0, 0);
        m_model.SetText(
            group, name + kTotalsGap + u"( %1 / %2 / %3 )"_s.arg(lossless).arg(lossy).arg(all),
            name + u", %1 lossless, %2 lossy, %3 in all"_s.arg(lossless).arg(lossy).arg(all));
    });
}

void BrowseTree::RemoveYearCount(Group &group)
{
    m_model.SetText(group, group.text.section(u' ', 0, 0));
}

void BrowseTree::UpdateListName(Listing &listing)
{
    Guarded(kModule, "UpdateListName", [&] {
        Group *group = VerifyParentNode(listing.element);
        Group &oldGroup = *listing.group;
        m_model.PlaceListing(listing, group ? *group : oldGroup);
        if (oldGroup.InAnyOrder().empty())
            m_model.RemoveGroup(oldGroup);
    });
}

void BrowseTree::UpdateShowImage(Listing &listing)
{
    m_model.SetPicture(listing, PictureOf(listing.element));
}

QString BrowseTree::PictureOf(pugi::xml_node listing)
{
    return m_formats.GetShowImageKey(ReadAttribute(listing, Field::kFormat), IsWrongDate(listing));
}

BrowseTree::Listing *BrowseTree::FindNode(pugi::xml_node listing) const
{
    Listing *node = m_model.FindListing(listing);
    return node && node->element == listing ? node : nullptr;
}

void BrowseTree::FollowEdit(pugi::xml_node listing, const char *name)
{
    const auto is = [name](const char *other) { return std::strcmp(name, other) == 0; };
    Listing *node = FindNode(listing);
    if (!node || std::ranges::any_of(kNotInTheTree, is))
        return;
    if (is(Field::kFormat)) {
        UpdateShowImage(*node);
        AddYearCount(*node->group);
        return;
    }
    if (is(Field::kWrongDate))
        UpdateShowImage(*node);
    UpdateListName(*node);
}

void BrowseTree::Forget(pugi::xml_node listing)
{
    if (Listing *node = FindNode(listing))
        m_model.RemoveListing(*node);
}
