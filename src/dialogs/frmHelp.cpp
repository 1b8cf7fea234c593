#include "frmHelp.h"

#include "clsINI.h"
#include "controls.h"
#include "failures.h"
#include "helpbrowser.h"
#include "helpcontents.h"
#include "modGlobal.h"

#include <QAction>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStyle>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmHelp";
constexpr auto kPositionSection = "Help"_L1;
constexpr QSize kFirstSize(900, 640);
constexpr QSize kSmallestSize(480, 360);

QUrl AddressOf(const QTreeWidgetItem &item)
{
    return item.data(0, Qt::UserRole).toUrl();
}

} // namespace

frmHelp::frmHelp(const QString &helpFile, clsINI &settings, UserPrompts &prompts)
    : m_helpFile(helpFile),
      m_file(helpFile),
      m_settings(settings)
{
    setObjectName("frmHelp"_L1);
    setWindowTitle(m_file.Title());
    MakeControls(prompts);
    MakeActions();
    LoadContents();
    LoadPosition();
}

void frmHelp::ShowTopic(int context)
{
    helpPage->setSource(HelpBrowser::PageAddress(m_file.TopicPage(context)));
}

void frmHelp::MakeControls(UserPrompts &prompts)
{
    auto *splitter = new QSplitter(this);
    trvContents = MakeControl<QTreeWidget>(splitter, "trvContents"_L1);
    trvContents->setAccessibleName(u"Contents"_s);
    trvContents->setHeaderLabel(trvContents->accessibleName());
    trvContents->setHeaderHidden(true);
    helpPage = MakeControl<HelpBrowser>(splitter, "helpPage"_L1, m_file, prompts);
    splitter->setStretchFactor(1, 1);
    setCentralWidget(splitter);
    helpPage->setFocus();

    connect(trvContents, &QTreeWidget::currentItemChanged, this, &frmHelp::Form_ShowItem);
    connect(trvContents, &QTreeWidget::itemClicked, this, &frmHelp::Form_ShowItem);
    connect(helpPage, &QTextBrowser::sourceChanged, this, &frmHelp::helpPage_SourceChanged);
}

void frmHelp::MakeActions()
{
    QToolBar *bar = addToolBar(u"Navigation"_s);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto add = [&](QLatin1StringView name, const QString &caption, QStyle::StandardPixmap icon) {
        QAction *action = bar->addAction(style()->standardIcon(icon), caption);
        action->setObjectName(name);
        return action;
    };
    QAction *back = add("mnuBack"_L1, u"&Back"_s, QStyle::SP_ArrowBack);
    QAction *forward = add("mnuForward"_L1, u"&Forward"_s, QStyle::SP_ArrowForward);
    QAction *contents = add("mnuContents"_L1, u"&Contents"_s, QStyle::SP_DirHomeIcon);
    back->setShortcuts(QKeySequence::Back);
    forward->setShortcuts(QKeySequence::Forward);
    contents->setShortcut(Qt::ALT | Qt::Key_Home);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(back, &QAction::triggered, helpPage, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, helpPage, &QTextBrowser::forward);
    connect(helpPage, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(helpPage, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(contents, &QAction::triggered, helpPage, &QTextBrowser::home);

    auto *close = new QAction(this);
    close->setShortcut(Qt::Key_Escape);
    connect(close, &QAction::triggered, this, &frmHelp::close);
    addAction(close);
}

void frmHelp::LoadContents()
{
    std::vector<QTreeWidgetItem *> parents{trvContents->invisibleRootItem()};
    int width = 0;
    for (const HelpTopic &topic :
         ReadHelpContents(QString::fromUtf8(m_file.Read(m_file.ContentsFile()).value_or(QByteArray())))) {
        parents.resize(qMin(parents.size(), static_cast<size_t>(topic.level) + 1));
        auto *item = new QTreeWidgetItem(parents.back(), {topic.title});
        if (!topic.page.isEmpty())
            item->setData(0, Qt::UserRole, HelpBrowser::PageAddress(topic.page));
        parents.push_back(item);
        const int indent = (topic.level + 2) * trvContents->indentation();
        width = std::max(width, indent + trvContents->fontMetrics().horizontalAdvance(topic.title));
    }
    trvContents->expandAll();
    // Wide enough for every title, as long as the page keeps half of the window.
    const int contents = std::min(width, kFirstSize.width() / 2);
    static_cast<QSplitter *>(centralWidget())->setSizes({contents, kFirstSize.width() - contents});
}

void frmHelp::LoadPosition()
{
    // A window that was left smaller than the first size is had back so.
    const bool isFirst = m_settings.ReadLong(kPositionSection, u"Width"_s, 0) == 0;
    resize(WithinScreen(*this, isFirst ? kFirstSize : kSmallestSize));
    LoadFormPosition(*this, kPositionSection, m_settings);
}

void frmHelp::closeEvent(QCloseEvent *event)
{
    SaveFormPosition(*this, kPositionSection, m_settings);
    QMainWindow::closeEvent(event);
}

void frmHelp::Form_ShowItem(QTreeWidgetItem *item)
{
    Guarded(kModule, "Form_ShowItem", [&] {
        if (!m_following && item && !AddressOf(*item).isEmpty())
            helpPage->setSource(AddressOf(*item));
    });
}

void frmHelp::helpPage_SourceChanged(const QUrl &source)
{
    Guarded(kModule, "helpPage_SourceChanged", [&] {
        const QScopedValueRollback<bool> following(m_following, true);
        if (QTreeWidgetItem *item = FindItem(source))
            trvContents->setCurrentItem(item);
    });
}

/// The line of an address; of its page where the place in the page has none.
QTreeWidgetItem *frmHelp::FindItem(const QUrl &address) const
{
    QTreeWidgetItem *ofPage = nullptr;
    for (QTreeWidgetItemIterator item(trvContents); *item; ++item) {
        if (AddressOf(**item) == address)
            return *item;
        if (!ofPage && AddressOf(**item) == address.adjusted(QUrl::RemoveFragment))
            ofPage = *item;
    }
    return ofPage;
}
