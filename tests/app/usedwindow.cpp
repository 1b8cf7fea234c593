#include "usedwindow.h"

#include "labels.h"
#include "modXMLSubs.h"
#include "notebox.h"
#include "numbers.h"
#include "panelfields.h"
#include "recordingtypes.h"

#include <algorithm>
#include <span>

namespace {

/// The key of the group that a listing belongs to.
QString GroupOf(pugi::xml_node listing)
{
    const QString type = ReadAttribute(listing, "Type");
    if (type.isEmpty() || type == "Concert"_L1)
        return u'y' + NumberText(ReadNumber(listing, "Year"));
    return type == "Outtakes"_L1 || FindBuiltInType(type.toStdString()) < 0 ? type : type + u's';
}

QString TypeOf(pugi::xml_node listing)
{
    const QString type = ReadAttribute(listing, "Type");
    return type.isEmpty() ? u"Concert"_s : type;
}

/// What a field's control shows.
QString Shown(const QWidget &control)
{
    if (const auto *box = qobject_cast<const QComboBox *>(&control))
        return box->currentIndex() < 0 && !box->isEditable() ? box->placeholderText() : box->currentText();
    if (const auto *notes = qobject_cast<const NoteBox *>(&control))
        return notes->Text();
    return dynamic_cast<const QLineEdit &>(control).text();
}

/// Whether that is what is stored. What is typed is stored as it was typed.
bool ShowsStored(const QWidget &control, pugi::xml_node listing, const PanelField &field)
{
    const QString shown = Shown(control);
    const bool isText = field.kind == PanelField::Kind::TrackList || field.kind == PanelField::Kind::Text;
    const QString stored = isText ? ReadTextElement(listing, field.name) : ReadAttribute(listing, field.name);
    if (field.kind == PanelField::Kind::Date && shown == NumberText(ReadNumber(listing, field.name)))
        return true;
    if (field.kind == PanelField::Kind::TrackList && EscapeText(shown) == EscapeText(ParseSetList(stored)))
        return true;
    return isText ? EscapeText(shown) == EscapeText(stored) : shown == stored;
}

} // namespace

void UsedWindow::Make(UserPrompts &prompts)
{
    window.reset();
    workspace = std::make_unique<Workspace>(prompts);
    window = std::make_unique<frmMain>(
        *workspace, prompts, frmMain::StartUp{.arguments = {u"Live.xml"_s}, .sizeLimits = false});
}

void UsedWindow::Load()
{
    window->Form_Load();
    window->show();
    window->activateWindow();
}

bool UsedWindow::IsShown(pugi::xml_node listing) const
{
    const QString format = ReadAttribute(listing, "Format");
    const std::array shown{true, format == "CD"_L1, format == "MP3"_L1, format != "CD"_L1, format.isEmpty()};
    const ShownTypes &types = workspace->types;
    return types.IsShown(types.Find(TypeOf(listing))) && shown[size_t(workspace->options.filter)] &&
           (workspace->options.showWrongDate || ReadAttribute(listing, "WrongDate") != "1"_L1);
}

QString UsedWindow::FaultOfLoad() const
{
    QSet<QString> ids;
    for (const pugi::xml_node listing : workspace->document.Catalog().children("Item")) {
        const QString id = ReadAttribute(listing, "ID");
        if (!IsShown(listing) || ids.contains(id))
            continue;
        ids.insert(id);
        if (!workspace->tree.FindNode(listing))
            return id + u" is not there"_s;
    }
    return ids.size() == workspace->tree.ShownCount() ? Fault() : u"others are shown"_s;
}

bool UsedWindow::IsBehind() const
{
    return std::ranges::any_of(failures.reports, [](const FailureReport &report) {
        return QStringList{u"UpdateListName"_s, u"VerifyParentNode"_s, u"AddNode"_s}.contains(report.procName);
    });
}

QString UsedWindow::FaultOfTree() const
{
    const ShownTypes &types = workspace->types;
    for (const auto &group : workspace->tree.Model().Groups()) {
        std::string earlier;
        for (const auto &node : group->InOrder()) {
            const pugi::xml_node listing = node->element;
            if (listing.parent() != workspace->document.Catalog())
                return u"a node without a listing"_s;
            if (node->picture !=
                workspace->formats.GetShowImageKey(ReadAttribute(listing, "Format"), IsWrongDate(listing)))
                return node->picture + u" at "_s + node->Id();
            // One that was given a type that is not shown stays where it was.
            if (group->key != GroupOf(listing) && types.IsShown(types.Find(TypeOf(listing))))
                return u"%1 is in %2"_s.arg(node->Id(), group->key);
            std::string key = SortKey(ListingLabelUtf8(listing));
            if (key < earlier)
                return u"order at "_s + ListingLabel(listing);
            earlier = std::move(key);
        }
    }
    return {};
}

QString UsedWindow::FaultOfPanel(pugi::xml_node listing) const
{
    const auto isRight = [&](const PanelField &field) {
        return ShowsStored(*window->findChild<QWidget *>(QLatin1StringView(field.control)), listing, field);
    };
    for (const auto &fields : {std::span<const PanelField>(kPanelFields), std::span<const PanelField>(kPanelTexts)}) {
        if (const auto wrong = std::ranges::find_if_not(fields, isRight); wrong != fields.end())
            return u"panel's "_s + QLatin1StringView(wrong->control);
    }
    const bool isWrongDate = window->findChild<QCheckBox *>(u"chkWrongDate"_s)->isChecked();
    return isWrongDate == IsWrongDate(listing) ? QString() : u"panel's wrong date"_s;
}

QString UsedWindow::Fault() const
{
    if (QApplication::overrideCursor())
        return u"the busy pointer stays"_s;
    if (const QString fault = FaultOfTree(); !fault.isEmpty())
        return fault;
    const BrowseTreeModel &model = workspace->tree.Model();
    const auto count = model.NumberOfListings();
    const QString shown = u"(Showing %1 Items)"_s.arg(count);
    if (window->windowTitle().contains(u"(Showing"_s) != (count > 0) ||
        (count > 0 && !window->windowTitle().endsWith(shown)))
        return u"caption "_s + window->windowTitle();
    const auto *listing = model.ListingAt(Tree()->currentIndex());
    const QWidget &type = *window->findChild<QWidget *>(u"cboType"_s);
    // A listing that could not be shown is not there to be edited.
    if (type.isHidden() && listing && !failures.reports.empty())
        return {};
    if (type.isHidden() == bool(listing))
        return u"panel, when the current node is "_s + model.NodeKey(Tree()->currentIndex());
    return listing ? FaultOfPanel(listing->element) : QString();
}
