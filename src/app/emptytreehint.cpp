#include "emptytreehint.h"

#include "showntext.h"
#include "workspace.h"

using namespace Qt::StringLiterals;

namespace {

QString HiddenTypes(const ShownTypes &types)
{
    QStringList names;
    for (int i = 0; i < types.count(); ++i) {
        if (!types.IsShown(i))
            names.append(types.Name(i));
    }
    return names.join(u", "_s);
}

/// A line for each option that keeps listings out of the tree.
QStringList Restrictions(const Workspace &workspace, const QString &filterName)
{
    QStringList lines;
    if (workspace.options.filter != ViewFilter::All)
        lines += u"Filter: "_s + filterName;
    if (const QString hidden = HiddenTypes(workspace.types); !hidden.isEmpty())
        lines += u"Hidden types: "_s + ShownText(hidden);
    if (!workspace.options.showWrongDate)
        lines += u"Listings with a wrong date are hidden."_s;
    return lines;
}

} // namespace

QString EmptyTreeHint(const Workspace &workspace, bool isOpen, const QString &filterName)
{
    if (workspace.tree.ShownCount() > 0 || workspace.tree.Model().IsLoading())
        return {};
    if (!isOpen)
        return u"No catalog is open.\n\nFile, New Catalog makes one.\nFile, Open Catalog opens one, and so does a "
               "file that is dropped here."_s;
    if (workspace.document.NumberOfListings() == 0)
        return u"The catalog has no listings yet.\n\nFile, New Source adds one."_s;
    const QString nothing = u"No listing of the catalog is shown.\n\n"_s;
    const QStringList restrictions = Restrictions(workspace, filterName);
    if (restrictions.isEmpty())
        return nothing + u"Edit, Refresh (F5) shows all of them."_s;
    return nothing + restrictions.join(u'\n') + u"\n\nThe Options menu changes that."_s;
}
