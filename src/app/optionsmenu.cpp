#include "optionsmenu.h"

#include "browsetree.h"
#include "clsINI.h"
#include "failures.h"
#include "mainmenu.h"
#include "showntypes.h"
#include "treepane.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frm";
constexpr auto kSection = "Settings"_L1;
constexpr auto kWrongDate = "WrongDate"_L1;
constexpr auto kYearTotals = "YearTotals"_L1;
constexpr auto kOpenMRUOnStartup = "OpenMRUOnStartup"_L1;

} // namespace

OptionsMenu::OptionsMenu(
    MainMenu &menu, clsINI &settings, ViewOptions &options, ShownTypes &types, BrowseTree &tree, TreePane &pane)
    : QObject(menu.mnuOptions),
      m_menu(menu),
      m_settings(settings),
      m_options(options),
      m_types(types),
      m_tree(tree),
      m_pane(pane)
{
    for (int i = 0; i < static_cast<int>(m_menu.mnuViewFilter.size()); ++i)
        connect(m_menu.mnuViewFilter[static_cast<size_t>(i)], &QAction::triggered, this, [this, i] {
            mnuViewFilter_Click(i);
        });
    connect(m_menu.mnuEditShowWrongDate, &QAction::triggered, this, &OptionsMenu::mnuEditShowWrongDate_Click);
    connect(m_menu.mnuEditShowYearTotals, &QAction::triggered, this, &OptionsMenu::mnuEditShowYearTotals_Click);
    connect(
        m_menu.mnuOptionsOpenMRUOnStartup, &QAction::triggered, this, &OptionsMenu::mnuOptionsOpenMRUOnStartup_Click);
    connect(&m_types, &ShownTypes::changed, this, &OptionsMenu::ShowTypes);
    ShowTypes();
}

void OptionsMenu::LoadSettings()
{
    m_options.showWrongDate = m_settings.ReadFlag(kSection, kWrongDate, true);
    m_options.showYearTotals = m_settings.ReadFlag(kSection, kYearTotals, true);
    m_menu.mnuEditShowWrongDate->setChecked(m_options.showWrongDate);
    m_menu.mnuEditShowYearTotals->setChecked(m_options.showYearTotals);
    m_menu.mnuOptionsOpenMRUOnStartup->setChecked(m_settings.ReadFlag(kSection, kOpenMRUOnStartup, false));
}

void OptionsMenu::mnuViewFilter_Click(int index)
{
    Guarded(kModule, "mnuViewFilter_Click", [&] {
        m_options.filter = static_cast<ViewFilter>(index);
        m_pane.ShowAll();
    });
}

void OptionsMenu::mnuEditGroupsItem_Click(int index)
{
    Guarded(kModule, "mnuEditGroupsItem_Click", [&] {
        m_types.Toggle(index);
        m_pane.ShowCatalog();
    });
}

void OptionsMenu::mnuEditShowWrongDate_Click()
{
    Guarded(kModule, "mnuEditShowWrongDate_Click", [this] {
        m_options.showWrongDate = m_menu.mnuEditShowWrongDate->isChecked();
        m_settings.WriteFlag(kSection, kWrongDate, m_options.showWrongDate);
        m_pane.ShowAll();
    });
}

void OptionsMenu::mnuEditShowYearTotals_Click()
{
    Guarded(kModule, "mnuEditShowYearTotals_Click", [this] {
        m_options.showYearTotals = m_menu.mnuEditShowYearTotals->isChecked();
        m_settings.WriteFlag(kSection, kYearTotals, m_options.showYearTotals);

        // Only the selected group and those below it follow at once; the others do with the next load.
        QModelIndex top = m_pane.View().currentIndex();
        while (top.parent().isValid())
            top = top.parent();
        const auto &groups = m_tree.Model().Groups();
        for (size_t row = static_cast<size_t>(qMax(0, top.row())); row < groups.size(); ++row) {
            if (m_options.showYearTotals)
                m_tree.AddYearCount(*groups[row]);
            else
                m_tree.RemoveYearCount(*groups[row]);
        }
    });
}

void OptionsMenu::mnuOptionsOpenMRUOnStartup_Click()
{
    Guarded(kModule, "mnuOptionsOpenMRUOnStartup_Click", [this] {
        m_settings.WriteFlag(kSection, kOpenMRUOnStartup, m_menu.mnuOptionsOpenMRUOnStartup->isChecked());
    });
}

void OptionsMenu::ShowTypes()
{
    const auto count = static_cast<size_t>(m_types.count());
    while (mnuEditGroupsItem.size() > count) {
        // Later, since the list may shrink while one of the items is being clicked.
        m_menu.mnuEditGroups->removeAction(mnuEditGroupsItem.back());
        mnuEditGroupsItem.back()->deleteLater();
        mnuEditGroupsItem.pop_back();
    }
    while (mnuEditGroupsItem.size() < count)
        mnuEditGroupsItem.push_back(AddTypeItem());
    for (size_t i = 0; i < count; ++i) {
        mnuEditGroupsItem[i]->setText(u'&' + MenuText(m_types.Name(static_cast<int>(i))));
        mnuEditGroupsItem[i]->setChecked(m_types.IsShown(static_cast<int>(i)));
    }
}

QAction *OptionsMenu::AddTypeItem()
{
    const int index = static_cast<int>(mnuEditGroupsItem.size());
    QAction *item = m_menu.mnuEditGroups->addAction(QString());
    item->setObjectName(u"mnuEditGroupsItem%1"_s.arg(index));
    item->setCheckable(true);
    connect(item, &QAction::triggered, this, [this, index] { mnuEditGroupsItem_Click(index); });
    return item;
}
