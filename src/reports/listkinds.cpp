#include "listkinds.h"

#include "catalogdocument.h"
#include "formatregistry.h"
#include "labels.h"

using namespace Qt::StringLiterals;

namespace {

/// Decides listing by listing, in tree order, what is listed.
class Decision
{
public:
    Decision(ListKind kind, FormatRegistry &formats) : m_kind(kind), m_formats(formats) {}

    bool Includes(const QString &picture);
    qsizetype Counted() const { return m_counted; }

private:
    bool Is(ListKind one, ListKind other) const { return m_kind == one || m_kind == other; }
    void Decide(bool included)
    {
        m_included = included;
        ++m_counted;
    }

    const ListKind m_kind;
    FormatRegistry &m_formats;
    bool m_included = false;
    qsizetype m_counted = 0;
};

bool Decision::Includes(const QString &picture)
{
    if (picture == kWrongDatePicture) {
        m_included = false;
        return false;
    }
    if (picture == kUncheckedPicture) {
        Decide(Is(ListKind::NeedLossless, ListKind::DoNotHave));
        return m_included;
    }
    switch (m_formats.FormatClass(FormatNameFromKey(picture))) {
    case FormatKind::Lossless:
        Decide(m_kind == ListKind::Lossless);
        break;
    case FormatKind::Lossy:
        Decide(Is(ListKind::Lossy, ListKind::NeedLossless));
        break;
    case FormatKind::Unknown:
        break;
    }
    return m_included;
}

} // namespace

QString ListKindCaption(ListKind kind)
{
    switch (kind) {
    case ListKind::Lossless:
        return u"&Lossless"_s;
    case ListKind::Lossy:
        return u"L&ossy"_s;
    case ListKind::NeedLossless:
        return u"&Need Lossless"_s;
    case ListKind::DoNotHave:
        break;
    }
    return u"&Do Not Have"_s;
}

QString ListKindName(ListKind kind)
{
    return ListKindCaption(kind).remove(u'&');
}

ListedLabels GatherLabels(ListKind kind, const ReportSource &source)
{
    Decision decision(kind, source.formats);
    ListedLabels listed;
    ForEachListing(source.tree, [&](const BrowseTreeModel::Listing &listing) {
        if (decision.Includes(listing.picture))
            listed.labels.append(ListingLabel(source.document.FirstOfSameId(listing.element)));
    });
    listed.total = decision.Counted();
    return listed;
}
